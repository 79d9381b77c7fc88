#include "host/udisks/UnreadPartitions.h"

namespace host {

void rescanUnread(DiskService& service, const DiskSnapshot& snapshot, const BlockDevice& disk)
{
    for (const BlockDevice* entry : snapshot.partitionsOf(disk.path)) {
        if (entry->partition->type.isEmpty())
            service.call({entry->path, QStringLiteral("Block"), QStringLiteral("Rescan"), {QVariantMap()}},
                         [](const QDBusMessage&) {});
    }
}

} // namespace host
