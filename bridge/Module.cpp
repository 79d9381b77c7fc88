#include "bridge/AIBridge.h"

#include <new>

/// The factory that a host resolves: a new component on every call, owned by the caller; null if memory is
/// out.
extern "C" Q_DECL_EXPORT AIBridge* getInstance()
{
    return new (std::nothrow) AIBridge;
}

// Q_OBJECT declares tr and trUtf8 inline, so no object file holds them unless something takes their
// addresses. The external linkage keeps the compiler from dropping this array, which nothing reads.
using Translate = QString (*)(const char*, const char*, int);
extern const Translate exportedInlineMembers[2];
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
const Translate exportedInlineMembers[2] = {&AIBridge::tr, &AIBridge::trUtf8};
QT_WARNING_POP
