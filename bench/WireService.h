#pragma once

#include "ZORNativePlugin.h"

#include <memory>
#include <thread>

/// A service for a handler, with the real service's settings, on a free loopback port, and one client.
class WireService
{
public:
    enum class Kind {
        Ours, ///< as the library builds it
        Bare  ///< the runtime's own classes with the same settings
    };

    WireService(std::shared_ptr<ZORNativePluginIf> handler, Kind kind);
    ~WireService();

    ZORNativePluginClient& client() { return *client_; }
    int port() const;

private:
    struct Server;
    std::unique_ptr<Server> server_;
    std::thread thread_;
    std::unique_ptr<ZORNativePluginClient> client_;
};
