#pragma once

#include "host/backend/Backend.h"
#include "host/simulation/Pace.h"
#include "host/simulation/TimedExecution.h"

#include <vector>

namespace host {

/// A machine in memory. Orders take a simulated time.
class Simulation : public Backend
{
    Q_OBJECT

public:
    using Backend::Backend;

    /// The speed of orders that have not started.
    void setPace(Pace pace) { pace_ = pace; }
    /// The orders that must fail, each once, in this order for one function.
    void setFailures(std::vector<PlannedFailure> failures) { failures_ = std::move(failures); }

    Rejection orderRejection(int function, const QVariantMap& params) const override;
    Rejection taskRejection(int function, const QVariantMap& params) const override;
    std::unique_ptr<Execution> execute(int function, const QVariantMap& params) override;

private:
    TaskPlan plan(int function, const QVariantMap& params);
    Rejection finish(int function, const QVariantMap& params);
    void interrupt(int function, const QVariantMap& params, double share);

    Pace pace_;
    std::vector<PlannedFailure> failures_;
};

} // namespace host
