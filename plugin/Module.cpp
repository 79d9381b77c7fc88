#include "plugin/AIBridge.h"

#include <new>

/// The factory that a host resolves: a new component on every call, owned by the caller; null if memory is
/// out.
extern "C" Q_DECL_EXPORT AIBridge* getInstance()
{
    return new (std::nothrow) AIBridge;
}
