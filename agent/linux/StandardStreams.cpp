#include "agent/StandardStreams.h"

// Standard streams are binary on this system.
void zorcall::useBinaryStreams() {}
