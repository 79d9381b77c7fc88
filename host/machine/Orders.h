#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <QtCore/QVariantMap>

namespace host {

/// Carries out a function unless taskRejection() rejects it; a rejection leaves the machine unchanged.
Rejection attempt(Machine& machine, int function, const QVariantMap& params);

// The following functions require an order that taskRejection() accepts.

/// Carries out a function of the partition page or of a guide on @p machine; true if it is one that changes
/// the machine. The others only show or look for something.
bool carryOut(Machine& machine, int function, const QVariantMap& params);

/// How many bytes the function reads, writes or moves on its way; what its length follows from.
qint64 bytesMoved(const Machine& machine, int function, const QVariantMap& params);

/// Leaves @p machine as the function leaves it that ends after that @p share, 0 to 1, of its way; true if it
/// has changed. What writes over data from the start (formatting, wiping, a clone's target, a boot medium)
/// has destroyed it by then. Everything else either writes one thing at its end, or keeps a record by which
/// what it had begun is undone: the machine is as it was.
bool leaveInterrupted(Machine& machine, int function, const QVariantMap& params, double share);

} // namespace host
