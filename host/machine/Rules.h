#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <QtCore/QVariantMap>

namespace host {

/// Whether the partition page accepts an order. @p params: the keys of the order; `TestFunValid` is ignored.
/// Unknown functions are rejected.
Rejection orderRejection(const Machine& machine, int function, const QVariantMap& params);

/// Whether a function of the page or of one of the host's guides can run now.
Rejection taskRejection(const Machine& machine, int function, const QVariantMap& params);

/// The file system's name in the host's spelling; empty if the host cannot create it.
QString knownFileSystem(const QString& name);

/// Bytes of free space directly after the partition.
qint64 freeSpaceAfter(const Disk& disk, const Partition& partition);

/// The free region that an order for a new partition names; null if it does not exist.
const Partition* namedRegion(const Machine& machine, const QVariantMap& params);

} // namespace host
