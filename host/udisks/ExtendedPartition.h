#pragma once

#include "host/udisks/OrderPlan.h"

// The extended partition of an MBR disk.
namespace host {

/// The first possible start of a logical drive at @p offset, in bytes; 0 outside an extended partition.
qint64 firstLogicalStart(const OrderState& state, qint64 offset);

/// The call that deletes the extended partition. Deleting it would delete its logical drives as well, so the
/// service and the kernel must agree that it has none.
StepCall deleteEmptyContainer(const OrderState& state);

} // namespace host
