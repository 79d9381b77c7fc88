#pragma once

#include "host/machine/Functions.h"
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
using Answer = QString;
using Rule = Answer (*)(const Question&);

/// The rules of the functions that act on a disk, and of those that act on a partition or a free region.
const std::map<Function, Rule>& diskRules();
const std::map<Function, Rule>& partitionRules();

constexpr qint64 kMbrLimit = qint64(512) << 32; ///< bytes of a disk that an MBR table can address
constexpr int kMbrPrimaries = 4;
constexpr int kGptPartitions = 128;

Answer yes();
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

Answer fileSystemAndLabel(const Question& q, const char* fileSystemKey, const char* labelKey);
/// Longest label that the file system holds.
int labelLimit(const QString& fileSystem);
/// Whether a cluster may have that many bytes.
Answer clusterFits(int bytes);
/// Whether the table takes one more primary partition.
Answer roomInTable(const Disk& disk);
/// Whether a drive letter is left for one more partition.
Answer letterLeft(const Question& q);
/// True if no partition lies between the two entries.
bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other);

} // namespace host
