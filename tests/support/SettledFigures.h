#pragma once

#include "tests/support/ProcessFigures.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

/// Expects that file descriptors and threads return to @p before, and gives the final figures. It waits,
/// because the system counts a finished thread for a moment and a connection's thread ends after its client.
inline ProcessFigures expectSettled(const ProcessFigures& before)
{
    ProcessFigures after;
    pumpUntil([&] {
        after = ProcessFigures::now();
        return after.fileDescriptors <= before.fileDescriptors && after.threads <= before.threads;
    });
    EXPECT_LE(after.fileDescriptors, before.fileDescriptors);
    EXPECT_LE(after.threads, before.threads);
    return after;
}
