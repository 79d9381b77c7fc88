#pragma once

#include "service/ZorHandle.h"

/// The answer of a tool that was taken or was not.
inline const std::string& reply(bool queued)
{
    return queued ? kTaskQueued : kTaskNotValid;
}
