#pragma once

#include "host/udisks/BlockIo.h"

namespace host {

/// The unreadable sectors of a range. Numbers count from the start of the range.
struct BadSectors
{
    qint64 count = 0;
    qint64 first = -1; ///< -1 without an unreadable sector
    qint64 last = -1;
};

/// Reads @p size bytes, a multiple of @p sectorSize. A block that cannot be read is read again sector by
/// sector. The result is incomplete if @p control cancels the work.
BadSectors findBadSectors(BlockIo& device, qint64 size, int sectorSize, WorkControl& control);

} // namespace host
