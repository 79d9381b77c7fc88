// The door to the host's partition page: a function as a question, and as an order.
#include "plugin/AIBridge.h"

#include "plugin/HostCall.h"
#include "tools/ToolBox.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

HostMethod partitionPage(const AIBridge& bridge)
{
    return HostMethod(contextObject(bridge.engine(), QStringLiteral("partitionmanager")), "doFunFromAI");
}

} // namespace

bool AIBridge::isFunValidForAI(int functionIndex, QVariantMap params)
{
    params[QStringLiteral("TestFunValid")] = true;
    return partitionPage(*this).call<bool>(ConnectionRule::Call, functionIndex, params).value_or(false);
}

void AIBridge::doFunFromAI(int functionIndex, QVariantMap params)
{
    const HostMethod page = partitionPage(*this);
    // An open guide is closed even when the order cannot be delivered.
    closeGuide();
    page.order(ConnectionRule::Call, functionIndex, params);
}
