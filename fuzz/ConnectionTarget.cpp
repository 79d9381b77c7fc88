// A client of the real server on a real socket, with threads, blocking calls into the host and a broken end.
// Slower than the wire target, and there for what that one leaves out.
#include "fuzz/Fuzz.h"
#include "fuzz/ToolHost.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <thrift/TOutput.h>
#include <thrift/server/TThreadedServer.h>

#include <stdexcept>

namespace {

enum Way : unsigned {
    InPieces = 1, ///< the bytes come in packets of their own
    Goes = 2      ///< the client goes at once, whatever is on its way to it
};

constexpr int kLimitMs = 10000;

struct Service
{
    ToolHost host;
    HandlerServer server{host.tools()};
};

// Serves the tools' calls into the host until the server has ended the connection.
void readToTheEnd(RawClient& client)
{
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        require(timer.elapsed() < kLimitMs, "a connection whose client has said all ends");
        if (!client.hasInput(0))
            continue;
        try {
            client.take(1);
        } catch (const std::runtime_error&) {
            return;
        }
    }
}

void attack(Service& service, unsigned way, const std::string& bytes)
{
    RawClient client(service.server.port());
    try {
        if ((way & InPieces) != 0)
            client.sendByteByByte(bytes);
        else
            client.send(bytes);
        client.finishSending();
    } catch (const std::runtime_error&) {
        return; // the server was first
    }
    if ((way & Goes) == 0)
        readToTheEnd(client);
}

} // namespace

void fuzzOne(Bytes input)
{
    static Service* service = [] {
        apache::thrift::GlobalOutput.setOutputFunction([](const char*) {});
        return new Service;
    }();
    service->host.setMood(input.byte() & ~unsigned(ToolHost::NoEngine));
    const unsigned way = input.byte();
    attack(*service, way, input.rest());
    const auto isAlone = [] { return service->server.server().getConcurrentClientCount() == 0; };
    require(pumpUntil(isAlone, kLimitMs), "a connection whose client has gone ends");
    service->host.checkCalls();
    RawClient next(service->server.port());
    next.send(wire::call("Init", 77));
    require(pumpUntil([&] { return next.hasInput(0); }, kLimitMs), "the next connection is served");
    require(next.receive().body.field(0).number == 1, "the next answer is right");
}
