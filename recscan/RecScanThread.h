#pragma once

#include "recscan/ScanCases.h"
#include "recscan/ScanStateFile.h"
#include "service/WireTypes.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QVariantMap>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class AIBridge;
class CZorHandle;
class QQmlEngine;

/// The recommendation scan: looks at its private copy of the inventory and holds at most one recommendation,
/// which stays once it is found. The object lives as long as the bridge and can be started again.
///
/// run and what it calls belong to the scan thread; the actions belong to the application thread. Both may
/// happen at once: an answer of the host's Windows 11 page can come while a scan runs.
class RecScanThread : public QThread
{
    Q_OBJECT

public:
    explicit RecScanThread(AIBridge* parent);

    /// The engine through which the scan reaches the host; not owned. Before start.
    void setScanEngine(QQmlEngine* engine);
    /// Takes copies of the inventory. Before start.
    void setScanData(const std::vector<DiskInfo>& diskList,
                     const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                     const std::map<char, PartitionInfo>& partitionsByLetter);
    /// What the actions call. Application thread.
    void setToolHandler(std::shared_ptr<CZorHandle> handler);

    void run() override;

    /// Asks the scan to end before its next case; interrupts nothing. Any thread.
    void requestStop();
    /// True once a recommendation is held. Any thread.
    bool hasResult() const;
    /// The recommendation for the host, a QVariantMap inside; invalid while none is held. Any thread.
    QVariant result() const;
    /// Writes what the next launch needs to know; a failure is silent. Any thread.
    void saveScanState() const;

    /// Carries out the recommendation that is held, or what the host's Windows 11 page asks for. Application
    /// thread.
    void performRecAction(QVariantMap answer);

private:
    // Everything that the scan writes and an answer reads.
    struct Progress
    {
        bool found = false;
        Recommendation held;
        ScanState state;
    };

    Progress progress() const;
    template <class Change> void update(Change change);
    void hold(const std::optional<Recommendation>& recommendation);

    void scanReferral();
    void matchReferralFun();
    void scanCasesFrom(int first);
    void runCase(int index);
    bool isSkipped(int index) const;
    QString referralOr(int number) const;

    void performReferralFun(const QString& funKey);
    void performCaseAction(int actionIndex, const QVariantMap& actionParams);
    void performWin11Action(const QVariantMap& answer, const QVariantMap& actionParams);

    std::atomic<bool> stopRequested{false};
    AIBridge* scanOwner;

    // Scan thread only, once it has started.
    ScanSubject subject_;
    QString referralUrl;
    QString referralId;
    QMap<QString, QString> urlToFun;

    // Application thread only.
    std::shared_ptr<CZorHandle> toolHandler;

    // Held only to copy or change the progress, never across a call to anything else.
    mutable std::mutex guard_;
    Progress progress_;
};
