#pragma once

#include <functional>

/// Runs @p work on a thread of its own while the calling thread, which must be the application thread, serves
/// its event loop; returns when it is done. Fails the test and the process after 30 seconds.
void runOnOtherThread(const std::function<void()>& work);

/// Serves the event loop until @p condition holds; false after @p limitMs.
bool pumpUntil(const std::function<bool()>& condition, int limitMs = 20000);
