#include "host/udisks/OrderPlan.h"

#include "host/machine/OrderParts.h"
#include "host/udisks/PlanParts.h"

namespace host {

namespace {

Planner plannerOf(int function)
{
    for (const Planners* table : {&diskPlanners(), &partitionPlanners(), &resizePlanners()}) {
        const auto found = table->find(static_cast<Function>(function));
        if (found != table->end())
            return found->second;
    }
    return nullptr;
}

OrderTarget targetOf(const Partition& partition)
{
    return {partition.startOffset(), partition.size, partition.partGUID};
}

std::vector<OrderTarget> shownOn(const Disk& disk)
{
    std::vector<OrderTarget> shown;
    for (const Partition& entry : disk.partitions) {
        if (!entry.unallocated)
            shown.push_back(targetOf(entry));
    }
    return shown;
}

bool isForDisk(const QVariantMap& params)
{
    return params.contains(QStringLiteral("diskIndex"));
}

} // namespace

bool hasOrderPlan(int function)
{
    return plannerOf(function) != nullptr;
}

int changedDisk(const Machine& machine, const QVariantMap& params)
{
    return isForDisk(params) ? numberOf(params, "diskIndex") : target(machine, params).diskIndex;
}

OrderPlan orderPlan(const Machine& machine, const std::vector<DiskSource>& sources, int function,
                    const QVariantMap& params)
{
    OrderPlan plan;
    const int diskIndex = changedDisk(machine, params);
    if (isForDisk(params))
        plan.shown = shownOn(*machine.disk(diskIndex));
    else
        plan.target = targetOf(target(machine, params));
    plan.source = sources.at(static_cast<std::size_t>(diskIndex));
    plan.steps = plannerOf(function)(machine, params);
    return plan;
}

} // namespace host
