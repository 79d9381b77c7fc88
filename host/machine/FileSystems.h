#pragma once

#include "host/machine/Rejection.h"

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

/// Sizes and clusters are bytes. A cluster of 0 means the default.
Rejection newVolumeRejection(const FileSystem& kind, qint64 size, int cluster, const QString& label);

Rejection clusterRejection(const FileSystem& kind, qint64 size, int cluster);

Rejection labelRejection(const FileSystem& kind, const QString& label);

/// For an existing volume that changes its size. A cluster of 0 is not checked.
Rejection sizeRejection(const FileSystem& kind, qint64 size, int cluster);

} // namespace host
