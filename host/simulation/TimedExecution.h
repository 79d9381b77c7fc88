#pragma once

#include "host/backend/Execution.h"
#include "host/machine/Rejection.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <functional>
#include <optional>

namespace host {

/// Made when a simulated order starts.
struct TaskPlan
{
    Rejection rejection;           ///< why the order can no longer run
    qint64 milliseconds = 0;       ///< duration
    std::optional<double> failsAt; ///< share of the work, 0 to 1, after which it fails
    Text failure;                  ///< the error of that failure
};

/// The parts of a simulated order.
struct TimedWork
{
    std::function<TaskPlan()> plan;
    std::function<Rejection()> finish;     ///< carries out the work unless it is rejected
    std::function<void(double)> interrupt; ///< applies the effect of work that ends at that share
};

/// An order that takes a planned time and has its effect at the end.
class TimedExecution : public Execution
{
    Q_OBJECT

public:
    explicit TimedExecution(TimedWork work);

    void start() override;
    void cancel() override;
    double progress() const override { return progress_; }

private:
    void step();
    double elapsedShare() const;
    void end(Outcome outcome, const Text& error, double progress);

    TimedWork work_;
    TaskPlan plan_;
    QElapsedTimer sinceStart_;
    QTimer timer_;
    double progress_ = 0;
};

} // namespace host
