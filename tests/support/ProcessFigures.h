#pragma once

/// The resources of this process, as the system reports them.
struct ProcessFigures
{
    int fileDescriptors = 0; ///< all handles, on Windows
    int threads = 0;
    long peakKilobytes = 0; ///< the highest resident size so far

    static ProcessFigures now();
};

/// False under a sanitizer, which keeps freed memory for itself.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsOurs = false;
#else
constexpr bool kMemoryIsOurs = true;
#endif
