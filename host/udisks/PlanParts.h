#pragma once

#include "host/machine/Functions.h"
#include "host/machine/Machine.h"
#include "host/machine/Spaces.h"
#include "host/udisks/OrderPlan.h"

#include <QtCore/QVariantMap>

#include <map>
#include <vector>

// Shared by the files of the plans.
namespace host {

using Steps = std::vector<OrderStep>;
/// The calls of an accepted order.
using Planner = Steps (*)(const Machine&, const QVariantMap&);
using Planners = std::map<Function, Planner>;

/// The plans for functions of a disk, for functions of a partition or a free region, and for functions that
/// change the size of a partition.
const Planners& diskPlanners();
const Planners& partitionPlanners();
const Planners& resizePlanners();

/// A number of the type that the service expects for sizes and positions.
QVariant uint64(qint64 value);

/// @name Steps of several plans
/// @{
/// A call of the order's disk.
OrderStep onDisk(const char* interface, const char* method, const QVariantList& arguments);
/// A call of the order's partition.
OrderStep onPartition(const char* interface, const char* method, const QVariantList& arguments);
/// A new partition in free space; the following steps act on it.
OrderStep createIn(Span span);
/// The call of createIn(). The service makes a logical drive inside an extended partition, and a primary one
/// elsewhere. A logical drive starts up to 2 MiB later, because its table entry needs space.
StepCall createCall(const OrderState& state, Span span);
/// @p fileSystem: a name of the inventory.
OrderStep formatTarget(const QString& fileSystem, const QString& label, bool erase);
/// @p type: "gpt", "dos", or "empty" to remove the table.
OrderStep writeTable(const QString& type);
/// The service repairs the file system of the partition.
OrderStep repairTarget();
/// @}

} // namespace host
