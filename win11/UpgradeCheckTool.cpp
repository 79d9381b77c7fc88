// The tool that opens the host's Windows 11 checker; its finding stays there.
#include "service/ZorHandle.h"

#include "plugin/AIBridge.h"
#include "plugin/HostCall.h"
#include "tools/ToolBox.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

bool openChecker(const AIBridge* bridge)
{
    if (bridge == nullptr || bridge->engine() == nullptr)
        return false;
    QObject* page = contextObject(bridge->engine(), QStringLiteral("partitionmanager"));
    return callHost<bool>(page, "isWin11CheckerEnable", ConnectionRule::Call).value_or(false) &&
           runToolBoxTask(bridge, ToolBoxWindows11Check, QVariantMap());
}

} // namespace

void CZorHandle::Windows11UpgradeCheck(std::string& answer)
{
    answer = openChecker(bridge) ? kTaskQueued : kTaskNotValid;
}
