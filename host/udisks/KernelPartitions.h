#pragma once

#include "host/udisks/BlockDevices.h"

namespace host {

/// False if the kernel has other partitions on a disk than the disk service reports, because the service has
/// not read the last change yet. True for a disk that the kernel does not know.
bool matchesKernel(const DiskSnapshot& snapshot, const BlockDevice& disk);

} // namespace host
