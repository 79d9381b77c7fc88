#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Text.h"

#include <QtCore/QVariantMap>

#include <optional>
#include <vector>

namespace host {

/// The data that an order destroys.
struct DataLoss
{
    Text operation; ///< a title: "Format a partition"
    int diskIndex = -1;
    /// The order keeps the data if it succeeds, as a resize does.
    bool isRisk = false;
    std::vector<Partition> partitions; ///< empty if the disk has no known partition
};

/// Empty for an order that keeps all data: a label, a letter, a flag, a new partition in free space, a larger
/// partition. @p params: accepted by taskRejection(). A function that is not in the table counts as
/// destructive.
std::optional<DataLoss> dataLoss(const Machine& machine, int function, const QVariantMap& params);

} // namespace host
