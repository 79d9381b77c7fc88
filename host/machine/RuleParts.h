#pragma once

#include "host/machine/FileSystems.h"
#include "host/machine/Functions.h"
#include "host/machine/Layout.h"
#include "host/machine/Machine.h"
#include "host/machine/Rules.h"

#include <QtCore/QVariantMap>

#include <initializer_list>
#include <map>

// Shared by the files of the rules.
namespace host {

/// A question to a rule: the machine and the order's keys. Pointers are null if the object does not exist.
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

/// The rules for functions of a disk, for functions of a partition or a free region, and for guides.
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

/// Whether a volume with the size and the keys of the order can be created.
Rejection newVolume(const Question& q, qint64 size, int cluster, const char* fileSystemKey,
                    const char* labelKey);
/// Rejects a dynamic disk, whose layout is fixed.
Rejection basicDisk(const Disk& disk);
/// Rejects if fewer than @p count drive letters are unused.
Rejection lettersLeft(const Machine& machine, int count = 1);
/// True if no partition is between the two entries.
bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other);

} // namespace host
