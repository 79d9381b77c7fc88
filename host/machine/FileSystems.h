#pragma once

#include "host/machine/Rejection.h"

#include <QtCore/QString>

namespace host {

/// The limits of a file system. Sizes and clusters are bytes.
struct FileSystem
{
    const char* name;
    qint64 smallest;
    qint64 largestMade; ///< largest volume that the host creates; existing volumes can be larger
    qint64 largest;     ///< largest possible volume
    int label;          ///< maximum length of the label
    int smallestCluster;
    int largestCluster;
    qint64 clusters;        ///< maximum number of clusters
    const char* badInLabel; ///< characters that are invalid in a label
};

/// Case-insensitive; null if the host cannot create that file system.
const FileSystem* fileSystem(const QString& name);

/// The default cluster of a volume of that size, in bytes.
int defaultCluster(const FileSystem& kind, qint64 size);

/// Sizes and clusters are bytes. A cluster of 0 means the default.
Rejection newVolumeRejection(const FileSystem& kind, qint64 size, int cluster, const QString& label);

Rejection clusterRejection(const FileSystem& kind, qint64 size, int cluster);

Rejection labelRejection(const FileSystem& kind, const QString& label);

/// For an existing volume that changes its size. A cluster of 0 is not checked.
Rejection sizeRejection(const FileSystem& kind, qint64 size, int cluster);

} // namespace host
