#include "tools/ToolBox.h"

#include "plugin/AIBridge.h"
#include "plugin/HostCall.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

// The host's own gate in front of a function, null for a function without one.
const char* gateOf(int index)
{
    switch (index) {
    case ToolBoxPasswordReset:
        return "passwordResetEnabled";
    case ToolBoxRepairWindowsBoot:
        return "bootrepairEnabled";
    default:
        return nullptr;
    }
}

} // namespace

void closeGuide()
{
    callWindowMethod("closeGuide", QVariant());
}

QObject* hostMainObject(const AIBridge& bridge)
{
    return findRootChild(bridge.engine(), QStringLiteral("__zormain"));
}

bool runToolBoxTask(const AIBridge* bridge, int index, const QVariantMap& info)
{
    closeGuide();
    if (bridge == nullptr || bridge->engine() == nullptr)
        return false;
    QObject* main = hostMainObject(*bridge);
    if (main == nullptr)
        return false;
    bool accepted = false;
    if (const char* gate = gateOf(index)) {
        accepted = callHost<QVariant>(main, gate, ConnectionRule::Call).value_or(QVariant()).toBool();
        if (!accepted)
            return false;
    }
    const HostMethod doToolBox(main, "doToolBox");
    // Without the method the gate's answer stands.
    if (!doToolBox.isValid())
        return accepted;
    return doToolBox.call<QVariant>(ConnectionRule::Call, QVariant(index), QVariant(info))
        .value_or(QVariant())
        .toBool();
}
