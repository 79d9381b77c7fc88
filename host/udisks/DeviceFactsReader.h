#pragma once

#include "host/udisks/Inventory.h"

namespace host {

/// Reads the sector size from sysfs, and the used space from the mount or, for an unmounted file system, from
/// the read-only tools ntfsresize and dumpe2fs. The tools block the caller up to 10 seconds each and need
/// read access to the device.
DeviceFacts readDeviceFacts(const BlockDevice& device);

/// @name Output of the tools
/// Empty if the output has another form.
/// @{
std::optional<qint64> usedOfNtfsresize(const QString& output);
std::optional<qint64> usedOfDumpe2fs(const QString& output);
/// @}

} // namespace host
