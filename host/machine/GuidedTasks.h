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

/// Values of the clone page's property cloneType, as the library sends them.
enum class CloneType : int { SystemPartition, SystemDisk, Disk, Partition };

/// Empty for an unknown type.
std::optional<Function> cloneFunction(int cloneType);

/// @name The work of each guide
/// Empty if the guide only informs, or if its records name no target.
/// @{
std::optional<GuidedWork> cloneWork(int cloneType, const QVariantMap& source, const QVariantMap& destination);
GuidedWork bootMediaWork(const QVariantMap& task);
std::optional<GuidedWork> recoveryWork(const QVariantMap& task);
/// @}

/// The machine's entry for a partition record, found by its start sector, because a partition may have no
/// letter. Null for a disk record.
const Partition* entryOf(const Machine& machine, const QVariantMap& record);

/// The disk of a record; -1 if it has none.
int diskIndexOf(const QVariantMap& record);

/// Whether the record describes a whole disk.
bool isDiskRecord(const QVariantMap& record);

/// Step 1 checks the source alone, step 2 both records. Records are those of diskRecords(); only their
/// position is used, everything else is read from @p machine.
Rejection cloneRejection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                         int step);

/// Whether the target that the task names can become a boot medium; a task without a target needs any USB
/// disk.
bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task);

/// The disk that becomes the boot medium; null for an ISO file or if no disk is suitable.
const Disk* bootMediaDisk(const Machine& machine, const QVariantMap& task);

/// The record in words, for a title: "disk 2", "drive D", "free space on disk 2".
Text describeRecord(const QVariantMap& record);

} // namespace host
