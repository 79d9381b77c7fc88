#pragma once

/// The cores that a measurement uses.
enum class Placement {
    Any,      ///< The scheduler decides.
    OneCore,  ///< All threads share one.
    TwoCores, ///< The servers have one and the clients another, so that each message wakes the other core.
};

/// Keep this thread, and the threads and processes that it starts afterwards, on the core of the servers or
/// of the clients. Throw std::runtime_error if the computer has too few cores.
void useServerCore(Placement placement);
void useClientCore(Placement placement);

/// Lets this thread, and the threads that it starts afterwards, use each core that the process could use at
/// its start.
void useEveryCore();
