#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QStringList>

namespace host {

/// Calls for the agent's command line about an entry of a disk, to be copied. A copied text can end with a
/// line feed that a terminal executes at once, so each call only reads, or lacks required arguments and is
/// rejected.
QStringList callExamples(const Partition& entry);

} // namespace host
