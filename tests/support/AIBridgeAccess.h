#pragma once

#include "plugin/AIBridge.h"

/// Access to the members that only the component manager may use.
class AIBridgeAccess
{
public:
    static void release(AIBridge& bridge) { bridge.Release(); }
    static AIFuncallThread* serverThread(AIBridge& bridge) { return bridge.serverThread; }
};
