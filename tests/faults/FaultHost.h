#pragma once

#include "tests/faults/Fault.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RecordingHost.h"
#include "tools/ZorHandle.h"

#include <functional>
#include <memory>

/// A host with one fault, the tools on it and, after serve(), the service on a free port.
class FaultHost
{
public:
    /// @p prepare replaces the bodies of members before the fault is applied.
    explicit FaultHost(const FaultCase& row, const std::function<void(RecordingHost&)>& prepare = {});
    ~FaultHost();

    /// For replacing the bodies of members before build().
    RecordingHost& host() { return host_; }
    /// Makes the host and pushes the inventory.
    void build();
    CZorHandle& tools() { return *tools_; }
    void serve();

    int port() const { return server_->port(); }
    /// How often a QML function has thrown.
    int thrown() const;

private:
    class OpenGate;

    void setMood(Mood mood);
    void breakMember(const FaultCase& row);
    FakeBody throwing();

    Fault fault_;
    RecordingHost host_;
    QQmlApplicationEngine pages_;
    std::shared_ptr<CZorHandle> tools_;
    std::unique_ptr<HandlerServer> server_;
};
