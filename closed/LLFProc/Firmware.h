#pragma once

#include <QtCore/qglobal.h>

#include <functional>

/// The calls that report the machine's firmware. Any thread.
struct FirmwareCalls
{
    /// Writes the firmware type, 2 for UEFI; false if the system cannot report it. Empty on a system without
    /// this call.
    std::function<bool(quint32*)> type;
    /// The system's error number for reading a firmware variable that cannot exist; 1 on a machine without
    /// UEFI.
    std::function<quint32()> variableError;
};

/// The calls of the running system.
FirmwareCalls systemFirmwareCalls();

/// True if the machine started through UEFI. Reads a variable only on a system that has no call for the type.
bool startedThroughUefi(const FirmwareCalls& calls);
