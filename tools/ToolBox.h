#pragma once

#include <QtCore/QVariantMap>

struct ToolBridge;

/// Closes an open guide, then runs a function of the host's toolbox with a disk record, a partition record or
/// an empty map. Returns true if the host accepted it; false for a null bridge. Any thread; waits for the
/// application thread.
bool runToolBoxTask(const ToolBridge* bridge, int index, const QVariantMap& info);

/// Functions of the toolbox, by the host's numbers.
enum ToolBoxIndex : int {
    ToolBoxPasswordReset = 1,
    ToolBoxRepairWindowsBoot = 2,
    ToolBoxWriteProtection = 3,
    ToolBoxRebuildMbr = 4,
    ToolBoxAlign4k = 5,
    ToolBoxWindows11Check = 7,
    ToolBoxBadSectors = 9,
    ToolBoxBitLockerKey = 10,
    ToolBoxCheckFileSystem = 12
};
