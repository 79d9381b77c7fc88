#pragma once

#include <functional>

/// Runs @p work on another thread. The calling thread must be the application thread; it serves its event
/// loop until the work is done. Fails the test and the process after 30 seconds.
void runOnOtherThread(const std::function<void()>& work);

/// Serves the event loop until @p condition is true. Returns false after @p limitMs milliseconds.
bool pumpUntil(const std::function<bool()>& condition, int limitMs = 20000);
