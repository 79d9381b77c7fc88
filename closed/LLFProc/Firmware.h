#pragma once

#include <QtCore/qglobal.h>

#include <functional>

/// The calls that report the machine's firmware. Any thread.
struct FirmwareCalls
{
    /// Writes the firmware type, 2 for UEFI; returns false if the system cannot report it. Empty on a system
    /// without this call.
    std::function<bool(quint32*)> type;
    /// Returns the system's error number for reading a firmware variable that does not exist; 1 without UEFI.
    std::function<quint32()> variableError;
};

/// The calls of the running system.
FirmwareCalls systemFirmwareCalls();

/// True if the machine was started by UEFI. Reads a variable only if the system has no call for the firmware
/// type.
bool startedThroughUefi(const FirmwareCalls& calls);
