#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/machine/Spaces.h"
#include "host/udisks/Capabilities.h"

#include <QtCore/QVariantMap>

#include <optional>
#include <vector>

namespace host {

/// @name Whether a clone that the rules of the machine accept can be carried out
/// @{
Rejection realCloneDiskRejection(const Machine& machine, const QVariantMap& params);
Rejection realClonePartitionRejection(const Capabilities& capabilities, const Machine& machine,
                                      const QVariantMap& params);
/// @}

/// The type of a partition's file system, as the disk service names it; empty for RAW and for a type that the
/// host does not know.
QString serviceType(const Partition& partition);

/// The positions of the copies on the destination of a disk clone.
struct CloneLayout
{
    std::vector<qint64> begins;   ///< requested starts; a logical drive starts one mebibyte later
    std::optional<Span> extended; ///< the extended partition, if there are logical drives
    qint64 end = 0;
};
CloneLayout cloneLayout(const std::vector<Partition>& parts);

} // namespace host
