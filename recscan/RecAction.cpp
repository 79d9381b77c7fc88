// The way back of a recommendation: the user's answer, and the action that it asks for.
#include "recscan/RecScanThread.h"

#include "closed/Log/LogWriter.h"
#include "closed/UIUtility/UIUtility.h"
#include "plugin/AIBridge.h"
#include "recscan/BootDisk.h"
#include "recscan/HostUrl.h"
#include "recscan/RecActions.h"
#include "service/AIFuncallThread.h"
#include "service/ZorHandle.h"

#include <QtCore/QTimer>

#include <utility>

namespace {

constexpr int kAnswerDelayMs = 100;

const QString kDiskIndex = QStringLiteral("diskIndex");

bool isCalledByWin11Checker(const QVariantMap& answer)
{
    return answer.value(QStringLiteral("callByWin11Checker")).toBool();
}

QString logText(const QVariantMap& answer)
{
    QString text;
    for (auto entry = answer.begin(); entry != answer.end(); ++entry)
        text += entry.key() + QLatin1String(": ") + entry.value().toString() + QLatin1Char(' ');
    return text;
}

// From here on the recommendation counts as answered, whatever the button and whatever comes of the action.
void takeAnswer(RecScanThread& scan, const AIFuncallThread& server, const QVariantMap& answer)
{
    scan.saveScanState();
    if (answer.value(QStringLiteral("result")).toInt() != 0)
        return;
    CLogWriter::Log("rec operation param: %s\n", logText(answer).toUtf8().constData());
    scan.setToolHandler(server.toolHandler());
    scan.performRecAction(answer);
}

void openConfiguredUrl(const QString& key)
{
    openUrlOnHost(UIUtility::instance()->GetFireBaseConfigString(key, QString()));
}

} // namespace

void AIBridge::doRecOperation(QVariant info)
{
    CLogWriter::Log("doRecOperation callback\n");
    QTimer::singleShot(kAnswerDelayMs, this, [this, info] {
        const QVariantMap answer = info.toMap();
        if (recScanThread != nullptr && serverThread != nullptr)
            takeAnswer(*recScanThread, *serverThread, answer);
    });
}

void RecScanThread::setToolHandler(std::shared_ptr<CZorHandle> handler)
{
    toolHandler = std::move(handler);
}

void RecScanThread::performRecAction(QVariantMap answer)
{
    if (toolHandler == nullptr)
        return;
    const Recommendation held = progress().held;
    if (held.fromReferral)
        performReferralFun(held.funKey);
    else if (isCalledByWin11Checker(answer) || held.actionIndex == ActionWin10EndOfSupport)
        performWin11Action(answer, held.actionParams);
    else
        performCaseAction(held.actionIndex, held.actionParams);
}

void RecScanThread::performCaseAction(int actionIndex, const QVariantMap& actionParams)
{
    // Nobody is told what the tool answers.
    std::string answer;
    const int diskIndex = actionParams.value(kDiskIndex).toInt();
    const std::string driveLetter =
        actionParams.value(QStringLiteral("driveLetter")).toString().toStdString();
    switch (actionIndex) {
    case ActionDiskHealth:
        toolHandler->DiskHealthCheck(answer, diskIndex);
        break;
    case ActionMigrateData:
        toolHandler->MigrateSystemDriveData(answer);
        break;
    case ActionSmartLayout:
        toolHandler->SmartSpaceAdjustment(answer, driveLetter);
        break;
    case ActionConvertToGpt:
        toolHandler->ConvertDiskToGpt(answer, diskIndex);
        break;
    case ActionConvertToExfat:
        toolHandler->ConvertPartitionToExfat(answer, driveLetter);
        break;
    case ActionRepairBoot:
        toolHandler->RepairWindowsBoot(answer);
        break;
    case ActionAlign4k:
        toolHandler->AlignDiskTo4k(answer, diskIndex);
        break;
    case ActionCreateUsb:
        toolHandler->CreateBootableUsbByDisk(answer, -1);
        break;
    case ActionRepairRaw:
        toolHandler->RepairRawOrDamagedPartition(answer, driveLetter);
        break;
    case ActionFindBitLockerKey:
        toolHandler->RetrieveBitLockerRecoveryKey(answer, driveLetter);
        break;
    default:
        break;
    }
}

void RecScanThread::performWin11Action(const QVariantMap& answer, const QVariantMap& actionParams)
{
    switch (answer.value(QStringLiteral("checkResultType")).toInt()) {
    case Win11Ready:
        openConfiguredUrl(QStringLiteral("url_win11_hw_ready"));
        break;
    case Win11NotReady:
        openConfiguredUrl(QStringLiteral("url_win11_hw_not_ready"));
        break;
    case Win11NeedsGpt: {
        // The host's page means the boot disk, whatever the scan has found.
        const QVariantMap target = isCalledByWin11Checker(answer) ? getBootDisk(scanOwner) : actionParams;
        std::string reply;
        toolHandler->ConvertDiskToGpt(reply, target.value(kDiskIndex).toInt());
        break;
    }
    default:
        break;
    }
}
