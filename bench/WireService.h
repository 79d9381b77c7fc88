#pragma once

#include "ZORNativePlugin.h"

#include <memory>
#include <thread>

/// A service around a handler with the settings of the real one, on a free loopback port, and one client on
/// it.
class WireService
{
public:
    explicit WireService(std::shared_ptr<ZORNativePluginIf> handler);
    ~WireService();

    ZORNativePluginClient& client() { return *client_; }

private:
    struct Server;
    std::unique_ptr<Server> server_;
    std::thread thread_;
    std::unique_ptr<ZORNativePluginClient> client_;
};
