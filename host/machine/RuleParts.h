#pragma once

#include "host/machine/FileSystems.h"
#include "host/machine/Functions.h"
#include "host/machine/Layout.h"
#include "host/machine/Machine.h"
#include "host/machine/Rules.h"

#include <QtCore/QVariantMap>

#include <initializer_list>
#include <map>

// What the rules of the partition page share. For the files of the rules only.
namespace host {

/// A question as a rule sees it: the machine and the order's keys. A pointer is null for what does not exist.
struct Question
{
    const Machine& machine;
    const QVariantMap& params;

    QString text(const char* key) const { return params.value(QLatin1String(key)).toString(); }
    int number(const char* key) const { return params.value(QLatin1String(key)).toInt(); }
    qint64 bytes(const char* key) const { return params.value(QLatin1String(key)).toLongLong(); }
    const Partition* partition(const char* key = "driveLetter") const { return machine.partition(text(key)); }
    const Disk* disk() const { return machine.disk(number("diskIndex")); }
    const Disk* diskOf(const Partition& entry) const { return machine.disk(entry.diskIndex); }
};

using Rule = Rejection (*)(const Question&);

/// The rules of the functions that act on a disk, of those that act on a partition or a free region, and of
/// the host's own guides.
const std::map<Function, Rule>& diskRules();
const std::map<Function, Rule>& partitionRules();
const std::map<Function, Rule>& guidedRules();

/// The first rejection of the conditions, which are checked in order.
Rejection firstOf(const Question& q, std::initializer_list<Rule> conditions);

/// @name Conditions that include the conditions they depend on
/// @{
Rejection diskKnown(const Question& q);
Rejection writableDisk(const Question& q);
Rejection erasableDisk(const Question& q);
Rejection letterKnown(const Question& q);
Rejection writablePartition(const Question& q);
Rejection erasablePartition(const Question& q);
Rejection readableVolume(const Question& q);
/// @}

/// @name Conditions on an existing disk
/// @{
Rejection diskWithTable(const Question& q);
Rejection basicDiskOfOrder(const Question& q);
/// @}

Rejection positiveEraseCount(const Question& q);

/// Whether a volume of that size can be made as the keys of the order want it.
Rejection newVolume(const Question& q, qint64 size, int cluster, const char* fileSystemKey,
                    const char* labelKey);
/// Whether the disk is a basic one: a dynamic disk keeps its layout.
Rejection basicDisk(const Disk& disk);
/// Whether a drive letter is left for @p count more partitions.
Rejection lettersLeft(const Machine& machine, int count = 1);
/// True if no partition lies between the two entries.
bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other);

} // namespace host
