#pragma once

#include "host/machine/FileSystems.h"
#include "host/machine/Functions.h"
#include "host/machine/Layout.h"
#include "host/machine/Machine.h"
#include "host/machine/Rules.h"

#include <QtCore/QVariantMap>

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

/// Empty for yes, else the first objection.
using Answer = Text;
using Rule = Answer (*)(const Question&);

/// The rules of the functions that act on a disk, of those that act on a partition or a free region, and of
/// the host's own guides.
const std::map<Function, Rule>& diskRules();
const std::map<Function, Rule>& partitionRules();
const std::map<Function, Rule>& guidedRules();

Answer yes();
/// @p reason: a pattern of a Text.
Answer no(const char* reason);

/// @name Conditions, each with those before it that it rests on
/// @{
Answer diskKnown(const Question& q);
Answer writableDisk(const Question& q);
Answer erasableDisk(const Question& q);
Answer letterKnown(const Question& q);
Answer writablePartition(const Question& q);
Answer erasablePartition(const Question& q);
Answer readableVolume(const Question& q);
/// @}

/// Whether a volume of that size can be made as the keys of the order want it.
Answer newVolume(const Question& q, qint64 size, int cluster, const char* fileSystemKey,
                 const char* labelKey);
/// Whether the disk is a basic one: a dynamic disk keeps its layout.
Answer basicDisk(const Disk& disk);
/// Whether a drive letter is left for @p count more partitions.
Answer lettersLeft(const Machine& machine, int count = 1);
/// True if no partition lies between the two entries.
bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other);

} // namespace host
