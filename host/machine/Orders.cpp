#include "host/machine/Orders.h"

#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"

namespace host {

namespace {

const Operation* operationOf(int function)
{
    for (const Operations* table : {&diskOperations(), &partitionOperations(), &guidedOperations()}) {
        const auto found = table->find(static_cast<Function>(function));
        if (found != table->end())
            return &found->second;
    }
    return nullptr;
}

} // namespace

Rejection attempt(Machine& machine, int function, const QVariantMap& params)
{
    const Rejection rejection = taskRejection(machine, function, params);
    if (!rejection)
        carryOut(machine, function, params);
    return rejection;
}

bool carryOut(Machine& machine, int function, const QVariantMap& params)
{
    const Operation* operation = operationOf(function);
    if (operation == nullptr || operation->work == nullptr)
        return false;
    operation->work(machine, params);
    return true;
}

qint64 bytesMoved(const Machine& machine, int function, const QVariantMap& params)
{
    const Operation* operation = operationOf(function);
    return operation == nullptr || operation->bytes == nullptr ? 0 : operation->bytes(machine, params);
}

bool leaveInterrupted(Machine& machine, int function, const QVariantMap& params, double share)
{
    const Operation* operation = operationOf(function);
    if (operation == nullptr || operation->interrupt == nullptr || share <= 0)
        return false;
    operation->interrupt(machine, params, share);
    return true;
}

} // namespace host
