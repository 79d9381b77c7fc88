#pragma once

#include "host/backend/Execution.h"
#include "host/udisks/ClonePlan.h"

#include <functional>
#include <memory>

namespace host {

/// Carries out a clone: prepares the destination, copies one partition after the other, and grows the file
/// system of a copy that has more room than its original.
class CloneExecution : public Execution
{
    Q_OBJECT

public:
    using Plan = std::function<std::variant<ClonePlan, Text>(const DiskSnapshot&)>;
    /// Reads the machine again and then calls its argument.
    using Refresh = std::function<void(Outcome, std::function<void()>)>;

    /// @p rejection: called at the start; @p plan: called later if there is no rejection. @p service must
    /// outlive the object.
    CloneExecution(DiskService& service, std::function<Rejection()> rejection, Plan plan, Refresh refresh);

    void start() override;
    void cancel() override;
    double progress() const override { return progress_; }

private:
    void onRead(const DiskSnapshot& snapshot, const QString& error);
    void copyNext();
    void onCopied();
    void run(std::unique_ptr<Execution> execution, std::function<void()> next);
    void showProgress();
    void finish(Outcome outcome, const Text& error);

    DiskService& service_;
    std::function<Rejection()> rejection_;
    Plan makePlan_;
    Refresh refresh_;
    ClonePlan plan_;
    std::size_t copy_ = 0;               ///< index of the current copy
    std::shared_ptr<OrderTarget> found_; ///< its destination
    std::unique_ptr<Execution> current_;
    std::unique_ptr<Execution> previous_; ///< kept because it may be emitting its signal
    bool cancelled_ = false;
    double progress_ = 0;
};

} // namespace host
