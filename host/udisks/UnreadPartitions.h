#pragma once

#include "host/udisks/DiskService.h"

namespace host {

/// Asks the service to read a disk again whose table it cannot read or which differs from the kernel's, and
/// its partitions that have no type or GUID yet: udev misses a change while it processes the one before. Does
/// not wait.
void rescanUnread(DiskService& service, const DiskSnapshot& snapshot, const BlockDevice& disk);

} // namespace host
