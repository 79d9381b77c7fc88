#include "host/machine/WorkMarks.h"

#include "host/machine/DataLoss.h"
#include "host/machine/GuidedTasks.h"

namespace host {

namespace {

void markEntry(WorkMarks& marks, const Partition& entry, WorkMark mark)
{
    marks[{entry.diskIndex, entry.startSector}] = mark;
}

void markRecord(WorkMarks& marks, const Machine& machine, const QVariantMap& record, WorkMark mark)
{
    if (const Partition* entry = entryOf(machine, record))
        return markEntry(marks, *entry, mark);
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr || !isDiskRecord(record))
        return;
    for (const Partition& entry : disk->partitions)
        markEntry(marks, entry, mark);
}

} // namespace

WorkMarks workMarks(const Machine& machine, int function, const QVariantMap& params)
{
    const QString destination = QStringLiteral("destination");
    WorkMarks marks;
    markRecord(marks, machine, params.value(QStringLiteral("source")).toMap(), WorkMark::Source);
    if (params.contains(destination)) {
        markRecord(marks, machine, params.value(destination).toMap(), WorkMark::Target);
    } else if (const auto loss = dataLoss(machine, function, params)) {
        for (const Partition& partition : loss->partitions)
            markEntry(marks, partition, WorkMark::Target);
    }
    return marks;
}

} // namespace host
