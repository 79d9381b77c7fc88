#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <string>

struct ToolBridge;

/// Clone types, by the host's numbers.
enum CloneType : int { CloneSystemPartition = 0, CloneSystemDisk = 1, CloneDisk = 2, ClonePartition = 3 };

/// Always returns -1, so the type in the destination record is used. The type that the records suggest is
/// computed and discarded.
int deduceCloneType(const QVariantMap& source, const QVariantMap& destination);

/// Writes the clone type to the property of the host's clone page, on the calling thread, and into @p result.
/// Returns false if the page or the property is missing.
bool applyCloneType(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                    QVariantMap& result);

/// Validates both records with the host's clone page and fills @p result, which already holds `defBoot`.
/// Emits it as the clone result on the calling thread, unless the page or a disk is missing. Returns true if
/// the signal was emitted. Off the application thread, waits for that thread.
bool validateCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                       QVariantMap& result);

/// The steps that all clone tools share: close the guide, validate, emit. Returns the reply for the agent.
std::string runCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                         int selector);

/// The first character of the root directory's path in upper case, which is the system drive's letter on
/// Windows; "C" for an empty path.
QString driveLetterOf(const QString& rootPath);
