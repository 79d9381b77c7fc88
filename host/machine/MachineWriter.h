#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QByteArray>

namespace host {

/// The machine as JSON for readMachine(), without keys that have their default. The same machine always gives
/// the same bytes.
QByteArray writeMachine(const Machine& machine);

/// Replaces the file with the machine, or keeps the old file. Returns the error; empty on success.
QString writeMachineFile(const Machine& machine, const QString& path);
/// Whether writeMachineFile() would succeed now. The file remains. Returns the error; empty on success.
QString tryMachineFile(const Machine& machine, const QString& path);

} // namespace host
