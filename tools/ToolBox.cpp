#include "tools/ToolBox.h"

#include "plugin/HostCall.h"
#include "tools/HostPages.h"
#include "tools/ToolBridge.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

// The host's check of a function; null if the function has none.
const char* checkOf(int index)
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

bool runToolBoxTask(const ToolBridge* bridge, int index, const QVariantMap& info)
{
    closeGuide();
    QObject* main = bridge == nullptr ? nullptr : bridge->pages.mainObject();
    if (main == nullptr)
        return false;
    bool accepted = false;
    if (const char* check = checkOf(index)) {
        accepted = callHost<QVariant>(main, check, ConnectionRule::Call).value_or(QVariant()).toBool();
        if (!accepted)
            return false;
    }
    const HostMethod doToolBox(main, "doToolBox");
    // If the method is missing, the host's check decides.
    if (!doToolBox.isValid())
        return accepted;
    return doToolBox.call<QVariant>(ConnectionRule::Call, QVariant(index), QVariant(info))
        .value_or(QVariant())
        .toBool();
}
