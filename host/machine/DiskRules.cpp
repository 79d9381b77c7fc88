// Functions that act on a whole disk.
#include "host/machine/RuleParts.h"
#include "host/machine/Spaces.h"

#include <algorithm>

namespace host {

namespace {

Rejection initialize(const Question& q)
{
    if (const Rejection rejection = erasableDisk(q))
        return rejection;
    const auto& entries = q.disk()->partitions;
    const bool empty =
        std::all_of(entries.begin(), entries.end(), [](const Partition& entry) { return entry.unallocated; });
    return rejectIf(!empty, QT_TRANSLATE_NOOP("Sandbox", "The disk has partitions."));
}

Rejection deleteAll(const Question& q)
{
    return firstOf(q, {erasableDisk, diskWithTable});
}

Rejection wipeDisk(const Question& q)
{
    return firstOf(q, {erasableDisk, positiveEraseCount});
}

Rejection autoCreate(const Question& q)
{
    if (const Rejection rejection = erasableDisk(q))
        return rejection;
    const QString table = q.text("GptOrMbr").toUpper();
    if (table != QLatin1String("GPT") && table != QLatin1String("MBR"))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The partition table must be GPT or MBR."));
    const int count = q.number("partitionCount");
    const int limit = table == QLatin1String("GPT") ? kGptPlaces : kMbrPlaces;
    if (count < 1 || count > limit)
        return Rejection(
            QT_TRANSLATE_NOOP("Sandbox", "The partition table cannot hold that many partitions."));
    Machine emptied = q.machine;
    emptied.disk(q.disk()->diskIndex)->partitions.clear();
    const qint64 share = autoShare(*q.disk(), table == QLatin1String("GPT"), count);
    if (const Rejection rejection =
            newVolumeRejection(*fileSystem(QStringLiteral("NTFS")), share, 0, QString()))
        return rejection;
    return lettersLeft(emptied, count);
}

Rejection bringOnline(const Question& q)
{
    if (const Rejection rejection = diskKnown(q))
        return rejection;
    return rejectIf(!q.disk()->isOffline, QT_TRANSLATE_NOOP("Sandbox", "The disk is online."));
}

Rejection eject(const Question& q)
{
    if (const Rejection rejection = letterKnown(q))
        return rejection;
    const Disk& disk = *q.diskOf(*q.partition());
    if (!disk.isUSB && !disk.isRemoveUsb)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive is not on a USB disk."));
    return rejectIf(disk.holdsRunningSystem(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk holds the running system."));
}

Rejection migrate(const Question& q)
{
    if (const Rejection rejection = readableVolume(q))
        return rejection;
    return rejectIf(!migrationTarget(q.machine, *q.partition()).has_value(),
                    QT_TRANSLATE_NOOP("Sandbox", "No other disk has room for the data."));
}

} // namespace

const std::map<Function, Rule>& diskRules()
{
    static const std::map<Function, Rule> table = {
        {Function::OpenDiskLayoutEditor, diskKnown},
        {Function::DeleteAllPartitions, deleteAll},
        {Function::InitializeDiskToMbr, initialize},
        {Function::InitializeDiskToGpt, initialize},
        {Function::WipeDisk, wipeDisk},
        {Function::MigrateSystemDriveData, migrate},
        {Function::AutoCreatePartitions, autoCreate},
        {Function::DiskBringOnline, bringOnline},
        {Function::EjectUsb, eject},
        {Function::LowLevelFormat, erasableDisk},
    };
    return table;
}

} // namespace host
