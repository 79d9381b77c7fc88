#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/BlockIo.h"

namespace host {

/// Copies @p size bytes, a multiple of the sector size, and compares the copy with the source block by block.
/// The result is an error with its position; empty after success or if @p control cancels the work.
///
/// The first mebibyte, which identifies a file system, is cleared at the start and written at the end. A copy
/// that is not complete is therefore not recognised as a file system. doneBytes reaches 2 * @p size.
Rejection copyBlocks(BlockIo& source, BlockIo& target, qint64 size, WorkControl& control);

/// Clears the first mebibyte, so that the copy is no longer recognised as a file system.
void discardCopy(BlockIo& target, qint64 size);

} // namespace host
