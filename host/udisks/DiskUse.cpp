#include "host/udisks/DiskUse.h"

#include "host/machine/Layout.h"

#include <QtDBus/QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace host {

namespace {

bool isOpenEncrypted(const DiskSnapshot& snapshot, const BlockDevice& device)
{
    return !device.cleartextDevice.isEmpty() ||
           std::any_of(snapshot.devices.begin(), snapshot.devices.end(),
                       [&](const BlockDevice& other) { return other.encryptedDevice == device.path; });
}

Rejection deviceRejection(const DiskSnapshot& snapshot, const BlockDevice& device)
{
    if (!device.mountPoints.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 holds a mounted file system (%2)."),
                    {device.device, device.mountPoints.first()});
    if (device.isActiveSwap)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 holds active swap space."), {device.device});
    if (device.type == QLatin1String("LVM2_member"))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 is a physical volume of LVM."), {device.device});
    if (device.isRaidMember || device.usage == QLatin1String("raid"))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 is a member of a RAID."), {device.device});
    if (isOpenEncrypted(snapshot, device))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 is an encrypted volume that is open."), {device.device});
    return kAccepted;
}

} // namespace

Rejection contentRejection(const BlockDevice& disk)
{
    if (disk.isBareVolume())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 holds a file system without a partition table."),
                    {disk.device});
    // While the service reads a table, its type is empty.
    static const QStringList known = {QString(), QStringLiteral("gpt"), QStringLiteral("dos")};
    if (disk.table && !known.contains(*disk.table))
        return Text(QT_TRANSLATE_NOOP("Sandbox",
                                      "The partition table of %1 is damaged or of an unsupported type (%2)."),
                    {disk.device, *disk.table});
    return kAccepted;
}

Rejection useRejection(const DiskSnapshot& snapshot, const BlockDevice& disk)
{
    if (const Rejection rejection = deviceRejection(snapshot, disk))
        return rejection;
    for (const BlockDevice* partition : snapshot.partitionsOf(disk.path)) {
        if (const Rejection rejection = deviceRejection(snapshot, *partition))
            return rejection;
    }
    return kAccepted;
}

bool holdsData(int descriptor, qint64 size)
{
    std::vector<char> bytes(static_cast<std::size_t>(kMebibyte));
    for (const qint64 position : {qint64(0), size - kMebibyte}) {
        const ssize_t count = pread(descriptor, bytes.data(), bytes.size(), position);
        const bool isZero = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
        if (count != kMebibyte || !isZero)
            return true;
    }
    return false;
}

DiskServiceCall exclusiveOpenCall(const BlockDevice& disk)
{
    const QVariantMap options{{QStringLiteral("flags"), O_EXCL}};
    return {disk.path, QStringLiteral("Block"), QStringLiteral("OpenDevice"), {QStringLiteral("r"), options}};
}

void closeDescriptor(const QDBusMessage& reply)
{
    // Copies share the descriptor, so taking it from one empties all.
    auto descriptor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
    const int taken = descriptor.takeFileDescriptor();
    if (taken >= 0)
        ::close(taken);
}

} // namespace host
