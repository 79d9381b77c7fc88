#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <QtCore/QVariantMap>

namespace host {

/// Carries out a function unless taskRejection() rejects it; a rejection leaves the machine unchanged.
Rejection attempt(Machine& machine, int function, const QVariantMap& params);

// The following functions require an order that taskRejection() accepts.

/// Carries out a function of the partition page or of a guide. True if the function can change a machine.
bool carryOut(Machine& machine, int function, const QVariantMap& params);

/// Bytes that the function reads, writes or moves; they determine its duration.
qint64 bytesMoved(const Machine& machine, int function, const QVariantMap& params);

/// Applies the effect of a function that ends early, after @p share (0 to 1) of its work; true if the machine
/// has changed. Functions that overwrite data from the start (format, wipe, clone target, boot medium) have
/// destroyed it. All others write once at the end or can be rolled back, so the machine is unchanged.
bool leaveInterrupted(Machine& machine, int function, const QVariantMap& params, double share);

} // namespace host
