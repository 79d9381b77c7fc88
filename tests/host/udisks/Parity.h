#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QString>
#include <QtCore/QVariantMap>

/// The machine after an order in the simulation. Fails the test if the simulation rejects the order.
host::Machine simulated(const host::Machine& before, int function, const QVariantMap& params);

/// The keys of the inventory in which two machines differ, with both values, one line per key; empty if they
/// agree. Keys that may differ are listed in the implementation with the reason.
QString differences(const host::Machine& simulated, const host::Machine& real);
