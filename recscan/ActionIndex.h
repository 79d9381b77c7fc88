#pragma once

/// Numbers of the cases and of their actions. A recommendation carries the number of its case as its action,
/// with one exception: the system drive's case uses ActionSmartLayout if its own disk has room. Each number
/// has a row in ScanCases.cpp.
enum RecActionIndex : int {
    ActionWin10EndOfSupport = 0,
    ActionDiskHealth = 1,
    ActionMigrateData = 2,
    ActionSmartLayout = 3,
    ActionConvertToGpt = 4,
    ActionConvertToExfat = 5,
    ActionRepairBoot = 6,
    ActionAlign4k = 7,
    ActionCreateUsb = 8,
    ActionNone = 9,
    ActionRepairRaw = 10,
    ActionFindBitLockerKey = 11,
    ActionCount
};

/// Result of the Windows 11 check, in the record for the host and in the host's answer.
enum Win11CheckResult : int { Win11Ready = 0, Win11NeedsGpt = 1, Win11NotReady = 2 };
