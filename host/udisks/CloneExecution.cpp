#include "host/udisks/CloneExecution.h"

#include "host/udisks/OrderExecution.h"

#include <QtCore/QPointer>

#include <utility>

namespace host {

namespace {

std::unique_ptr<Execution> callsOf(DiskService& service, OrderPlan plan)
{
    // The clone reads the machine at its own end.
    const auto refresh = [](Execution::Outcome, const std::function<void()>& done) { done(); };
    return std::make_unique<OrderExecution>(
        service, [plan = std::move(plan)] { return plan; }, refresh);
}

double shareOf(const ClonePlan& plan, std::size_t copies, double current)
{
    double done = 0;
    double all = 0;
    for (std::size_t i = 0; i < plan.copies.size(); ++i) {
        const auto size = static_cast<double>(plan.copies[i].from.size);
        all += size;
        done += i < copies ? size : i == copies ? size * current : 0;
    }
    return all > 0 ? done / all : 0;
}

} // namespace

CloneExecution::CloneExecution(DiskService& service, std::function<Rejection()> rejection, Plan plan,
                               Refresh refresh)
    : service_(service),
      rejection_(std::move(rejection)),
      makePlan_(std::move(plan)),
      refresh_(std::move(refresh)),
      found_(std::make_shared<OrderTarget>())
{
}

void CloneExecution::start()
{
    if (const Rejection rejection = rejection_()) {
        Q_EMIT ended(Outcome::Failed, *rejection);
        return;
    }
    service_.read(
        [self = QPointer<CloneExecution>(this)](const DiskSnapshot& snapshot, const QString& error) {
            if (self)
                self->onRead(snapshot, error);
        });
}

void CloneExecution::cancel()
{
    cancelled_ = true;
    if (current_)
        current_->cancel();
}

void CloneExecution::onRead(const DiskSnapshot& snapshot, const QString& error)
{
    if (!error.isEmpty())
        return finish(Outcome::Failed, error);
    if (cancelled_)
        return finish(Outcome::Cancelled, Text());
    auto plan = makePlan_(snapshot);
    if (const Text* mismatch = std::get_if<Text>(&plan))
        return finish(Outcome::Failed, *mismatch);
    plan_ = std::move(std::get<ClonePlan>(plan));
    run(callsOf(service_, plan_.preparation), [this] { copyNext(); });
}

void CloneExecution::copyNext()
{
    if (copy_ == plan_.copies.size())
        return finish(Outcome::Done, Text());
    run(std::make_unique<CopyExecution>(service_, plan_.copies[copy_], found_), [this] { onCopied(); });
}

void CloneExecution::onCopied()
{
    OrderPlan growth = growthPlan(plan_.copies[copy_], *found_);
    ++copy_;
    if (growth.steps.empty())
        return copyNext();
    run(callsOf(service_, std::move(growth)), [this] { copyNext(); });
}

// Calls @p next unless the execution fails or is cancelled.
void CloneExecution::run(std::unique_ptr<Execution> execution, std::function<void()> next)
{
    previous_ = std::exchange(current_, std::move(execution));
    connect(current_.get(), &Execution::progressed, this, &CloneExecution::showProgress);
    connect(current_.get(), &Execution::ended, this,
            [this, next = std::move(next)](Outcome outcome, const Text& error) {
                outcome == Outcome::Done ? next() : finish(outcome, error);
            });
    current_->start();
    if (cancelled_)
        current_->cancel();
}

void CloneExecution::showProgress()
{
    if (qobject_cast<CopyExecution*>(current_.get()) == nullptr)
        return;
    progress_ = shareOf(plan_, copy_, current_->progress());
    Q_EMIT progressed();
}

void CloneExecution::finish(Outcome outcome, const Text& error)
{
    refresh_(outcome, [self = QPointer<CloneExecution>(this), outcome, error] {
        if (!self)
            return;
        self->progress_ = outcome == Outcome::Done ? 1 : self->progress_;
        Q_EMIT self->ended(outcome, error);
    });
}

} // namespace host
