#pragma once

#include "host/backend/Backend.h"
#include "host/udisks/Capabilities.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/Inventory.h"

#include <QtCore/QTimer>

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
    /// error sentence if the service is missing, or a disk is missing or in use.
    static std::variant<std::unique_ptr<DiskBackend>, QString> open(const QDBusConnection& bus,
                                                                    const std::vector<DiskSource>& sources);
    /// Detaches the images that open() attached.
    ~DiskBackend() override;

    Rejection functionRejection(int function) const override;
    Rejection orderRejection(int function, const QVariantMap& params) const override;
    Rejection taskRejection(int function, const QVariantMap& params) const override;
    std::unique_ptr<Execution> execute(int function, const QVariantMap& params) override;

private:
    using MachineRules = Rejection (*)(const Machine&, int, const QVariantMap&);

    DiskBackend(const QDBusConnection& bus, std::vector<DiskSource> sources);
    Rejection rejectionBy(MachineRules rules, int function, const QVariantMap& params) const;
    std::unique_ptr<Execution> changeLetter(int function, const QVariantMap& params);
    QString attachImages();
    QString readMachineNow();
    void publish(const DiskSnapshot& snapshot);
    void refresh(std::function<void()> done);
    void readWhenQuiet();
    void onRead(const DiskSnapshot& snapshot, const QString& error);

    DiskService service_;
    std::vector<DiskSource> sources_;
    std::vector<DiskSource> attached_; ///< images that this object attached
    Capabilities capabilities_;
    DriveLetters letters_;
    QTimer quietTimer_;
    /// While an order runs, the machine is not read: the tools that read the used space open the device, and
    /// the kernel changes no partition that is open.
    bool isOrderRunning_ = false;
    int readings_ = 0; ///< unsettled readings in sequence
    std::vector<std::function<void()>> waiting_;
};

} // namespace host
