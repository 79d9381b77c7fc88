#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <vector>

namespace host {

/// One entry of a disk's partition list: a partition or a free region. The fields have the names of the
/// inventory's keys. Sizes are bytes; sector numbers count sectors of `sectorSize` bytes; `clusterSize`
/// counts sectors.
struct Partition
{
    bool unallocated = false;
    int diskIndex = -1;
    int partitionIndex = 0;
    qint64 size = 0;
    qint64 volumeSize = 0;
    qint64 usedSize = 0;
    qint64 startSector = 0;
    qint64 endSector = 0;
    qint64 dbrStartSector = 0;
    int sectorSize = 512;
    int clusterSize = 0;
    bool isUnformattedType = false;
    bool isBitLocker = false;
    bool readonly = false;
    bool isHidden = false;
    bool isActive = false;
    bool isSystem = false;
    bool isBoot = false;
    bool defBoot = false;
    bool isPrimary = true;
    bool isGPT = false;
    bool isStorageSpace = false;
    bool isDynamic = false;
    bool isRemovable = false;
    bool isVirtualDisk = false;
    bool isBad = false;
    bool isNeedSectorBySector = false;
    bool isOfflineBoot = false;
    bool isLowSpace = false;
    bool gptReserved = false;
    bool gptEFI = false;
    bool gptRecovery = false;
    QString partGUID;
    int bltState = 0;
    QString driveLetter; ///< one letter; "*" or empty without a letter
    QString label;
    QString fsString;
    int dynamicVolumeType = 0;

    qint64 freeSize() const { return size - usedSize; }
    /// First byte of the entry and the first byte after it, from the start of the disk.
    qint64 startOffset() const { return startSector * sectorSize; }
    qint64 endOffset() const { return startOffset() + size; }
    bool isLocked() const { return bltState == 3; }
};

struct Disk
{
    QString diskInterface;
    int diskIndex = -1;
    qint64 size = 0;
    qint64 usedSize = 0;
    bool isUnInitialize = false;
    bool isGPT = false;
    bool isStorageSpace = false;
    bool isDynamic = false;
    bool readonly = false;
    bool isOffline = false;
    bool isBad = false;
    bool isProtected = false;
    bool isRemoveUsb = false;
    bool isVHD = false;
    bool isVMD = false;
    bool isVirtualDisk = false;
    bool isUSB = false;
    bool isSSD = false;
    int bltState = 0;
    bool isLowSpace = false;
    bool isOfflineBoot = false;
    int emptyPartitionCount = 0;
    QString serialNO;
    std::vector<Partition> partitions; ///< in the order of their positions, free regions included

    bool holdsRunningSystem() const;
    bool isWritable() const { return !readonly && !isProtected && !isOffline && !isBad; }
};

/// A machine: its disks and its settings. A plain value; copies are independent.
struct Machine
{
    QString name;
    std::vector<Disk> disks;
    QMap<QString, bool> toolbox; ///< a function that is absent is switched on
    bool preOsEnabled = false;
    bool win11CheckerEnabled = false;
    bool bootMediaEnabled = true;
    bool busy = false;          ///< always reports a running task
    bool popuped = false;       ///< always reports an open dialog
    int taskMilliseconds = 200; ///< fixed duration of each task
    QSet<int> smartErrors;      ///< disks with health errors

    const Disk* disk(int diskIndex) const;
    Disk* disk(int diskIndex);
    /// The partition whose letter is the first character of @p text, case-insensitive; null if not found.
    const Partition* partition(const QString& text) const;
    Partition* partition(const QString& text);
    /// The disk's free regions, in the order of their positions.
    std::vector<const Partition*> freeRegions(int diskIndex) const;
    /// The first unused letter from D on; empty if all are in use.
    QString firstFreeLetter() const;
};

/// The drive letter at the start of @p text, in upper case; empty if it does not start with a letter.
QString letterOf(const QString& text);

} // namespace host
