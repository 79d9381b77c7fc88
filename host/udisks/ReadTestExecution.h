#pragma once

#include "host/backend/Execution.h"
#include "host/udisks/BlockWorker.h"
#include "host/udisks/DeviceOpener.h"

#include <QtCore/QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace host {

/// A disk or partition to read.
struct ReadTest
{
    DiskSource source;
    std::optional<OrderTarget> target; ///< the whole disk if empty
    int sectorSize = 512;
};

/// The read test that the rules accept on @p machine. The disk index of a machine is the index in @p sources.
ReadTest readTest(const Machine& machine, const std::vector<DiskSource>& sources, const QVariantMap& params);

/// Reads all sectors of a disk or partition. Fails if a sector is unreadable; the error has the number and
/// the positions on the disk.
class ReadTestExecution : public Execution
{
    Q_OBJECT

public:
    using Plan = std::function<std::variant<ReadTest, Text>()>;
    /// Reads the machine again and then calls its argument.
    using Refresh = std::function<void(Outcome, std::function<void()>)>;

    /// @p plan: called at the start. @p service must outlive the object.
    ReadTestExecution(DiskService& service, Plan plan, Refresh refresh);

    void start() override;
    void cancel() override;
    double progress() const override { return progress_; }

private:
    void onOpened(const std::variant<OpenedDevice, Text>& opened);
    void end(const Rejection& error);

    DiskService& service_;
    Plan plan_;
    Refresh refresh_;
    ReadTest test_;
    std::optional<OpenedDevice> device_;
    std::unique_ptr<BlockWorker> worker_;
    bool cancelled_ = false;
    double progress_ = 0;
};

} // namespace host
