#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <string>

struct ToolBridge;

/// The kinds of clone, by the numbers that the host knows.
enum CloneType : int { CloneSystemPartition = 0, CloneSystemDisk = 1, CloneDisk = 2, ClonePartition = 3 };

/// Always -1: the tool's own choice stands. The candidate that the records suggest is worked out and dropped.
int deduceCloneType(const QVariantMap& source, const QVariantMap& destination);

/// Writes the clone type to the host's clone page, on the calling thread, and into @p result. False if the
/// host has no such page or property.
bool applyCloneType(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                    QVariantMap& result);

/// Takes both records through the host's validation and, unless the page or a disk is missing, emits
/// the clone result on the calling thread. @p result carries `defBoot` and gets the rest of the
/// result map. True if the signal was emitted. Off the application thread it waits for that thread.
bool validateCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                       QVariantMap& result);

/// The common tail of the clone tools, from closing the guide to the reply for the agent.
std::string runCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                         int selector);

/// The first character of the root directory's path in upper case, which on Windows is the system drive's
/// letter; "C" for an empty path.
QString driveLetterOf(const QString& rootPath);
