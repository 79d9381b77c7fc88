#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QByteArray>

#include <optional>
#include <variant>

namespace host {

/// What is wrong with a machine's description, as one line that names the place.
struct MachineError
{
    QString text;
};

/// The machine that a JSON text describes. The top object holds `disks`, a list in the vocabulary of the
/// inventory, and the switches that docs/sandbox.md lists. `diskIndex` and `size` of a disk and `size` of a
/// partition must be there; any other key that is missing reads as false, 0 or empty, or follows from its
/// surroundings. A key that is unknown or has a value of another type is an error.
std::variant<Machine, MachineError> readMachine(const QByteArray& json);

/// readMachine on the content of a file of at most 16 MiB; no more than that is read of a larger one.
std::variant<Machine, MachineError> readMachineFile(const QString& path);

/// Rejects a machine that cannot exist: duplicate disk numbers or drive letters; partitions that overlap,
/// extend beyond their disk, use more than their size or name another disk.
std::optional<MachineError> machineRejection(const Machine& machine);

} // namespace host
