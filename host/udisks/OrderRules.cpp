#include "host/udisks/OrderRules.h"

#include "host/machine/Functions.h"
#include "host/machine/OrderParts.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/OrderPlan.h"

namespace host {

namespace {

// Letters belong to the host, so the service does not take part.
bool isLetterChange(int function)
{
    return function == static_cast<int>(Function::ChangePartitionDriveLetter);
}

} // namespace

Rejection realOrderRejection(const Capabilities& capabilities, const Machine& machine, int function,
                             const QVariantMap& params)
{
    if (!hasOrderPlan(function) && !isLetterChange(function))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "This function is not available on real disks."));
    const bool creates = function == static_cast<int>(Function::CreatePartition);
    if (creates || function == static_cast<int>(Function::FormatPartition)) {
        if (numberOf(params, "clusterSize") > 0)
            return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk service chooses the cluster size itself."));
        return capabilities.formatRejection(serviceFileSystem(textOf(params, "fileSystem")));
    }
    if (function == static_cast<int>(Function::ResizePartition))
        return capabilities.resizeRejection(serviceFileSystem(target(machine, params).fsString));
    return kAccepted;
}

} // namespace host
