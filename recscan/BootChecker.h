#pragma once

/// Timeout of the boot checker in milliseconds.
constexpr int kBootCheckerLimitMs = 30000;

/// Runs the program "BootRepair_Console.exe" of the sibling folder "BootRepair" and waits for it. True if it found faulty
/// boot entries; false if not, if it cannot be started, or if it still runs after @p limitMs. It is never terminated.
bool bootCheckerFindsError(int limitMs = kBootCheckerLimitMs);
