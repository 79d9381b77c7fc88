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

} // namespace

bool hasOrderPlan(int function)
{
    return plannerOf(function) != nullptr;
}

OrderPlan orderPlan(const Machine& machine, const std::vector<DiskSource>& sources, int function,
                    const QVariantMap& params)
{
    OrderPlan plan;
    int diskIndex = numberOf(params, "diskIndex");
    if (!params.contains(QStringLiteral("diskIndex"))) {
        const Partition& partition = target(machine, params);
        diskIndex = partition.diskIndex;
        plan.target = targetOf(partition);
    } else {
        plan.shown = shownOn(*machine.disk(diskIndex));
    }
    plan.source = sources.at(static_cast<std::size_t>(diskIndex));
    plan.steps = plannerOf(function)(machine, params);
    return plan;
}

} // namespace host
