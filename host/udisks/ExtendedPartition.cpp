#include "host/udisks/ExtendedPartition.h"

#include "host/machine/Layout.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>

namespace host {

namespace {

// The table entry of a logical drive is in front of it. The entry of the first one is at the start of the
// extended partition, where the service leaves two mebibytes.
constexpr qint64 kFirstEntry = 2 * kMebibyte;
constexpr int kKernelSector = 512; // bytes, whatever the sector size of the disk
constexpr int kLargestPrimary = 4;

bool contains(const PartitionEntry& container, qint64 offset)
{
    return container.offset <= offset && offset < container.offset + container.size;
}

qint64 numberIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

// Whether the kernel has a partition of the disk inside the extended partition.
bool kernelHasLogical(const BlockDevice& disk, const PartitionEntry& container)
{
    const QDir folder(QStringLiteral("/sys/class/block/") + disk.device.section(QLatin1Char('/'), -1));
    const QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(names.begin(), names.end(), [&](const QString& name) {
        const int number = static_cast<int>(numberIn(folder.filePath(name + QLatin1String("/partition"))));
        const qint64 start = numberIn(folder.filePath(name + QLatin1String("/start"))) * kKernelSector;
        return number > kLargestPrimary ||
               (number > 0 && start != container.offset && contains(container, start));
    });
}

} // namespace

qint64 firstLogicalStart(const OrderState& state, qint64 offset)
{
    qint64 first = 0;
    for (const BlockDevice* device : state.snapshot.partitionsOf(state.disk.path)) {
        const PartitionEntry& entry = *device->partition;
        if (entry.isContainer && contains(entry, offset))
            first = entry.offset + kFirstEntry;
        else if (entry.isContained && entry.offset < offset)
            first = entry.offset + entry.size + kMebibyte;
    }
    return first;
}

StepCall deleteEmptyContainer(const OrderState& state)
{
    const auto entries = state.snapshot.partitionsOf(state.disk.path);
    const auto container = std::find_if(entries.begin(), entries.end(), [](const BlockDevice* entry) {
        return entry->partition->isContainer;
    });
    const bool hasLogical = std::any_of(entries.begin(), entries.end(), [](const BlockDevice* entry) {
        return entry->partition->isContained;
    });
    if (container == entries.end() || hasLogical || kernelHasLogical(state.disk, *(*container)->partition))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The extended partition still has logical drives."));
    return DiskServiceCall{
        (*container)->path, QStringLiteral("Partition"), QStringLiteral("Delete"), {QVariantMap()}};
}

} // namespace host
