#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

namespace host {

/// What the clone guide has against a task; empty if nothing. Step 1 looks at the source alone, step 2 at
/// both records. Records are those of diskRecords() and stand for the disk or partition of @p machine that
/// they name.
QString cloneObjection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                       int step);

/// What the conversion guide has against a conversion of the record's disk or partition; empty if nothing.
/// @p conversion: 0 to GPT, 1 to MBR, 2 to basic, 3 to dynamic, 4 to NTFS, 5 to FAT, 6 to exFAT.
QString conversionObjection(const Machine& machine, int conversion, const QVariantMap& record);

/// The conversion's name, empty for a number that is none.
QString conversionName(int conversion);

/// Whether a boot medium can be made on the target that the task names; a task without one needs any USB
/// disk.
bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task);

/// The name of a toolbox function, by which the machine file switches it; empty for a number that is none.
QString toolboxName(int index);

/// What the toolbox has against a function on that record; empty if nothing.
QString toolboxObjection(const Machine& machine, int index, const QVariantMap& record);

/// The record in words, for a title: "disk 2", "drive D", "free space on disk 2".
QString describeRecord(const QVariantMap& record);

} // namespace host
