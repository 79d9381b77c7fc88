#pragma once

#include "bench/peers/Cases.h"

#include <string>

/// The bytes of one call and of its reply.
struct RecordedCall
{
    std::string call;
    std::string reply;
    Records records; ///< the decoded reply
};

/// Makes a call over its own connection to a service on this machine.
RecordedCall recordCall(int port, Call call);
