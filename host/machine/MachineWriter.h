#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QByteArray>

namespace host {

/// The machine as JSON that readMachine() reads: with every key that is not what it would be read as if it
/// were left out. The same machine always gives the same bytes.
QByteArray writeMachine(const Machine& machine);

/// writeMachine into a file; the error, empty if it could be written. What stood there before is replaced
/// only once the new content is complete.
QString writeMachineFile(const Machine& machine, const QString& path);

} // namespace host
