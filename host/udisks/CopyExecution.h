#pragma once

#include "host/backend/Execution.h"
#include "host/udisks/BlockWorker.h"
#include "host/udisks/DeviceOpener.h"

#include <memory>
#include <optional>

namespace host {

/// The copy of one partition.
struct PartitionCopy
{
    DiskSource source;
    OrderTarget from;
    DiskSource destination;
    OrderTarget to;
    bool isNew = false; ///< see OpenRequest
    QString type;       ///< of the file system, as the disk service names it; empty for RAW
};

/// Copies all blocks of a partition, compares them, and gives the copy a new identifier. The source is open
/// for reading only. Unless the copy succeeds, the destination is not recognised as a file system.
class CopyExecution : public Execution
{
    Q_OBJECT

public:
    /// @p found receives the destination as the service reports it. @p service must outlive the object.
    CopyExecution(DiskService& service, PartitionCopy copy, std::shared_ptr<OrderTarget> found);

    void start() override;
    void cancel() override;
    double progress() const override;

private:
    using Opened = std::variant<OpenedDevice, Text>;
    void open(const OpenRequest& request, void (CopyExecution::*next)(const OpenedDevice&));
    void onSourceOpened(const OpenedDevice& device);
    void onTargetOpened(const OpenedDevice& device);
    void onSharedOpened(const OpenedDevice& device);
    void onCopied(const Rejection& error);
    void run(BlockWorker::Work work, void (CopyExecution::*next)(const Rejection&));
    void closeTarget(const Rejection& error);
    void onAvailabilityChanged();
    void end(const Rejection& error);

    DiskService& service_;
    PartitionCopy copy_;
    std::shared_ptr<OrderTarget> found_;
    std::optional<OpenedDevice> source_;
    std::optional<OpenedDevice> target_; ///< exclusive, like the source
    std::optional<OpenedDevice> shared_; ///< the target, for comparing and for the tools
    std::unique_ptr<BlockWorker> worker_;
    std::unique_ptr<BlockWorker> previousWorker_; ///< kept because it may be emitting its signal
    bool cancelled_ = false;
    bool isLost_ = false; ///< the disk service has stopped
    bool ended_ = false;
    double progress_ = 0;
};

} // namespace host
