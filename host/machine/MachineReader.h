#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QByteArray>

#include <optional>
#include <variant>

namespace host {

/// An error in a machine description: one line of text. `path` is the JSON path of the faulty value, for
/// example `disks[0].size`; empty if the error has none.
struct MachineError
{
    QString text;
    QString path = {};
};

/// Reads a machine from JSON. The top object contains `disks`, an array with the keys of the inventory, and
/// the settings listed in docs/sandbox.md. `diskIndex` and `size` of a disk and `size` of a partition are
/// required; a missing key defaults to false, 0 or empty, or is derived from the others. An unknown key or a
/// value of the wrong type is an error, whose text begins with its line.
std::variant<Machine, MachineError> readMachine(const QByteArray& json);

/// Calls readMachine() with the content of a file of at most 16 MiB; the rest of a larger file is not read.
std::variant<Machine, MachineError> readMachineFile(const QString& path);

/// Rejects a machine that cannot exist: duplicate disk numbers or drive letters; partitions that overlap,
/// extend beyond their disk, use more than their size or name another disk.
std::optional<MachineError> machineRejection(const Machine& machine);

} // namespace host
