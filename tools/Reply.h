#pragma once

#include "ZORNativePlugin_constants.h"

#include <string>

/// The answer of a tool that acts: whether the host accepted the order.
inline const std::string& reply(bool queued)
{
    return queued ? g_ZORNativePlugin_constants.TASK_QUEUED : g_ZORNativePlugin_constants.TASK_NOT_VALID;
}
