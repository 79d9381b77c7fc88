#pragma once

#include "host/backend/Execution.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/OrderPlan.h"

#include <functional>
#include <variant>

namespace host {

/// Carries out a plan through the disk service, one call at a time.
///
/// Before every call it reads the service, finds the disk and the partition again, and lets the kernel
/// confirm that nothing uses the disk, because the service itself formats and deletes mounted partitions for
/// root.
class OrderExecution : public Execution
{
    Q_OBJECT

public:
    using Plan = std::function<std::variant<OrderPlan, Text>()>;
    /// Reads the machine again and then calls its argument. The outcome is that of the order.
    using Refresh = std::function<void(Outcome, std::function<void()>)>;

    /// @p plan: called at the start. @p service must outlive the object.
    OrderExecution(DiskService& service, Plan plan, Refresh refresh);

    void start() override;
    void cancel() override;
    double progress() const override { return progress_; }

private:
    void next();
    void onRead(const DiskSnapshot& snapshot, const QString& error);
    bool findTarget(const DiskSnapshot& snapshot, const BlockDevice& disk, const BlockDevice*& partition);
    void checkUnused(const BlockDevice& disk, const DiskServiceCall& call);
    void run(const DiskServiceCall& call);
    void onReply(const QDBusMessage& reply);
    void retry(const Text& error);
    void onJobStarted(const QString& job, const QStringList& objects, bool cancelable);
    void onJobProgress(const QString& job, double share);
    void showProgress(double share);
    void cancelJob();
    void finish(Outcome outcome, const Text& error);

    DiskService& service_;
    Plan makePlan_;
    Refresh refresh_;
    OrderPlan plan_;
    std::size_t step_ = 0;
    int attempts_ = 0;           ///< of the current step
    QString createdPath_;        ///< of a new partition whose position has not been read yet
    qint64 requestedOffset_ = 0; ///< of a new partition, in bytes
    bool wrongPosition_ = false; ///< the new partition is not where it was requested
    QStringList devices_;        ///< object paths of the disk and its partitions
    QString job_;                ///< of the current call; empty without a job that can be cancelled
    bool changed_ = false;       ///< a call has succeeded, so the target can differ from its first reading
    bool cancelled_ = false;
    bool finished_ = false;
    double progress_ = 0;
};

} // namespace host
