#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/udisks/Capabilities.h"

#include <QtCore/QVariantMap>

namespace host {

/// Whether the disk service can carry out a function that the rules of the machine accept.
Rejection realOrderRejection(const Capabilities& capabilities, const Machine& machine, int function,
                             const QVariantMap& params);

} // namespace host
