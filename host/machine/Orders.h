#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

namespace host {

/// Carries out a function of the partition page on @p machine, for those functions whose effect is simulated;
/// true if the machine has changed. The order must be one that refusal() has no objection to.
bool carryOut(Machine& machine, int function, const QVariantMap& params);

} // namespace host
