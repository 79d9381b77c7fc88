#pragma once

#include "host/backend/Backend.h"
#include "host/udisks/Capabilities.h"
#include "host/udisks/DiskReader.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/ImageDevices.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/OrderExecution.h"

#include <functional>
#include <variant>
#include <vector>

namespace host {

/// Disk images and disks that the user named, changed through UDisks2.
///
/// The machine is always a reading of the service, never the assumed result of an order. It is read after
/// each order, and after changes from outside once the service has been quiet for a moment.
class DiskBackend : public Backend
{
    Q_OBJECT

public:
    /// Attaches the images as loop devices and reads the machine. Waits for the service. The result is an
    /// error sentence if the service is missing, or a disk is missing or in use. @p connect: for a bus that
    /// has disappeared.
    static std::variant<std::unique_ptr<DiskBackend>, QString>
    open(const QDBusConnection& bus, const std::vector<DiskSource>& sources,
         const ConnectToBus& connect = connectToSystemBus);

    Rejection functionRejection(int function) const override;
    Rejection orderRejection(int function, const QVariantMap& params) const override;
    Rejection taskRejection(int function, const QVariantMap& params) const override;
    /// Only for a device: the images are files that the user named for this purpose.
    std::optional<Confirmation> confirmation(int function, const QVariantMap& params) const override;
    bool isReal() const override { return true; }
    std::unique_ptr<Execution> execute(int function, const QVariantMap& params) override;

    Rejection unavailability() const override;
    /// Detaches the images, as the destructor does. A notice names an image that stays attached.
    void release() override;

private:
    using MachineRules = Rejection (*)(const Machine&, int, const QVariantMap&);

    DiskBackend(const QDBusConnection& bus, std::vector<DiskSource> sources, const ConnectToBus& connect);
    Rejection rejectionBy(MachineRules rules, int function, const QVariantMap& params) const;
    std::unique_ptr<Execution> clone(int function, const QVariantMap& params);
    std::unique_ptr<Execution> testReading(int function, const QVariantMap& params);
    Rejection beginOrder(int function, const QVariantMap& params);
    OrderExecution::Refresh endOfOrder();
    std::unique_ptr<Execution> changeLetter(int function, const QVariantMap& params);
    QString readMachineNow();
    QString problemOf(const DiskSnapshot& snapshot);
    void publish(const DiskSnapshot& snapshot);
    void reportLetters();
    void reportImages();
    void refresh(Execution::Outcome outcome, std::function<void()> done);
    void onRead(const DiskSnapshot& snapshot);
    void finishWaiting();
    void onAvailabilityChanged();
    void readCapabilities();

    DiskService service_;
    std::vector<DiskSource> sources_;
    ImageDevices images_;
    DiskReader reader_;
    std::vector<Rejection> inUse_; ///< by disk, as of the last reading
    Capabilities capabilities_;
    DriveLetters letters_{StateFile(QStringLiteral("letters.json"))};
    std::vector<QString> deleted_; ///< keys of the partitions that the running order deletes
    std::vector<std::function<void()>> waiting_;
};

} // namespace host
