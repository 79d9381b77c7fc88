#pragma once

// The generated records. They are members of an exported class, so the compiler wants them as visible as that
// class; what the module really exports is told by its version script.
#if defined(__GNUC__) && !defined(_WIN32)
#pragma GCC visibility push(default)
#endif
#include "ZORNativePlugin_types.h"
#if defined(__GNUC__) && !defined(_WIN32)
#pragma GCC visibility pop
#endif
