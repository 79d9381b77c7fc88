#pragma once

#include "host/machine/Machine.h"
#include "host/udisks/Inventory.h"

#include <QtCore/QVariantMap>

#include <vector>

namespace host {

/// The keys, as of letterKey(), of the partitions that an accepted order deletes.
std::vector<QString> deletedPartitions(const Machine& machine, const std::vector<DiskSource>& sources,
                                       int function, const QVariantMap& params);

} // namespace host
