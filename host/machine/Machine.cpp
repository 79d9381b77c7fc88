#include "host/machine/Machine.h"

#include <algorithm>

namespace host {

namespace {

template <class Disks> auto findDisk(Disks& disks, int diskIndex) -> decltype(disks.data())
{
    const auto found = std::find_if(disks.begin(), disks.end(),
                                    [&](const Disk& disk) { return disk.diskIndex == diskIndex; });
    return found == disks.end() ? nullptr : &*found;
}

template <class Disks>
auto findPartition(Disks& disks, const QString& text) -> decltype(disks[0].partitions.data())
{
    const QString letter = letterOf(text);
    if (letter.isEmpty())
        return nullptr;
    for (auto& disk : disks) {
        for (auto& partition : disk.partitions) {
            if (!partition.unallocated && letterOf(partition.driveLetter) == letter)
                return &partition;
        }
    }
    return nullptr;
}

} // namespace

QString letterOf(const QString& text)
{
    const QString first = text.left(1).toUpper();
    return !first.isEmpty() && first.at(0) >= QLatin1Char('A') && first.at(0) <= QLatin1Char('Z') ? first
                                                                                                  : QString();
}

bool Disk::holdsRunningSystem() const
{
    return std::any_of(partitions.begin(), partitions.end(),
                       [](const Partition& partition) { return partition.isBoot || partition.isSystem; });
}

const Disk* Machine::disk(int diskIndex) const
{
    return findDisk(disks, diskIndex);
}

Disk* Machine::disk(int diskIndex)
{
    return findDisk(disks, diskIndex);
}

const Partition* Machine::partition(const QString& text) const
{
    return findPartition(disks, text);
}

Partition* Machine::partition(const QString& text)
{
    return findPartition(disks, text);
}

std::vector<const Partition*> Machine::freeRegions(int diskIndex) const
{
    std::vector<const Partition*> regions;
    if (const Disk* owner = disk(diskIndex)) {
        for (const Partition& entry : owner->partitions) {
            if (entry.unallocated)
                regions.push_back(&entry);
        }
    }
    return regions;
}

QString Machine::firstFreeLetter() const
{
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        const QString text(QLatin1Char{letter});
        if (partition(text) == nullptr)
            return text;
    }
    return QString();
}

} // namespace host
