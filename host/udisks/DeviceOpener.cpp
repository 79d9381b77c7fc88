#include "host/udisks/DeviceOpener.h"

#include "host/machine/Layout.h"
#include "host/udisks/DiskUse.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <algorithm>
#include <utility>

namespace host {

namespace {

// The service removes and adds the objects of all partitions after each change of a table.
constexpr int kAttempts = 50;
constexpr int kRetryMs = 100;

bool isSame(const OrderTarget& target, const PartitionEntry& entry)
{
    const bool sameGuid = target.partitionGuid.isEmpty() ||
                          target.partitionGuid == QLatin1Char('{') + entry.uuid + QLatin1Char('}');
    return entry.offset == target.offset && entry.size == target.size && sameGuid;
}

bool isNewAt(const OrderTarget& target, const PartitionEntry& entry)
{
    return !entry.isContainer && entry.offset >= target.offset && entry.offset <= target.offset + kMebibyte;
}

OpenedDevice openedDevice(const BlockDevice& device, const QDBusMessage& reply)
{
    OpenedDevice opened;
    opened.path = device.path;
    opened.descriptor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
    opened.type = device.type;
    opened.target.size = device.size;
    if (device.partition) {
        const PartitionEntry& entry = *device.partition;
        opened.target = {entry.offset, entry.size, QString()};
    }
    return opened;
}

} // namespace

void DeviceOpener::open(DiskService& service, OpenRequest request, Reply reply, QObject* parent)
{
    auto* opener = new DeviceOpener(service, std::move(request), std::move(reply), parent);
    opener->read();
}

DeviceOpener::DeviceOpener(DiskService& service, OpenRequest request, Reply reply, QObject* parent)
    : QObject(parent), service_(service), request_(std::move(request)), reply_(std::move(reply))
{
}

void DeviceOpener::read()
{
    service_.read([self = QPointer<DeviceOpener>(this)](const DiskSnapshot& snapshot, const QString& error) {
        if (self)
            self->onRead(snapshot, error);
    });
}

void DeviceOpener::onRead(const DiskSnapshot& snapshot, const QString& error)
{
    if (!error.isEmpty())
        return end(Text(error));
    const BlockDevice* disk = request_.source.find(snapshot);
    if (disk == nullptr)
        return end(Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is no longer attached.")));
    if (const Rejection rejection = useRejection(snapshot, *disk))
        return end(*rejection);
    const BlockDevice* device = request_.target ? find(snapshot, *disk) : disk;
    if (device == nullptr)
        return retry(QT_TRANSLATE_NOOP("Sandbox", "The partition has changed since the order was accepted."));
    request_.checksKernel && !isChecked_ ? checkUnused(*disk, *device) : call(*device);
}

void DeviceOpener::checkUnused(const BlockDevice& disk, const BlockDevice& device)
{
    service_.call(exclusiveOpenCall(disk),
                  [self = QPointer<DeviceOpener>(this), device](const QDBusMessage& reply) {
                      closeDescriptor(reply);
                      if (!self)
                          return;
                      self->isChecked_ = errorOf(reply).isEmpty();
                      self->isChecked_ ? self->call(device) : self->onError(reply);
                  });
}

void DeviceOpener::call(const BlockDevice& device)
{
    service_.call({device.path, QStringLiteral("Block"), request_.method, request_.arguments},
                  [self = QPointer<DeviceOpener>(this), device](const QDBusMessage& reply) {
                      if (self)
                          errorOf(reply).isEmpty() ? self->end(openedDevice(device, reply))
                                                   : self->onError(reply);
                  });
}

const BlockDevice* DeviceOpener::find(const DiskSnapshot& snapshot, const BlockDevice& disk) const
{
    const auto entries = snapshot.partitionsOf(disk.path);
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const BlockDevice* entry) {
        const PartitionEntry& partition = *entry->partition;
        const bool isRead = !partition.type.isEmpty() && entry->size > 0;
        return isRead &&
               (request_.isNew ? isNewAt(*request_.target, partition) : isSame(*request_.target, partition));
    });
    return found == entries.end() ? nullptr : *found;
}

void DeviceOpener::onError(const QDBusMessage& reply)
{
    // The bus and the service close their copies of the exclusive descriptor a moment later.
    const bool isTransient = isMissingObject(reply) || isChecked_;
    isTransient ? retry(errorOf(reply)) : end(Text(errorOf(reply)));
}

void DeviceOpener::retry(const Text& error)
{
    if (++attempts_ == kAttempts)
        return end(error);
    QTimer::singleShot(kRetryMs, this, &DeviceOpener::read);
}

void DeviceOpener::end(const std::variant<OpenedDevice, Text>& result)
{
    deleteLater();
    reply_(result);
}

} // namespace host
