#include "host/simulation/Simulation.h"

#include "host/machine/Orders.h"
#include "host/machine/Rules.h"

#include <algorithm>
#include <utility>

namespace host {

Rejection Simulation::orderRejection(int function, const QVariantMap& params) const
{
    return host::orderRejection(*machine(), function, params);
}

Rejection Simulation::taskRejection(int function, const QVariantMap& params) const
{
    return host::taskRejection(*machine(), function, params);
}

std::unique_ptr<Execution> Simulation::execute(int function, const QVariantMap& params)
{
    TimedWork work;
    work.plan = [this, function, params] { return plan(function, params); };
    work.finish = [this, function, params] { return finish(function, params); };
    work.interrupt = [this, function, params](double share) { interrupt(function, params, share); };
    return std::make_unique<TimedExecution>(std::move(work));
}

TaskPlan Simulation::plan(int function, const QVariantMap& params)
{
    const auto now = machine();
    TaskPlan plan;
    // An earlier task may have changed the machine since the order was accepted.
    plan.rejection = host::taskRejection(*now, function, params);
    if (plan.rejection)
        return plan;
    plan.milliseconds = pace_.milliseconds(now->taskMilliseconds, bytesMoved(*now, function, params));
    const auto planned = std::find_if(failures_.begin(), failures_.end(), [&](const PlannedFailure& failure) {
        return failure.function == function;
    });
    if (planned != failures_.end()) {
        plan.failsAt = planned->share;
        plan.failure = Text(QT_TRANSLATE_NOOP("Sandbox", "The task failed after %1%, as --fail requests."),
                            {QString::number(planned->share * 100)});
        failures_.erase(planned);
    }
    return plan;
}

Rejection Simulation::finish(int function, const QVariantMap& params)
{
    Machine next = *machine();
    const Rejection rejection = host::taskRejection(next, function, params);
    if (!rejection && carryOut(next, function, params))
        change(std::move(next));
    return rejection;
}

void Simulation::interrupt(int function, const QVariantMap& params, double share)
{
    Machine next = *machine();
    if (!host::taskRejection(next, function, params) && leaveInterrupted(next, function, params, share))
        change(std::move(next));
}

} // namespace host
