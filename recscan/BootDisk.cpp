#include "recscan/BootDisk.h"

#include "plugin/HostCall.h"
#include "tools/HostRecords.h"

QVariantMap getBootDisk(const AIBridge* bridge)
{
    const QVariantList disks =
        callHost<QVariantList>(hostDeviceManager(bridge), "bootDisks", ConnectionRule::Direct, 0, true)
            .value_or(QVariantList());
    for (const QVariant& entry : disks) {
        const QVariantMap disk = entry.toMap();
        if (!disk.value(QStringLiteral("isOfflineBoot")).toBool())
            return disk;
    }
    return QVariantMap();
}

bool isBootDiskGpt(const AIBridge* bridge)
{
    return getBootDisk(bridge).value(QStringLiteral("isGPT")).toBool();
}
