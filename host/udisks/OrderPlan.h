#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/Inventory.h"

#include <QtCore/QVariantMap>

#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace host {

/// The partition of an order, as the host showed it when the order started.
struct OrderTarget
{
    qint64 offset = 0;
    qint64 size = 0;
    QString partitionGuid; ///< empty on an MBR disk
};

/// The disk and the partition of an order in a fresh reading.
struct OrderState
{
    const DiskSnapshot& snapshot;
    const BlockDevice& disk;
    const BlockDevice* partition; ///< null for an order without a partition
};

/// A call, or why it cannot be made yet. A reading during a change of the table is incomplete, so the reading
/// is repeated, and the order fails with that reason if it remains.
using StepCall = std::variant<DiskServiceCall, Text>;

/// One call of an order.
struct OrderStep
{
    std::function<StepCall(const OrderState&)> call;
    /// The call returns the object path of a new partition, on which the following steps act.
    bool createsTarget = false;
    /// The call deletes the partition; the following steps act on the disk.
    bool deletesTarget = false;
    /// The call returns whether it succeeded; the error if it did not. Null: the reply is not checked.
    const char* failure = nullptr;
};

/// The calls that carry out an order. Every step finds its disk and partition again.
struct OrderPlan
{
    DiskSource source;
    std::optional<OrderTarget> target;
    /// Without a target: the partitions of the disk, as the host showed them when the order started.
    std::vector<OrderTarget> shown;
    std::vector<OrderStep> steps;
};

/// Whether orderPlan() knows the function.
bool hasOrderPlan(int function);

/// The index of the disk that an order changes. Requires hasOrderPlan() and an order that the rules accept.
int changedDisk(const Machine& machine, const QVariantMap& params);

/// The plan of an order that the rules accept on @p machine. The disk index of a machine is the index in @p
/// sources. Requires hasOrderPlan().
OrderPlan orderPlan(const Machine& machine, const std::vector<DiskSource>& sources, int function,
                    const QVariantMap& params);

} // namespace host
