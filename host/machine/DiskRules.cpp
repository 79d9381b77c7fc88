// Functions that act on a disk, the system or a stick as a whole.
#include "host/machine/RuleParts.h"
#include "host/machine/Spaces.h"

#include <algorithm>

namespace host {

namespace {

Answer initialize(const Question& q)
{
    const Answer answer = erasableDisk(q);
    if (!answer.isEmpty())
        return answer;
    const auto& entries = q.disk()->partitions;
    const bool empty =
        std::all_of(entries.begin(), entries.end(), [](const Partition& entry) { return entry.unallocated; });
    return empty ? yes() : no(QT_TRANSLATE_NOOP("Sandbox", "the disk has partitions"));
}

Answer deleteAll(const Question& q)
{
    const Answer answer = erasableDisk(q);
    return !answer.isEmpty() || !q.disk()->isUnInitialize
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the disk has no partition table"));
}

Answer wipeDisk(const Question& q)
{
    const Answer answer = erasableDisk(q);
    return !answer.isEmpty() || q.number("eraseCount") > 0
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the erase count must be positive"));
}

Answer autoCreate(const Question& q)
{
    const Answer answer = erasableDisk(q);
    if (!answer.isEmpty())
        return answer;
    const QString table = q.text("GptOrMbr").toUpper();
    if (table != QLatin1String("GPT") && table != QLatin1String("MBR"))
        return no(QT_TRANSLATE_NOOP("Sandbox", "the table must be GPT or MBR"));
    const int count = q.number("partitionCount");
    const int limit = table == QLatin1String("GPT") ? kGptPlaces : kMbrPlaces;
    if (count < 1 || count > limit)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the table does not hold that many partitions"));
    Machine emptied = q.machine;
    emptied.disk(q.disk()->diskIndex)->partitions.clear();
    const qint64 share = autoShare(*q.disk(), table == QLatin1String("GPT"), count);
    const Answer size = newVolumeObjection(*fileSystem(QStringLiteral("NTFS")), share, 0, QString());
    return size.isEmpty() ? lettersLeft(emptied, count) : size;
}

Answer bringOnline(const Question& q)
{
    const Answer answer = diskKnown(q);
    return !answer.isEmpty() || q.disk()->isOffline ? answer
                                                    : no(QT_TRANSLATE_NOOP("Sandbox", "the disk is online"));
}

Answer eject(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    const Disk& disk = *q.diskOf(*q.partition());
    if (!disk.isUSB && !disk.isRemoveUsb)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive is not on a USB disk"));
    return disk.holdsRunningSystem() ? no(QT_TRANSLATE_NOOP("Sandbox", "the disk holds the running system"))
                                     : yes();
}

Answer migrate(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    return migrationTarget(q.machine, *q.partition()).has_value()
               ? yes()
               : no(QT_TRANSLATE_NOOP("Sandbox", "no other disk has room for the data"));
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
