#pragma once

#include "tests/support/Threads.h"

#include <QtCore/qglobal.h>

#include <atomic>
#include <functional>
#include <thread>

/// Runs a function on another thread during the lifetime of this object. The application thread can serve its
/// event loop meanwhile.
class BackgroundWork
{
public:
    explicit BackgroundWork(std::function<void()> work)
        : thread_([this, work = std::move(work)] {
              work();
              done_ = true;
          })
    {
    }
    /// Serves the event loop until the function has returned.
    ~BackgroundWork()
    {
        if (!pumpUntil([this] { return done_.load(); }))
            qFatal("the background work does not end");
        thread_.join();
    }
    bool done() const { return done_; }

private:
    std::atomic<bool> done_{false};
    std::thread thread_;
};
