#include "tools/ZorHandle.h"

#include "plugin/HostAccess.h"
#include "telemetry/Telemetry.h"
#include "tools/HostPages.h"
#include "tools/ToolBridge.h"

#include "ZORNativePlugin_constants.h"

#include <QtCore/QDebug>

namespace {

constexpr qint64 kPauseMs = 2000;

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
        answer.__set_reasons(g_ZORNativePlugin_constants.OPERATION_IN_PROGRESS);
        return;
    }
    const QObject* main = bridge->pages.mainObject();
    if (main != nullptr && findHostProperty(main, "busy").read(main).toBool()) {
        answer.__set_reasons(g_ZORNativePlugin_constants.TASKS_IN_EXECUTION);
        return;
    }
    answer.__set_allow(true);
    reportUserInfo(kTelemetryCategory, QStringLiteral("Info_SpriteCalling"),
                   QVariantMap{{QStringLiteral("function"), call}}, QVariant());
    bridge->events.emitAboutToCall(call);
}

bool CZorHandle::PostProcessing(const std::string& result)
{
    const bool queued = result == g_ZORNativePlugin_constants.TASK_QUEUED;
    if (bridge != nullptr)
        bridge->events.emitAfterCall(QString::fromStdString(result), queued);
    const std::lock_guard<std::mutex> lock(guard_);
    lastCallEnd.restart();
    return queued;
}

qint64 CZorHandle::sinceLastCall() const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return lastCallEnd.elapsed();
}
