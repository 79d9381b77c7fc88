#pragma once

/// How long the boot checker may take.
constexpr int kBootCheckerLimitMs = 30000;

/// Runs the program "BootRepair_Console.exe" of the neighbouring folder "BootRepair" and waits for it. True
/// if it found faulty boot entries; false if not, if it cannot be started, or if it still runs after @p
/// limitMs. It is never ended from here.
bool bootCheckerFindsError(int limitMs = kBootCheckerLimitMs);
