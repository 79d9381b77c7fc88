#include "tools/ConversionTask.h"

#include "plugin/AIBridge.h"
#include "plugin/HandOver.h"
#include "plugin/HostCall.h"
#include "tools/HostRecords.h"
#include "tools/ToolBox.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

// The host's second question about a conversion, null for one without.
const char* detailQuestion(int funIdx)
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

bool queueDiskConversion(AIBridge* bridge, int funIdx, int diskIndex)
{
    closeGuide();
    return emitConvertTask(bridge, funIdx, findDiskRecord(bridge, SelectForTask, diskIndex));
}

bool queuePartitionConversion(AIBridge* bridge, int funIdx, const QString& letter)
{
    return emitConvertTask(bridge, funIdx, findPartitionRecord(bridge, letter, SelectForTask));
}

bool emitConvertTask(AIBridge* bridge, int funIdx, const QVariantMap& info)
{
    if (bridge == nullptr)
        return false;
    const QVariantMap task{{QStringLiteral("funIdx"), funIdx}, {QStringLiteral("info"), info}};
    handover::give();
    Q_EMIT bridge->sigConvertResult(QVariant(task));
    return true;
}

bool isConvertTaskValid(const AIBridge* bridge, const QVariantMap& task)
{
    if (bridge == nullptr)
        return true;
    QObject* converter = contextObject(bridge->engine(), QStringLiteral("diskconverter"));
    const HostMethod isFunValid(converter, "isFunValid");
    if (!isFunValid.isValid())
        return true;
    const int funIdx = task.value(QStringLiteral("funIdx")).toInt();
    const QVariantMap info = task.value(QStringLiteral("info")).toMap();
    if (!isFunValid.call<bool>(ConnectionRule::Call, funIdx, info).value_or(true))
        return false;
    const char* question = detailQuestion(funIdx);
    if (question == nullptr)
        return true;
    return callHost<QString>(converter, question, ConnectionRule::Call, info).value_or(QString()).isEmpty();
}
