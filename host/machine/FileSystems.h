#pragma once

#include "host/machine/Text.h"

#include <QtCore/QString>

namespace host {

/// What a file system can be. Sizes and clusters are bytes.
struct FileSystem
{
    const char* name;
    qint64 smallest;
    qint64 largestMade; ///< largest that the host makes; a larger one can come from elsewhere
    qint64 largest;     ///< largest that there can be
    int label;          ///< longest label
    int smallestCluster;
    int largestCluster;
    qint64 clusters;        ///< most clusters that it counts
    const char* badInLabel; ///< characters that no label may have
};

/// The file system of that name in any case; null if the host cannot make one.
const FileSystem* fileSystem(const QString& name);

/// The cluster that a volume of that size gets if none is asked for; bytes.
int defaultCluster(const FileSystem& kind, qint64 size);

/// What speaks against a new volume of that kind, size, cluster and label; empty if nothing. A cluster of 0
/// is the default one.
Text newVolumeObjection(const FileSystem& kind, qint64 size, int cluster, const QString& label);

/// What speaks against a cluster of that many bytes in a volume of that size; empty if nothing.
Text clusterObjection(const FileSystem& kind, qint64 size, int cluster);

/// What speaks against a label; empty if nothing.
Text labelObjection(const FileSystem& kind, const QString& label);

/// What speaks against a volume of that kind and cluster having that size after a change; empty if nothing.
/// A cluster of 0 is not looked at.
Text sizeObjection(const FileSystem& kind, qint64 size, int cluster);

} // namespace host
