// The user's answer to a recommendation and the action that it requests.
#include "recscan/RecScanThread.h"

#include "closed/Log/LogWriter.h"
#include "recscan/ActionIndex.h"
#include "recscan/RecAction.h"

#include "ZORNativePlugin.h"

#include <utility>

namespace {

QString logText(const QVariantMap& answer)
{
    QString text;
    for (auto entry = answer.begin(); entry != answer.end(); ++entry)
        text += entry.key() + QLatin1String(": ") + entry.value().toString() + QLatin1Char(' ');
    return text;
}

} // namespace

void RecScanThread::handleAnswer(const QVariantMap& answer, const ToolHandlerSource& handler)
{
    // The recommendation counts as answered from here on, regardless of the button and of the action's
    // success.
    saveScanState();
    if (answer.value(QStringLiteral("result")).toInt() != 0)
        return;
    CLogWriter::Log("rec operation param: %s\n", logText(answer).toUtf8().constData());
    setToolHandler(handler());
    performRecAction(answer);
}

void RecScanThread::setToolHandler(std::shared_ptr<ZORNativePluginIf> handler)
{
    toolHandler = std::move(handler);
}

void RecScanThread::performRecAction(QVariantMap answer)
{
    // An action runs code of the host, which can end the service or deliver another answer.
    const std::shared_ptr<ZORNativePluginIf> tools = toolHandler;
    if (tools == nullptr)
        return;
    const Recommendation recommendation = progress().recommendation;
    if (recommendation.fromReferral)
        runReferralAction(*tools, recommendation.funKey.toUtf8());
    else if (isCalledByWin11Checker(answer) || recommendation.actionIndex == ActionWin10EndOfSupport)
        runWin11Action(*tools, subject_.pages, answer, recommendation.actionParams);
    else
        runCaseAction(*tools, recommendation.actionIndex, recommendation.actionParams);
}
