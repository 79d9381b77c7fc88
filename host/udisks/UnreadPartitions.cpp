#include "host/udisks/UnreadPartitions.h"

#include "host/udisks/DiskUse.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/KernelPartitions.h"

namespace host {

void rescanUnread(DiskService& service, const DiskSnapshot& snapshot, const BlockDevice& disk)
{
    const auto rescan = [&service](const BlockDevice& device) {
        const QVariantMap options{{QStringLiteral("auth.no_user_interaction"), true}};
        service.call({device.path, QStringLiteral("Block"), QStringLiteral("Rescan"), {options}},
                     [](const QDBusMessage&) {});
    };
    for (const BlockDevice* entry : snapshot.partitionsOf(disk.path)) {
        if (!isComplete(disk, *entry))
            rescan(*entry);
    }
    if (contentRejection(disk) || !matchesKernel(snapshot, disk))
        rescan(disk);
}

} // namespace host
