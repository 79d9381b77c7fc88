// Opens the host's Windows 11 checker. The checker displays its result to the user; the agent does not
// receive it.
#include "tools/ZorHandle.h"

#include "plugin/HostCall.h"
#include "tools/HostPages.h"
#include "tools/Reply.h"
#include "tools/ToolBox.h"
#include "tools/ToolBridge.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

bool openChecker(const ToolBridge* bridge)
{
    if (bridge == nullptr)
        return false;
    QObject* page = contextObject(bridge->pages.engine(), QStringLiteral("partitionmanager"));
    return callHost<bool>(page, "isWin11CheckerEnable", ConnectionRule::Call).value_or(false) &&
           runToolBoxTask(bridge, ToolBoxWindows11Check, QVariantMap());
}

} // namespace

void CZorHandle::Windows11UpgradeCheck(std::string& answer)
{
    answer = reply(openChecker(bridge));
}
