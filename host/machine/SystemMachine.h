#pragma once

#include "host/machine/MachineReader.h"

namespace host {

/// The computer that this runs on, as `lsblk --json -b -O` describes it. Takes as long as that program, at
/// most ten seconds. An error where the program is missing, fails, or says something else.
std::variant<Machine, MachineError> readSystemMachine();

/// The machine that lsblk's JSON text describes. Disks are numbered in their order; the file system mounted
/// at "/" gets the letter C, the others letters from D on.
std::variant<Machine, MachineError> machineFromLsblk(const QByteArray& json);

} // namespace host
