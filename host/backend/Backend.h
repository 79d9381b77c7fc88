#pragma once

#include "host/backend/Confirmation.h"
#include "host/backend/Execution.h"
#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include <memory>
#include <mutex>
#include <vector>

namespace host {

/// The machine and the orders that it can carry out: a simulation, or disks of this computer.
///
/// machine(): any thread; everything else: application thread. The machine is never changed in place: a
/// changed copy replaces it, so that a reader keeps its version.
class Backend : public QObject
{
    Q_OBJECT

public:
    explicit Backend(Machine machine);

    std::shared_ptr<const Machine> machine() const;
    /// Replaces the machine and emits machineChanged(). Outside a back end, only for the host's own settings.
    void change(Machine machine);

    /// Why the back end does not have a function at all; empty if it has it, or if the number is unknown.
    virtual Rejection functionRejection(int) const { return kAccepted; }
    /// Whether the partition page accepts an order. @p params: the keys of the order.
    virtual Rejection orderRejection(int function, const QVariantMap& params) const = 0;
    /// Whether a function of the page or of one of the host's guides can run now.
    virtual Rejection taskRejection(int function, const QVariantMap& params) const = 0;
    /// The question to a person before an order that taskRejection() accepts. Empty if it needs no consent.
    virtual std::optional<Confirmation> confirmation(int function, const QVariantMap& params) const;
    /// Prepares an order. The execution checks again whether it can run when it starts. It must not outlive
    /// the back end.
    virtual std::unique_ptr<Execution> execute(int function, const QVariantMap& params) = 0;

    /// Why no order can run at the moment; empty if orders can run.
    virtual Rejection unavailability() const { return kAccepted; }
    /// Frees what would outlive the process, such as attached images. No order can run afterwards.
    virtual void release() {}
    /// Removes and returns the messages that belong to no order.
    std::vector<Text> takeNotices();
    /// Whether orders change disks or images, and not only the machine in memory.
    virtual bool isReal() const { return false; }

Q_SIGNALS:
    /// After an order, after a change from outside, and after a change of a setting.
    void machineChanged();
    /// unavailability() has changed.
    void availabilityChanged();
    /// takeNotices() has a message.
    void noticed();

protected:
    /// Adds a message for the log of the host.
    void addNotice(const Text& notice);

private:
    std::vector<Text> notices_;
    mutable std::mutex mutex_;
    std::shared_ptr<const Machine> machine_;
};

} // namespace host
