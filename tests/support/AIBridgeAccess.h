#pragma once

#include "plugin/AIBridge.h"

/// What only the component manager may do.
class AIBridgeAccess
{
public:
    static void release(AIBridge& bridge) { bridge.Release(); }
    static AIFuncallThread* serverThread(AIBridge& bridge) { return bridge.serverThread; }
};
