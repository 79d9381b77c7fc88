#pragma once

/// What this process holds at this moment, as its system tells.
struct ProcessFigures
{
    int fileDescriptors = 0;
    int threads = 0;
    long peakKilobytes = 0; ///< the highest resident size so far

    static ProcessFigures now();
};
