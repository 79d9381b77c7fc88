#pragma once

#include "host/machine/Machine.h"

#include <optional>
#include <vector>

namespace host {

/// The disk that a clone leaves of @p destination: a table like the source's, and the copies one after the
/// other in their order, each beginning at a mebibyte. They keep their sizes where there is room; else each
/// shrinks to no less than its data. A copy is not encrypted and gets a letter of its own if its original has
/// one and one is left. None if they do not fit.
std::optional<Disk> clonedDisk(const Machine& machine, const Disk& source,
                               const std::vector<Partition>& parts, const Disk& destination);

/// What a clone of the whole disk copies.
std::vector<Partition> partsOfDisk(const Disk& disk);

/// What a clone of the system copies: what it starts from, what it runs on, what belongs to these, and the
/// partition @p named if that is not null.
std::vector<Partition> partsOfSystem(const Disk& disk, const Partition* named);

/// The disk whose partitions all begin at a multiple of 4096 bytes: those that do not move to the next
/// mebibyte, and push those behind. None if there is no room for that, or one in the way cannot be moved.
std::optional<Disk> alignedDisk(const Disk& disk);

} // namespace host
