#pragma once

#include "bridge/AIBridge.h"
#include "service/AIFuncallThread.h"
#include "tools/ZorHandle.h"

#include <memory>

/// Private members of the component. Release belongs to the component manager; the rest are the component's
/// parts. Each function accepts a null pointer if its result can be null.
class AIBridgeAccess
{
public:
    static void release(AIBridge& bridge) { bridge.Release(); }
    static AIFuncallThread* serverThread(AIBridge& bridge) { return bridge.serverThread; }
    static RecScanThread* scanThread(AIBridge& bridge) { return bridge.recScanThread; }

    static const ToolBridge* toolBridge(AIBridge* bridge)
    {
        return bridge == nullptr ? nullptr : &bridge->toolBridge_;
    }
    static const HostPages* pages(AIBridge* bridge) { return pagesOf(toolBridge(bridge)); }

    /// Makes the handler of a service as the component does.
    static AIFuncallThread::MakeHandler makeHandler(AIBridge* bridge)
    {
        return [bridge] {
            const auto tools = std::make_shared<CZorHandle>();
            tools->setBridge(toolBridge(bridge));
            return tools;
        };
    }
};
