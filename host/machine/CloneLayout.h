#pragma once

#include "host/machine/Machine.h"

#include <optional>
#include <vector>

namespace host {

/// The result of a clone to @p destination: a table of the source's type, and the copies in order, each
/// aligned to a mebibyte. Copies shrink, but not below their data, if there is not enough room. A copy is not
/// encrypted, and gets an unused letter if the original has a letter. Empty if the copies do not fit.
std::optional<Disk> clonedDisk(const Machine& machine, const Disk& source,
                               const std::vector<Partition>& parts, const Disk& destination);

/// The partitions that a disk clone copies.
std::vector<Partition> partsOfDisk(const Disk& disk);

/// The partitions that a system clone copies: boot, system, EFI, reserved and recovery partitions, and @p
/// named unless it is null.
std::vector<Partition> partsOfSystem(const Disk& disk, const Partition* named);

/// The disk with every partition aligned to 4096 bytes: unaligned partitions move to the next mebibyte and
/// shift the partitions after them. Empty if there is not enough room, or if one of them cannot be moved.
std::optional<Disk> alignedDisk(const Disk& disk);

} // namespace host
