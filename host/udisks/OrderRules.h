#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/udisks/Capabilities.h"

#include <QtCore/QVariantMap>

namespace host {

/// Why real disks do not have the function at all; empty if they have it, or if the number is unknown.
Rejection unavailableRejection(int function);

/// Whether the back end carries out the function itself, without a plan of calls.
bool hasOwnExecution(int function);

/// Whether the disk service can carry out an order that the rules of the machine accept.
Rejection realOrderRejection(const Capabilities& capabilities, const Machine& machine, int function,
                             const QVariantMap& params);

} // namespace host
