#include "bridge/AIBridge.h"

#include <new>

/// The factory that a host resolves. Each call creates a component, which the caller owns; null if out of
/// memory.
extern "C" Q_DECL_EXPORT AIBridge* getInstance()
{
    return new (std::nothrow) AIBridge;
}

// Q_OBJECT declares tr and trUtf8 inline, so they are emitted only if their addresses are taken. External
// linkage prevents the compiler from removing this array, which is never read.
using Translate = QString (*)(const char*, const char*, int);
extern const Translate exportedInlineMembers[2];
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
const Translate exportedInlineMembers[2] = {&AIBridge::tr, &AIBridge::trUtf8};
QT_WARNING_POP
