#pragma once

#include "host/udisks/DiskService.h"
#include "host/udisks/OrderPlan.h"

#include <QtCore/QObject>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <functional>
#include <optional>
#include <variant>

namespace host {

/// A disk or a partition, and the method of the interface Block that opens it.
struct OpenRequest
{
    DiskSource source;
    std::optional<OrderTarget> target; ///< the whole disk if empty
    /// The order has created the partition: the service may have moved its start by up to one mebibyte, and
    /// its size and GUID are unknown.
    bool isNew = false;
    /// The kernel must confirm that nothing uses the disk. Fails while this process holds one of its
    /// partitions.
    bool checksKernel = false;
    QString method;
    QVariantList arguments;
};

struct OpenedDevice
{
    QString path; ///< object path
    QDBusUnixFileDescriptor descriptor;
    QString type; ///< of the file system, as the service names it; empty if unknown
    OrderTarget target;
};

/// Finds a device in a fresh reading, rejects a disk in use, and opens the device through the disk service.
/// Application thread.
class DeviceOpener : public QObject
{
    Q_OBJECT

public:
    using Reply = std::function<void(const std::variant<OpenedDevice, Text>&)>;

    /// Calls @p reply once unless @p parent is destroyed first. @p service must outlive @p parent. The object
    /// destroys itself.
    static void open(DiskService& service, OpenRequest request, Reply reply, QObject* parent);

private:
    DeviceOpener(DiskService& service, OpenRequest request, Reply reply, QObject* parent);
    void read();
    void onRead(const DiskSnapshot& snapshot, const QString& error);
    const BlockDevice* find(const DiskSnapshot& snapshot, const BlockDevice& disk) const;
    void checkUnused(const BlockDevice& disk, const BlockDevice& device);
    void call(const BlockDevice& device);
    void onError(const QDBusMessage& reply);
    void retry(const Text& error);
    void end(const std::variant<OpenedDevice, Text>& result);

    DiskService& service_;
    OpenRequest request_;
    Reply reply_;
    int attempts_ = 0;
    bool isChecked_ = false; ///< the kernel has confirmed that nothing uses the disk
};

} // namespace host
