#include "tools/ConversionTask.h"

#include "plugin/HostCall.h"
#include "tools/HostPages.h"
#include "tools/HostRecords.h"
#include "tools/ToolBridge.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

// The host's second check of a conversion; null if it has only one.
const char* secondCheck(int funIdx)
{
    switch (funIdx) {
    case ConvertToMbr:
        return "isGPT2MBRValid";
    case ConvertToGpt:
        return "isMBR2GPTValid";
    default:
        return nullptr;
    }
}

} // namespace

bool queueDiskConversion(const ToolBridge* bridge, int funIdx, int diskIndex)
{
    closeGuide();
    return emitConvertTask(bridge, funIdx, findDiskRecord(pagesOf(bridge), SelectForTask, diskIndex));
}

bool queuePartitionConversion(const ToolBridge* bridge, int funIdx, const QString& letter)
{
    return emitConvertTask(bridge, funIdx, findPartitionRecord(pagesOf(bridge), letter, SelectForTask));
}

bool emitConvertTask(const ToolBridge* bridge, int funIdx, const QVariantMap& info)
{
    if (bridge == nullptr)
        return false;
    const QVariantMap task{{QStringLiteral("funIdx"), funIdx}, {QStringLiteral("info"), info}};
    bridge->events.emitConvertResult(QVariant(task));
    return true;
}

bool isConvertTaskValid(const ToolBridge* bridge, const QVariantMap& task)
{
    if (bridge == nullptr)
        return true;
    QObject* converter = contextObject(bridge->pages.engine(), QStringLiteral("diskconverter"));
    const HostMethod isFunValid(converter, "isFunValid");
    if (!isFunValid.isValid())
        return true;
    const int funIdx = task.value(QStringLiteral("funIdx")).toInt();
    const QVariantMap info = task.value(QStringLiteral("info")).toMap();
    if (!isFunValid.call<bool>(ConnectionRule::Call, funIdx, info).value_or(true))
        return false;
    const char* check = secondCheck(funIdx);
    if (check == nullptr)
        return true;
    return callHost<QString>(converter, check, ConnectionRule::Call, info).value_or(QString()).isEmpty();
}
