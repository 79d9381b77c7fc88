#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QByteArray>

namespace host {

/// The machine as JSON for readMachine(), without keys that have their default. The same machine always gives
/// the same bytes.
QByteArray writeMachine(const Machine& machine);

/// Writes the machine to a file atomically. Returns the error; empty on success.
QString writeMachineFile(const Machine& machine, const QString& path);

} // namespace host
