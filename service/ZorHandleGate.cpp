#include "service/ZorHandle.h"

#include "plugin/AIBridge.h"
#include "plugin/HandOver.h"
#include "plugin/HostAccess.h"
#include "telemetry/Telemetry.h"

#include <QtCore/QDebug>

namespace {

constexpr qint64 kPauseMs = 2000;

const char* const kInProgress =
    "An operation is currently in progress, please wait a few moments and try again. If you need further "
    "assistance, please let me know!";
const char* const kInExecution = "One or more tasks are currently in execution, please wait a few moments "
                                 "and try again. If you need further "
                                 "assistance, please let me know!";

} // namespace

bool CZorHandle::Init()
{
    return true;
}

void CZorHandle::PreProcessing(TaskInfo& answer, const std::string& toolCalls)
{
    answer.__set_allow(false);
    answer.__set_reasons(std::string());
    if (bridge == nullptr)
        return;
    const QString call = QString::fromStdString(toolCalls);
    qDebug() << "CZorHandle::PreProcessing" << __LINE__ << "toolCalls0:" << call;

    const bool popuped = readWindowProperty("popuped").toBool();
    if (popuped || sinceLastCall() < kPauseMs) {
        answer.__set_reasons(kInProgress);
        return;
    }
    const QObject* main = findRootChild(bridge->engine(), QStringLiteral("__zormain"));
    if (main != nullptr && findHostProperty(main, "busy").read(main).toBool()) {
        answer.__set_reasons(kInExecution);
        return;
    }
    answer.__set_allow(true);
    reportUserInfo(kTelemetryCategory, QStringLiteral("Info_SpriteCalling"),
                   QVariantMap{{QStringLiteral("function"), call}}, QVariant());
    handover::give();
    Q_EMIT bridge->sigAbout2CallFun(call);
}

bool CZorHandle::PostProcessing(const std::string& result)
{
    const bool queued = result == kTaskQueued;
    if (bridge != nullptr) {
        handover::give();
        Q_EMIT bridge->sigAfterCallFun(QString::fromStdString(result), queued);
    }
    const std::lock_guard<std::mutex> lock(guard_);
    lastCallEnd.restart();
    return queued;
}

qint64 CZorHandle::sinceLastCall() const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return lastCallEnd.elapsed();
}
