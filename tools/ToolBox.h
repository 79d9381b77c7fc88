#pragma once

#include <QtCore/QVariantMap>

class AIBridge;
class QObject;

/// Closes whatever guide is open on the host's screen. Any thread; waits for the application thread.
void closeGuide();

/// The object of the host that its stand-alone functions hang on, null if it has none. Not owned. Any thread.
QObject* hostMainObject(const AIBridge& bridge);

/// Runs a function of the host's toolbox with a disk record, a partition record or an empty map; closes the
/// guide first. True if the host took it. A null bridge is refused. Any thread; waits for the application
/// thread.
bool runToolBoxTask(const AIBridge* bridge, int index, const QVariantMap& info);

/// The functions of the toolbox, by the numbers that the host knows.
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
