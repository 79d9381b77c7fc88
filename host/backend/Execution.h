#pragma once

#include "host/machine/Text.h"

#include <QtCore/QObject>

namespace host {

/// One order that a back end carries out. Application thread.
class Execution : public QObject
{
    Q_OBJECT

public:
    enum class Outcome { Done, Failed, Cancelled };
    Q_ENUM(Outcome)

    /// Called once. ended() can be emitted before it returns.
    virtual void start() = 0;
    /// Requests the end of a started order. ended() follows, perhaps later, with the actual outcome: an order
    /// that can no longer be stopped ends as Done or Failed.
    virtual void cancel() = 0;
    /// Share of the work that is done, 0 to 1.
    virtual double progress() const = 0;

Q_SIGNALS:
    void progressed();
    /// Emitted once; the back end's machine has already been updated. @p error: empty unless Failed. The
    /// receiver must not delete the object during the signal.
    void ended(host::Execution::Outcome outcome, host::Text error);
};

} // namespace host
