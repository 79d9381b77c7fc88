#include "agent/StandardStreams.h"

#include <unistd.h>

// Standard streams are binary on this system.
void zorcall::useBinaryStreams() {}

bool zorcall::isTerminal()
{
    return ::isatty(STDOUT_FILENO) == 1;
}

// Terminals of this system interpret escape sequences.
bool zorcall::enableTerminalColour()
{
    return true;
}
