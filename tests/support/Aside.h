#pragma once

#include "tests/support/Threads.h"

#include <QtCore/qglobal.h>

#include <atomic>
#include <functional>
#include <thread>

/// Work on a thread of its own, for as long as this object lives; the application thread stays free for its
/// event loop.
class Aside
{
public:
    explicit Aside(std::function<void()> work)
        : thread_([this, work = std::move(work)] {
              work();
              done_ = true;
          })
    {
    }
    /// Waits for the work, serving the event loop.
    ~Aside()
    {
        if (!pumpUntil([this] { return done_.load(); }))
            qFatal("the work aside does not end");
        thread_.join();
    }
    bool done() const { return done_; }

private:
    std::atomic<bool> done_{false};
    std::thread thread_;
};
