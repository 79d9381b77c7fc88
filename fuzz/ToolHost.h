#pragma once

#include "tests/support/RecordingHost.h"
#include "tools/ZorHandle.h"

#include <atomic>
#include <memory>

/// The environment of the tools under test: the recording host and its bridge, with two disks. Each input
/// sets the host's mood.
class ToolHost
{
public:
    /// The bits of a mood.
    enum Mood : unsigned {
        SaysNo = 1,      ///< the host answers every question with no
        Busy = 2,        ///< the host is executing a task
        Popuped = 4,     ///< a dialog covers the window
        TooSoon = 8,     ///< the gate's pause has not passed
        PreOsThere = 16, ///< the pre-OS environment is enabled
        NoEngine = 32    ///< the bridge has no engine
    };

    ToolHost();

    RecordingHost& host() { return host_; }
    AIBridge& bridge() { return *host_.bridge(); }
    const std::shared_ptr<CZorHandle>& tools() { return tools_; }
    void setMood(unsigned mood);
    /// The result of deviceMgr.disks and bootDisks.
    void setDisks(const QVariant& disks) { disks_ = disks; }

    /// Requires that each order of the partition page followed its question and does not contain
    /// TestFunValid. Then clears the recorded calls.
    void checkCalls();

    static QVariantList inventory();

private:
    class Tools;

    QVariant has(unsigned mood) const { return QVariant((mood_ & mood) != 0); }
    void fillSpecs();

    std::atomic<unsigned> mood_{0};
    QVariant disks_;
    RecordingHost host_;
    std::shared_ptr<CZorHandle> tools_;
};
