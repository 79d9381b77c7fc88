// A client of the real server on a real socket, with threads, blocking calls into the host and disconnects.
// It is slower than the wire target and covers the parts that the wire target replaces.
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
    InPieces = 1, ///< the client sends byte by byte
    Goes = 2      ///< the client disconnects immediately, without reading replies
};

constexpr int kLimitMs = 10000;

struct Service
{
    ToolHost host;
    HandlerServer server{host.tools()};
};

// Runs the event loop for the tools' calls into the host until the server ends the connection.
void readToTheEnd(RawClient& client)
{
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        require(timer.elapsed() < kLimitMs, "the server ends a connection after the client stops sending");
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
        return; // the server has already disconnected
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
    require(pumpUntil(isAlone, kLimitMs), "the server ends a connection after the client disconnects");
    service->host.checkCalls();
    RawClient next(service->server.port());
    next.send(wire::call("Init", 77));
    require(pumpUntil([&] { return next.hasInput(0); }, kLimitMs), "the next connection is served");
    require(next.receive().body.field(0).number == 1, "the next answer is right");
}
