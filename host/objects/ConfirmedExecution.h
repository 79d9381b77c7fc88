#pragma once

#include "host/backend/Backend.h"
#include "host/objects/ConfirmationRequest.h"

#include <functional>
#include <memory>

namespace host {

/// Who confirms an order that destroys data on a disk: a person in the window; nobody, because there is no
/// window, so that the order is rejected; or nobody, because the user waived it.
enum class Consent { Window, Missing, Waived };

/// Rejects an order that needs consent which nobody can give.
Rejection consentRejection(const Backend& backend, Consent consent, int function, const QVariantMap& params);

/// An order that asks a person before it starts, if the back end requires it. While the question is open, the
/// order counts as running. Without consent it ends as cancelled, and nothing has been written.
class ConfirmedExecution : public Execution
{
    Q_OBJECT

public:
    /// Called with "requested", "confirmed", "rejected" or "withdrawn".
    using Recorder = std::function<void(const QString& action, const Confirmation& question)>;

    /// The references must outlive the object.
    ConfirmedExecution(Backend& backend, int function, QVariantMap params, Consent consent,
                       ConfirmationRequest& request, Recorder record);
    ~ConfirmedExecution() override;

    void start() override;
    void cancel() override;
    double progress() const override { return execution_ ? execution_->progress() : 0; }

private:
    void onAnswered(bool confirmed);
    void onMachineChanged();
    bool isCurrent() const;
    void execute();
    void close(const QString& action, Outcome outcome, const Text& error);

    Backend& backend_;
    const int function_;
    const QVariantMap params_;
    const Consent consent_;
    ConfirmationRequest& request_;
    Recorder record_;
    std::optional<Confirmation> question_; ///< while it is open
    std::unique_ptr<Execution> execution_;
};

} // namespace host
