#pragma once

/// Timeout of the boot checker in milliseconds.
constexpr int kBootCheckerTimeoutMs = 30000;

/// Runs the program "BootRepair_Console.exe" of the sibling folder "BootRepair" and waits for it. Returns
/// true if it found faulty boot entries; false if it found nothing, cannot be started, or still runs after
/// @p timeoutMs. The program is never terminated.
bool bootCheckerFindsError(int timeoutMs = kBootCheckerTimeoutMs);
