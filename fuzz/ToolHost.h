#pragma once

#include "service/ZorHandle.h"
#include "tests/support/RecordingHost.h"

#include <atomic>
#include <memory>

/// What the tools work against while they are attacked: the recording host and its bridge, over two disks, in
/// a mood that each input sets anew.
class ToolHost
{
public:
    /// The bits of a mood.
    enum Mood : unsigned {
        SaysNo = 1,      ///< every question of a tool is answered with no
        Busy = 2,        ///< a task is in execution
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
    /// What deviceMgr.disks and bootDisks answer.
    void setDisks(const QVariant& disks) { disks_ = disks; }

    /// Every order that reached the partition page came after its question, and without the question's mark.
    /// Forgets the calls.
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
