#include "host/udisks/KernelPartitions.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>

namespace host {

namespace {

constexpr qint64 kKernelSector = 512; // of these files, whatever the sector size of the disk is

QString folderOf(const QString& device)
{
    return QLatin1String("/sys/class/block/") + device.mid(device.lastIndexOf(QLatin1Char('/')) + 1);
}

// Empty if the file cannot be read.
std::optional<qint64> bytesIn(const QString& folder, const char* name)
{
    QFile file(folder + QLatin1Char('/') + QLatin1String(name));
    bool isNumber = false;
    const qint64 sectors =
        file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong(&isNumber) : 0;
    return isNumber ? std::optional<qint64>(sectors * kKernelSector) : std::nullopt;
}

// The kernel shortens a container to the size of its table.
bool hasKernelsSize(const BlockDevice& partition)
{
    const PartitionEntry& entry = *partition.partition;
    const auto start = bytesIn(folderOf(partition.device), "start");
    const auto size = bytesIn(folderOf(partition.device), "size");
    return entry.isContainer || !start || !size ||
           (*start == entry.offset && *size == entry.size && *size == partition.size);
}

} // namespace

bool matchesKernel(const DiskSnapshot& snapshot, const BlockDevice& disk)
{
    const auto entries = snapshot.partitionsOf(disk.path);
    if (!std::all_of(entries.begin(), entries.end(),
                     [](const BlockDevice* entry) { return hasKernelsSize(*entry); }))
        return false;
    const QDir folder(folderOf(disk.device));
    const QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::all_of(names.begin(), names.end(), [&](const QString& name) {
        const auto start = bytesIn(folder.filePath(name), "start");
        return !start || std::any_of(entries.begin(), entries.end(), [&](const BlockDevice* entry) {
            return entry->partition->offset == *start;
        });
    });
}

} // namespace host
