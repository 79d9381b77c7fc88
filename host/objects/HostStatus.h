#pragma once

#include "host/machine/Rejection.h"

#include <atomic>

namespace host {

/// The state that the gate reads before each call of an agent. The getters: any thread; the setters:
/// application thread.
class HostStatus
{
public:
    /// @p busy, @p popuped: permanent values of the machine file, for experiments with a blocked host.
    HostStatus(bool busy, bool popuped);

    /// True while a task waits or runs.
    bool isBusy() const { return busy_ || closing_; }
    /// True while a dialog covers the window.
    bool isPopuped() const { return popuped_ || dialogOpen_ || pageOpen_ || helpOpen_ || closing_; }
    bool isClosing() const { return closing_; }
    bool isDialogOpen() const { return dialogOpen_; }

    void setAtWork(bool atWork) { busy_ = atWork || alwaysBusy_; }
    /// The window's switch for a dialog.
    void setDialogOpen(bool open) { dialogOpen_ = open; }
    /// Whether a guide covers the window.
    void setPageOpen(bool open) { pageOpen_ = open; }
    /// Whether the help or the description of the program covers the window.
    void setHelpOpen(bool open) { helpOpen_ = open; }
    bool isHelpOpen() const { return helpOpen_; }
    /// From now on every question is rejected, and the host counts as busy and covered by a dialog.
    void setClosing() { closing_ = true; }

    /// Rejects everything once the host is closing.
    Rejection closingRejection() const;

private:
    const bool alwaysBusy_;
    std::atomic<bool> busy_;
    const bool popuped_;
    std::atomic<bool> dialogOpen_{false};
    std::atomic<bool> pageOpen_{false};
    std::atomic<bool> helpOpen_{false};
    std::atomic<bool> closing_{false};
};

} // namespace host
