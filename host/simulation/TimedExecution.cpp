#include "host/simulation/TimedExecution.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

// Interval between progress updates.
constexpr int kStepMs = 50;

} // namespace

TimedExecution::TimedExecution(TimedWork work) : work_(std::move(work))
{
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &TimedExecution::step);
}

void TimedExecution::start()
{
    plan_ = work_.plan();
    sinceStart_.start();
    if (plan_.rejection)
        return end(Outcome::Failed, *plan_.rejection, 0);
    timer_.start(static_cast<int>(std::min<qint64>(kStepMs, plan_.milliseconds)));
}

void TimedExecution::cancel()
{
    const double done = elapsedShare();
    work_.interrupt(done);
    end(Outcome::Cancelled, Text(), done);
}

void TimedExecution::step()
{
    const double done = elapsedShare();
    if (plan_.failsAt.has_value() && done >= *plan_.failsAt) {
        work_.interrupt(*plan_.failsAt);
        return end(Outcome::Failed, plan_.failure, *plan_.failsAt);
    }
    if (done >= 1) {
        const Rejection rejection = work_.finish();
        return rejection ? end(Outcome::Failed, *rejection, done) : end(Outcome::Done, Text(), 1);
    }
    progress_ = done;
    Q_EMIT progressed();
    const qint64 left = plan_.milliseconds - sinceStart_.elapsed();
    timer_.start(static_cast<int>(std::clamp<qint64>(left, 0, kStepMs)));
}

double TimedExecution::elapsedShare() const
{
    if (plan_.milliseconds <= 0)
        return 1;
    return std::min(1.0,
                    static_cast<double>(sinceStart_.elapsed()) / static_cast<double>(plan_.milliseconds));
}

void TimedExecution::end(Outcome outcome, const Text& error, double progress)
{
    timer_.stop();
    progress_ = progress;
    Q_EMIT ended(outcome, error);
}

} // namespace host
