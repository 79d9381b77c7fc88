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

/// The recommendation scan. It works on a private copy of the inventory and holds at most one recommendation,
/// which it keeps once found. The thread can be started again.
///
/// run executes on the scan thread, the actions on the application thread. Both can run at the same time: the
/// host's Windows 11 page can answer during a scan.
class RecScanThread : public QThread
{
    Q_OBJECT

public:
    /// Returns the handler of the service; null without a service.
    using ToolHandlerSource = std::function<std::shared_ptr<ZORNativePluginIf>()>;

    /// @p pages is not owned and must outlive this object.
    RecScanThread(QObject* parent, const HostPages& pages);

    /// Sets the engine that gives access to the host's objects. Not owned. Must be called before start.
    void setScanEngine(QQmlEngine* engine);
    /// Copies the inventory. Must be called before start.
    void setScanData(const std::vector<DiskInfo>& diskList,
                     const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                     const std::map<char, PartitionInfo>& partitionsByLetter);
    /// Sets the handler whose tools the actions call. Application thread.
    void setToolHandler(std::shared_ptr<ZORNativePluginIf> handler);

    void run() override;

    /// Requests the scan to stop before its next case. A running case is not interrupted. Any thread.
    void requestStop();
    /// True once the scan holds a recommendation. Any thread.
    bool hasResult() const;
    /// The recommendation for the host, a QVariantMap; invalid unless hasResult. Any thread.
    QVariant result() const;
    /// Writes the state for the next launch. Write errors are ignored. Any thread.
    void saveScanState() const;

    /// Records that the recommendation was answered. If @p answer accepts it, performs its action with the
    /// tools that @p handler returns at that time. Application thread.
    void handleAnswer(const QVariantMap& answer, const ToolHandlerSource& handler);
    /// Performs the action of the recommendation, or the request of the host's Windows 11 page. Application
    /// thread.
    void performRecAction(QVariantMap answer);

private:
    // Written by the scan and read by the answers.
    struct Progress
    {
        bool found = false;
        Recommendation recommendation;
        ScanState state;
    };

    Progress progress() const;
    template <class Change> void update(Change change);
    void setRecommendation(const std::optional<Recommendation>& recommendation);

    void scanReferral();
    void matchReferralFun();
    void scanCasesFrom(int first);
    void runCase(int index);
    bool isSkipped(int index) const;
    QString referralOrNumber(int number) const;

    std::atomic<bool> stopRequested{false};

    // Scan thread only after start, except subject_.pages, which is constant.
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
