#include "host/objects/ConfirmedExecution.h"

#include <utility>

namespace host {

namespace {

constexpr const char* kChanged = QT_TRANSLATE_NOOP(
    "Sandbox", "The disk changed while the confirmation was open. Nothing has been written.");

constexpr const char* kMissing =
    QT_TRANSLATE_NOOP("Sandbox", "This order destroys data on a disk and needs a confirmation in the window. "
                                 "Start the host with a window, or with --unattended.");

} // namespace

Rejection consentRejection(const Backend& backend, Consent consent, int function, const QVariantMap& params)
{
    return rejectIf(consent == Consent::Missing && backend.confirmation(function, params).has_value(),
                    kMissing);
}

ConfirmedExecution::ConfirmedExecution(Backend& backend, int function, QVariantMap params, Consent consent,
                                       ConfirmationRequest& request, Recorder record)
    : backend_(backend),
      function_(function),
      params_(std::move(params)),
      consent_(consent),
      request_(request),
      record_(std::move(record))
{
}

ConfirmedExecution::~ConfirmedExecution()
{
    if (question_)
        request_.withdraw();
}

void ConfirmedExecution::start()
{
    // An order that can no longer run ends with its own reason.
    if (consent_ != Consent::Waived && !backend_.taskRejection(function_, params_))
        question_ = backend_.confirmation(function_, params_);
    if (!question_)
        return execute();
    if (consent_ == Consent::Missing) {
        question_.reset();
        Q_EMIT ended(Outcome::Failed, kMissing);
        return;
    }
    connect(&request_, &ConfirmationRequest::answered, this, &ConfirmedExecution::onAnswered);
    connect(&backend_, &Backend::machineChanged, this, &ConfirmedExecution::onMachineChanged);
    record_(QStringLiteral("requested"), *question_);
    request_.ask(*question_);
}

void ConfirmedExecution::cancel()
{
    if (question_)
        close(QStringLiteral("withdrawn"), Outcome::Cancelled, Text());
    else if (execution_)
        execution_->cancel();
}

void ConfirmedExecution::onAnswered(bool confirmed)
{
    if (!question_)
        return;
    if (!confirmed)
        return close(QStringLiteral("rejected"), Outcome::Cancelled, Text());
    if (!isCurrent())
        return close(QStringLiteral("withdrawn"), Outcome::Failed, kChanged);
    record_(QStringLiteral("confirmed"), *question_);
    question_.reset();
    execute();
}

// The person would confirm the loss of data that is not shown.
void ConfirmedExecution::onMachineChanged()
{
    if (question_ && !isCurrent())
        close(QStringLiteral("withdrawn"), Outcome::Failed, kChanged);
}

bool ConfirmedExecution::isCurrent() const
{
    const auto now = backend_.confirmation(function_, params_);
    return now && isSameQuestion(*now, *question_);
}

void ConfirmedExecution::execute()
{
    execution_ = backend_.execute(function_, params_);
    connect(execution_.get(), &Execution::progressed, this, &Execution::progressed);
    connect(execution_.get(), &Execution::ended, this, &Execution::ended);
    execution_->start();
}

void ConfirmedExecution::close(const QString& action, Outcome outcome, const Text& error)
{
    const Confirmation question = *std::exchange(question_, std::nullopt);
    record_(action, question);
    request_.withdraw();
    Q_EMIT ended(outcome, error);
}

} // namespace host
