#pragma once

#include "host/machine/Functions.h"
#include "host/machine/Machine.h"
#include "host/machine/Text.h"

#include <QtCore/QVariantMap>

#include <optional>

namespace host {

/// What a guide does once its user begins: a function, and the keys that taskRefusal() and carryOut() take.
struct GuidedWork
{
    Function function;
    QVariantMap params;
};

/// @name The work behind the guides that the agent's tools open
/// None where a guide only informs, or its records name nothing.
/// @{
std::optional<GuidedWork> cloneWork(int cloneType, const QVariantMap& source, const QVariantMap& destination);
std::optional<GuidedWork> conversionWork(int conversion, const QVariantMap& record);
GuidedWork bootMediaWork(const QVariantMap& task);
std::optional<GuidedWork> recoveryWork(const QVariantMap& task);
std::optional<GuidedWork> toolboxWork(int index, const QVariantMap& record);
/// @}

/// The entry of the machine that a partition's record stands for, found by its place, since not every one has
/// a letter. Null for a disk's record.
const Partition* entryOf(const Machine& machine, const QVariantMap& record);

/// Whether the record stands for a whole disk.
bool isDiskRecord(const QVariantMap& record);

/// What the clone guide has against a task; empty if nothing. Step 1 looks at the source alone, step 2 at
/// both records. Records are those of diskRecords() and stand for the disk or partition of @p machine that
/// they name.
Text cloneObjection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                    int step);

/// What the conversion guide has against a conversion of the record's disk or partition; empty if nothing.
/// @p conversion: 0 to GPT, 1 to MBR, 2 to basic, 3 to dynamic, 4 to NTFS, 5 to FAT, 6 to exFAT.
Text conversionObjection(const Machine& machine, int conversion, const QVariantMap& record);

/// The conversion's name, empty for a number that is none.
Text conversionName(int conversion);

/// The file system that a conversion gives a drive, empty for one of a disk.
QString conversionFileSystem(int conversion);

/// Whether a boot medium can be made on the target that the task names; a task without one needs any USB
/// disk.
bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task);

/// The disk on which a boot medium is made; null for a file, and where no disk serves.
const Disk* bootMediaDisk(const Machine& machine, const QVariantMap& task);

/// The name of a toolbox function, by which the machine file switches it; empty for a number that is none.
QString toolboxName(int index);

/// What the toolbox has against a function on that record; empty if nothing.
Text toolboxObjection(const Machine& machine, int index, const QVariantMap& record);

/// The record in words, for a title: "disk 2", "drive D", "free space on disk 2".
Text describeRecord(const QVariantMap& record);

} // namespace host
