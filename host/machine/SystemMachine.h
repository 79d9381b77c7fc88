#pragma once

#include "host/machine/MachineReader.h"

namespace host {

/// This computer, as `lsblk --json -b -O` describes it. Blocks for at most ten seconds. An error if the
/// program is missing, fails or prints something else.
std::variant<Machine, MachineError> readSystemMachine();

/// Reads the JSON output of lsblk. Disks are numbered in order; the file system mounted at "/" gets the
/// letter C, the others get letters from D on.
std::variant<Machine, MachineError> machineFromLsblk(const QByteArray& json);

} // namespace host
