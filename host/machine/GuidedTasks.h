#pragma once

#include "host/machine/Functions.h"
#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <QtCore/QVariantMap>

#include <optional>

namespace host {

/// The work that the user starts in a guide: a function, and the parameters of taskRejection() and
/// carryOut().
struct GuidedWork
{
    Function function;
    QVariantMap params;
};

/// The conversions, with the numbers that the library sends. The first four convert a disk, the others a
/// partition.
enum class Conversion : int { ToGpt, ToMbr, ToBasic, ToDynamic, ToNtfs, ToFat, ToExfat };

/// Empty for an unknown number.
std::optional<Conversion> conversionOf(int number);
Text conversionName(Conversion conversion);
/// The resulting file system; empty for the conversion of a disk.
QString conversionFileSystem(Conversion conversion);

/// @name The work of each guide
/// Empty if the guide only informs, or if its records name no target.
/// @{
std::optional<GuidedWork> cloneWork(int cloneType, const QVariantMap& source, const QVariantMap& destination);
GuidedWork conversionWork(Conversion conversion, const QVariantMap& record);
GuidedWork bootMediaWork(const QVariantMap& task);
std::optional<GuidedWork> recoveryWork(const QVariantMap& task);
std::optional<GuidedWork> toolboxWork(int index, const QVariantMap& record);
/// @}

/// The machine's entry for a partition record, found by its start sector, because a partition may have no
/// letter. Null for a disk record.
const Partition* entryOf(const Machine& machine, const QVariantMap& record);

/// Whether the record describes a whole disk.
bool isDiskRecord(const QVariantMap& record);

/// Step 1 checks the source alone, step 2 both records. Records are those of diskRecords(); only their
/// position is used, everything else is read from @p machine.
Rejection cloneRejection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                         int step);

/// Rejects an empty @p conversion.
Rejection conversionRejection(const Machine& machine, std::optional<Conversion> conversion,
                              const QVariantMap& record);

/// Whether the target that the task names can become a boot medium; a task without a target needs any USB
/// disk.
bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task);

/// The disk that becomes the boot medium; null for an ISO file or if no disk is suitable.
const Disk* bootMediaDisk(const Machine& machine, const QVariantMap& task);

/// The name of a toolbox function, which is its key in the machine file; empty for an unknown index.
QString toolboxName(int index);

Rejection toolboxRejection(const Machine& machine, int index, const QVariantMap& record);

/// The record in words, for a title: "disk 2", "drive D", "free space on disk 2".
Text describeRecord(const QVariantMap& record);

} // namespace host
