#pragma once

#include "host/udisks/DiskService.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/ToolProcess.h"

#include <QtCore/QHash>
#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <vector>

namespace host {

/// Reads sector sizes from sysfs, and the used space of mounted file systems from the mount, of others from
/// their tools. Application thread, which never waits for a tool.
///
/// The result of a tool is kept until the device changes. Unmounted devices are opened read-only through the
/// disk service, without a question to the user; a refusal means that the used space is unknown.
class DeviceFactsReader : public QObject
{
    Q_OBJECT

public:
    explicit DeviceFactsReader(DiskService& service) : service_(service) {}

    /// Reads what is not known yet and then calls @p done, never before the return. An unfinished reading
    /// ends without its call.
    void read(const std::vector<BlockDevice>& devices, std::function<void()> done);
    /// Ends all tools, so that no device is open, and discards an unfinished reading.
    void stop();
    /// The content of the device has changed. @p path: object path.
    void forget(const QString& path);

    DeviceFacts factsOf(const BlockDevice& device) const;

Q_SIGNALS:
    /// The tool of that device starts. @p device: the device file.
    void toolStarted(QString device);

private:
    struct Known
    {
        QString path;
        std::optional<UsedSpace> space; ///< empty if the tool failed
    };
    void startNext();
    void open(const BlockDevice& device, const UsedSpaceTool& tool);
    void run(const BlockDevice& device, const UsedSpaceTool& tool, const QDBusUnixFileDescriptor& descriptor);
    void finishDevice(const BlockDevice& device, std::optional<UsedSpace> space);
    void finishIfDone();

    DiskService& service_;
    QHash<QString, Known> known_; ///< by the state of the device
    std::vector<BlockDevice> queue_;
    std::vector<std::unique_ptr<ToolProcess>> tools_;
    std::function<void()> done_;
    int unfinished_ = 0; ///< devices whose tool is being opened or runs
    int reading_ = 0;    ///< number of the current reading
};

} // namespace host
