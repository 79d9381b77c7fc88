#include "recscan/RecScanThread.h"

#include "plugin/TsanAnnotations.h"
#include "recscan/Referral.h"
#include "telemetry/Telemetry.h"

#include <algorithm>
#include <utility>

namespace {

// The value is not escaped, so the string can be invalid JSON.
void report(const QString& event, const QString& detail, const QString& value)
{
    reportUserInfo(kTelemetryCategory, event, detail.arg(value), QVariant());
}

} // namespace

RecScanThread::RecScanThread(QObject* parent, const HostPages& pages)
    : QThread(parent), referralUrl(QChar(0xFFFF))
{
    subject_.pages = &pages;
}

void RecScanThread::setScanEngine(QQmlEngine* engine)
{
    subject_.engine = engine;
}

void RecScanThread::setScanData(const std::vector<DiskInfo>& diskList,
                                const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                                const std::map<char, PartitionInfo>& partitionsByLetter)
{
    subject_.disks = diskList;
    subject_.partitionsByDisk = partitionsByDisk;
    subject_.partitionsByLetter = partitionsByLetter;
}

void RecScanThread::run()
{
    TsanAnnotations::acquire();
    const ScanState saved = readScanState();
    referralId = kNoReferral;
    update([&](Progress& now) { now.state = saved; });
    if (!saved.referralDone) {
        scanReferral();
        saveScanState();
    }
    // An installation with a referral number uses the referral rule instead of the cases, even if the rule
    // finds nothing.
    if (referralId == kNoReferral)
        scanCasesFrom(saved.nextCaseIndex);
    report(QStringLiteral("Result_SmartReferScan"), QStringLiteral("{\"smart-refer\":\"%1\"}"),
           referralOrNumber(progress().recommendation.actionIndex));
    TsanAnnotations::release();
}

void RecScanThread::requestStop()
{
    stopRequested = true;
}

bool RecScanThread::hasResult() const
{
    return progress().found;
}

QVariant RecScanThread::result() const
{
    const Progress now = progress();
    return now.found ? QVariant(now.recommendation.record) : QVariant();
}

void RecScanThread::saveScanState() const
{
    writeScanState(progress().state);
}

RecScanThread::Progress RecScanThread::progress() const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return progress_;
}

template <class Change> void RecScanThread::update(Change change)
{
    const std::lock_guard<std::mutex> lock(guard_);
    change(progress_);
}

void RecScanThread::setRecommendation(const std::optional<Recommendation>& recommendation)
{
    if (!recommendation)
        return;
    update([&](Progress& now) {
        now.found = true;
        now.recommendation = *recommendation;
    });
}

QString RecScanThread::referralOrNumber(int number) const
{
    return referralId == kNoReferral ? QString::number(number) : QLatin1String("seo ") + referralId;
}

void RecScanThread::scanReferral()
{
    if (stopRequested || hasResult())
        return;
    referralId = readReferralNumber();
    // A missing number (kNoReferral) is requested as well.
    referralUrl = fetchSeoPage(referralId);
    report(QStringLiteral("Info_SmartReferScan"), QStringLiteral("{\"case-index-start\":\"%1\"}"),
           referralOrNumber(progress().state.nextCaseIndex));
    if (referralUrl != kNoReferral)
        matchReferralFun();
    update([](Progress& now) { now.state.referralDone = true; });
}

void RecScanThread::matchReferralFun()
{
    loadSeoToFun(urlToFun);
    const auto found = urlToFun.constFind(referralUrl);
    if (found != urlToFun.constEnd())
        setRecommendation(recommendFunction(found.value()));
}

void RecScanThread::scanCasesFrom(int first)
{
    if (stopRequested || hasResult())
        return;
    // A negative index is invalid and is reset.
    if (first < 0)
        update([](Progress& now) { now.state.nextCaseIndex = 0; });
    for (int index = std::max(first, 0); index < kCaseCount; ++index) {
        if (isSkipped(index))
            continue;
        runCase(index);
        if (stopRequested || hasResult())
            return;
    }
}

// A page address of one character is the number of a case to skip.
bool RecScanThread::isSkipped(int index) const
{
    return referralUrl.size() == 1 && referralUrl.at(0).unicode() == index;
}

void RecScanThread::runCase(int index)
{
    update([=](Progress& now) { now.state.nextCaseIndex = index + 1; });
    setRecommendation(runScanCase(index, subject_));
}
