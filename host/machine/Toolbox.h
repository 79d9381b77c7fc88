#pragma once

#include "host/machine/GuidedTasks.h"

namespace host {

/// The toolbox functions, with the numbers that the library sends.
enum class ToolboxFunction : int {
    PasswordReset = 1,
    BootRepair = 2,
    WriteProtection = 3,
    RebuildMbr = 4,
    Align4k = 5,
    Windows11Check = 7,
    BadSectors = 9,
    BitLockerKey = 10,
    CheckFileSystem = 12
};

/// The name of a toolbox function, which is its key in the machine file; empty for an unknown index.
QString toolboxName(int index);

Rejection toolboxRejection(const Machine& machine, int index, const QVariantMap& record);

/// The work of a toolbox function. Empty if its page only informs, or if the record names no target.
std::optional<GuidedWork> toolboxWork(int index, const QVariantMap& record);

} // namespace host
