#include "host/udisks/DeletedPartitions.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/OrderParts.h"

#include <algorithm>

namespace host {

namespace {

bool emptiesDisk(int function)
{
    static const std::vector<Function> functions = {
        Function::DeleteAllPartitions,  Function::InitializeDiskToMbr,
        Function::InitializeDiskToGpt,  Function::WipeDisk,
        Function::AutoCreatePartitions, Function::LowLevelFormat};
    return std::find(functions.begin(), functions.end(), static_cast<Function>(function)) != functions.end();
}

} // namespace

std::vector<QString> deletedPartitions(const Machine& machine, const std::vector<DiskSource>& sources,
                                       int function, const QVariantMap& params)
{
    std::vector<QString> keys;
    const auto add = [&](const Partition& partition) {
        keys.push_back(letterKey(sources.at(static_cast<std::size_t>(partition.diskIndex)), partition));
    };
    const auto addAll = [&](const Disk& disk) {
        for (const Partition& entry : disk.partitions) {
            if (!entry.unallocated)
                add(entry);
        }
    };
    if (function == static_cast<int>(Function::DeletePartition))
        add(target(machine, params));
    else if (function == static_cast<int>(Function::CloneDisk))
        addAll(*machine.disk(diskIndexOf(params.value(QStringLiteral("destination")).toMap())));
    else if (emptiesDisk(function))
        addAll(targetDisk(machine, params));
    return keys;
}

} // namespace host
