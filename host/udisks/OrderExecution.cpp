#include "host/udisks/OrderExecution.h"

#include "host/machine/Layout.h"
#include "host/udisks/DiskUse.h"
#include "host/udisks/UnreadPartitions.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <algorithm>
#include <utility>

namespace host {

namespace {

// The service removes and adds the objects of all partitions after each change of a table.
constexpr int kAttempts = 50;
// Giving up after the first change would leave half of the order, such as a file system smaller than its
// partition.
constexpr int kAttemptsAfterChange = 300;
constexpr int kRescanAttempts = 20; // between two requests to read the partitions again
constexpr int kRetryMs = 100;
const QString kCancelled = QStringLiteral("org.freedesktop.UDisks2.Error.Cancelled");

bool isSame(const OrderTarget& target, const BlockDevice& device)
{
    const PartitionEntry& entry = *device.partition;
    const bool sameGuid = target.partitionGuid.isEmpty() ||
                          target.partitionGuid == QLatin1Char('{') + entry.uuid + QLatin1Char('}');
    return entry.size == target.size && sameGuid;
}

bool showsPartitionsOf(const std::vector<OrderTarget>& shown, const DiskSnapshot& snapshot,
                       const BlockDevice& disk)
{
    auto entries = snapshot.partitionsOf(disk.path);
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [](const BlockDevice* entry) { return entry->partition->isContainer; }),
                  entries.end());
    return std::equal(shown.begin(), shown.end(), entries.begin(), entries.end(),
                      [](const OrderTarget& target, const BlockDevice* entry) {
                          return target.offset == entry->partition->offset && isSame(target, *entry);
                      });
}

} // namespace

OrderExecution::OrderExecution(DiskService& service, Plan plan, Refresh refresh)
    : service_(service), makePlan_(std::move(plan)), refresh_(std::move(refresh))
{
    connect(&service_, &DiskService::jobStarted, this, &OrderExecution::onJobStarted);
    connect(&service_, &DiskService::jobProgress, this, &OrderExecution::onJobProgress);
}

void OrderExecution::start()
{
    auto plan = makePlan_();
    if (const Text* error = std::get_if<Text>(&plan)) {
        finished_ = true;
        Q_EMIT ended(Outcome::Failed, *error);
        return;
    }
    plan_ = std::move(std::get<OrderPlan>(plan));
    next();
}

void OrderExecution::cancel()
{
    cancelled_ = true;
    cancelJob();
}

void OrderExecution::next()
{
    if (cancelled_)
        return finish(Outcome::Cancelled, Text());
    if (step_ == plan_.steps.size())
        return finish(Outcome::Done, Text());
    service_.read(
        [self = QPointer<OrderExecution>(this)](const DiskSnapshot& snapshot, const QString& error) {
            if (self)
                self->onRead(snapshot, error);
        });
}

void OrderExecution::onRead(const DiskSnapshot& snapshot, const QString& error)
{
    if (!error.isEmpty())
        return finish(Outcome::Failed, Text::returned(error));
    const BlockDevice* disk = plan_.source.find(snapshot);
    if (disk == nullptr)
        return finish(Outcome::Failed,
                      plan_.source.isReplaced(snapshot)
                          ? QT_TRANSLATE_NOOP("Sandbox", "Another disk has taken the place of this disk.")
                          : QT_TRANSLATE_NOOP("Sandbox", "The disk is no longer attached."));
    // The service can read a table while it is being written.
    if (attempts_ % kRescanAttempts == kRescanAttempts - 1)
        rescanUnread(service_, snapshot, *disk);
    if (const Rejection rejection = contentRejection(*disk))
        return retry(*rejection);
    devices_ = QStringList{disk->path};
    for (const BlockDevice* entry : snapshot.partitionsOf(disk->path))
        devices_.append(entry->path);
    if (const Rejection rejection = useRejection(snapshot, *disk))
        return finish(Outcome::Failed, *rejection);
    const BlockDevice* partition = nullptr;
    if (!findTarget(snapshot, *disk, partition))
        return retry(QT_TRANSLATE_NOOP("Sandbox", "The partition has changed since the order was accepted."));
    // Inside an extended partition, the service can choose another free region.
    if (wrongPosition_)
        return finish(
            Outcome::Failed,
            QT_TRANSLATE_NOOP("Sandbox", "The disk service created the partition at another position."));
    if (!changed_ && !plan_.target && !showsPartitionsOf(plan_.shown, snapshot, *disk))
        return retry(QT_TRANSLATE_NOOP(
            "Sandbox", "The partitions of the disk have changed since the order was accepted."));
    const StepCall call = plan_.steps[step_].call(OrderState{snapshot, *disk, partition});
    if (const Text* reason = std::get_if<Text>(&call))
        return retry(*reason);
    checkUnused(*disk, std::get<DiskServiceCall>(call));
}

bool OrderExecution::findTarget(const DiskSnapshot& snapshot, const BlockDevice& disk,
                                const BlockDevice*& partition)
{
    if (!createdPath_.isEmpty()) {
        const BlockDevice* created = snapshot.device(createdPath_);
        const bool isRead = created != nullptr && created->partition && !created->partition->type.isEmpty();
        if (!isRead || created->partition->table != disk.path)
            return false;
        // A new extended partition takes the requested position, and its first logical drive follows.
        const qint64 largestShift = created->partition->isContained ? 2 * kMebibyte : kMebibyte;
        wrongPosition_ = created->partition->offset < requestedOffset_ ||
                         created->partition->offset > requestedOffset_ + largestShift;
        plan_.target = OrderTarget{created->partition->offset, created->partition->size, QString()};
        createdPath_.clear();
    }
    if (!plan_.target)
        return true;
    partition = snapshot.partitionAt(disk.path, plan_.target->offset);
    return partition != nullptr && !partition->partition->type.isEmpty() &&
           (changed_ || isSame(*plan_.target, *partition));
}

void OrderExecution::checkUnused(const BlockDevice& disk, const DiskServiceCall& call)
{
    // The service can be slower than a program that has written to the disk.
    const bool mustBeEmpty = plan_.source.isImage && !disk.table && !changed_;
    service_.call(exclusiveOpenCall(disk), [self = QPointer<OrderExecution>(this), call, mustBeEmpty,
                                            size = disk.size](const QDBusMessage& reply) {
        const QString error = errorOf(reply);
        const auto descriptor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
        const bool isUnknown = error.isEmpty() && mustBeEmpty && holdsData(descriptor.fileDescriptor(), size);
        // The reply holds the device open exclusively, so that the call would fail.
        closeDescriptor(reply);
        if (!self)
            return;
        if (isUnknown)
            self->finish(Outcome::Failed,
                         QT_TRANSLATE_NOOP("Sandbox", "The disk holds data without a partition table."));
        else if (error.isEmpty())
            self->run(call);
        else if (isMissingObject(reply))
            self->retry(error);
        else
            self->finish(Outcome::Failed, Text::returned(error));
    });
}

void OrderExecution::run(const DiskServiceCall& call)
{
    if (cancelled_)
        return finish(Outcome::Cancelled, Text());
    if (plan_.steps[step_].createsTarget)
        requestedOffset_ = call.arguments.value(0).toLongLong();
    service_.call(call, [self = QPointer<OrderExecution>(this)](const QDBusMessage& reply) {
        if (self)
            self->onReply(reply);
    });
}

void OrderExecution::onReply(const QDBusMessage& reply)
{
    job_.clear();
    const QString error = errorOf(reply);
    if (isMissingObject(reply))
        return retry(error);
    if (cancelled_ && reply.errorName() == kCancelled)
        return finish(Outcome::Cancelled, Text());
    if (!error.isEmpty())
        return finish(Outcome::Failed, Text::returned(error));
    const OrderStep& step = plan_.steps[step_];
    if (step.failure != nullptr && !reply.arguments().value(0).toBool())
        return finish(Outcome::Failed, step.failure);
    if (step.createsTarget)
        createdPath_ = reply.arguments().value(0).value<QDBusObjectPath>().path();
    if (step.deletesTarget)
        plan_.target.reset();
    changed_ = true;
    attempts_ = 0;
    ++step_;
    showProgress(0);
    next();
}

void OrderExecution::retry(const Text& error)
{
    if (++attempts_ == (changed_ ? kAttemptsAfterChange : kAttempts))
        return finish(Outcome::Failed, error);
    QTimer::singleShot(kRetryMs, this, [this] { next(); });
}

void OrderExecution::onJobStarted(const QString& job, const QStringList& objects, bool cancelable)
{
    const bool isOurs = std::any_of(objects.begin(), objects.end(),
                                    [&](const QString& object) { return devices_.contains(object); });
    if (!isOurs || !cancelable)
        return;
    job_ = job;
    if (cancelled_)
        cancelJob();
}

void OrderExecution::onJobProgress(const QString& job, double share)
{
    if (job != job_ || plan_.steps.empty())
        return;
    showProgress(share);
}

// @p share: of the current step, 0 to 1.
void OrderExecution::showProgress(double share)
{
    progress_ = (static_cast<double>(step_) + share) / static_cast<double>(plan_.steps.size());
    Q_EMIT progressed();
}

// The reply of the cancelled call ends the order.
void OrderExecution::cancelJob()
{
    if (!job_.isEmpty())
        service_.call({job_, QStringLiteral("Job"), QStringLiteral("Cancel"), {QVariantMap()}},
                      [](const QDBusMessage&) {});
}

void OrderExecution::finish(Outcome outcome, const Text& error)
{
    if (finished_)
        return;
    finished_ = true;
    refresh_(outcome, [self = QPointer<OrderExecution>(this), outcome, error] {
        if (!self)
            return;
        self->progress_ = outcome == Outcome::Done ? 1 : self->progress_;
        Q_EMIT self->ended(outcome, error);
    });
}

} // namespace host
