#pragma once

#include "host/udisks/DiskService.h"

namespace host {

/// Asks the service to read the partitions of a disk again that have no type yet. A lost event of udev would
/// leave them in that state. Does not wait.
void rescanUnread(DiskService& service, const DiskSnapshot& snapshot, const BlockDevice& disk);

} // namespace host
