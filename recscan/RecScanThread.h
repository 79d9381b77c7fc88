#pragma once

#include "recscan/ScanCases.h"
#include "recscan/ScanStateFile.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QVariantMap>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class HostPages;
class QQmlEngine;
class ZORNativePluginIf;

/// The recommendation scan. It checks its private copy of the inventory and holds at most one recommendation, which
/// remains once it is found. The object can be started again.
///
/// run belongs to the scan thread, the actions to the application thread. Both can happen at the same time: the host's
/// Windows 11 page can answer while a scan runs.
class RecScanThread : public QThread
{
    Q_OBJECT

public:
    /// Gives the handler of the service; null without one.
    using ToolHandlerSource = std::function<std::shared_ptr<ZORNativePluginIf>()>;

    /// @p pages is not owned and exists longer than this object.
    RecScanThread(QObject* parent, const HostPages& pages);

    /// The engine through which the scan reaches the host; not owned. Before start.
    void setScanEngine(QQmlEngine* engine);
    /// Takes copies of the inventory. Before start.
    void setScanData(const std::vector<DiskInfo>& diskList,
                     const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                     const std::map<char, PartitionInfo>& partitionsByLetter);
    /// Sets the handler whose tools the actions call. Application thread.
    void setToolHandler(std::shared_ptr<ZORNativePluginIf> handler);

    void run() override;

    /// Requests the scan to end before its next case. Does not interrupt a case. Any thread.
    void requestStop();
    /// True once a recommendation is held. Any thread.
    bool hasResult() const;
    /// The recommendation for the host as a QVariantMap; invalid before hasResult. Any thread.
    QVariant result() const;
    /// Writes the state for the next launch. A failure is silent. Any thread.
    void saveScanState() const;

    /// Records that the recommendation has been answered and, if @p answer accepts it, carries it out with the tools that
    /// @p handler gives then. Application thread.
    void takeAnswer(const QVariantMap& answer, const ToolHandlerSource& handler);
    /// Carries out the recommendation, or the request of the host's Windows 11 page. Application thread.
    void performRecAction(QVariantMap answer);

private:
    // The data that the scan writes and an answer reads.
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

    std::atomic<bool> stopRequested{false};

    // Scan thread only, once it has started.
    ScanSubject subject_;
    QString referralUrl;
    QString referralId;
    QMap<QString, QString> urlToFun;

    // Application thread only.
    std::shared_ptr<ZORNativePluginIf> toolHandler;

    // Held only to copy or change the progress, never during another call.
    mutable std::mutex guard_;
    Progress progress_;
};
