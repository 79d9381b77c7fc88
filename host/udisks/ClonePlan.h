#pragma once

#include "host/udisks/CopyExecution.h"
#include "host/udisks/OrderPlan.h"

#include <variant>
#include <vector>

namespace host {

/// A clone: the calls that prepare the destination, and the copies of the partitions.
struct ClonePlan
{
    OrderPlan preparation;
    std::vector<PartitionCopy> copies;
};

/// Whether the function is a clone that clonePlan() knows.
bool isClone(int function);

/// The plan of a clone that the rules accept on @p machine. Types, flags and names of partitions are those of
/// @p snapshot. The result is an error if the source in @p snapshot is not the source of @p machine.
std::variant<ClonePlan, Text> clonePlan(const Machine& machine, const DiskSnapshot& snapshot,
                                        const std::vector<DiskSource>& sources, int function,
                                        const QVariantMap& params);

/// The calls that grow the file system of a copy to its partition @p found. No steps if they have the same
/// size, or if the disk service does not grow the file system: the additional space is then unused.
OrderPlan growthPlan(const PartitionCopy& copy, const OrderTarget& found);

} // namespace host
