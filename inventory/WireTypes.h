#pragma once

// The generated records. Members of the exported class AIBridge use them, so the compiler requires the same
// visibility as for that class. The version script, not this attribute, decides which symbols the module
// exports.
#if defined(__GNUC__) && !defined(_WIN32)
#pragma GCC visibility push(default)
#endif
#include "ZORNativePlugin_types.h"
#if defined(__GNUC__) && !defined(_WIN32)
#pragma GCC visibility pop
#endif
