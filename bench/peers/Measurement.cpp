#include "bench/peers/Measurement.h"

#include "bench/peers/DBusPeer.h"
#include "bench/peers/GrpcPeer.h"
#include "bench/peers/RawPeers.h"
#include "bench/peers/ThriftPeers.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <numeric>
#include <random>
#include <stdexcept>

namespace {

// The order of Server.
const char* const kNames[kServers] = {"bare runtime",       "this service", "this service, not decoded",
                                      "limit, not decoded", "gRPC",         "D-Bus (Qt)"};

double microsecondsPerCall(Peer& peer, double seconds)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    std::chrono::duration<double> elapsed{};
    int calls = 0;
    do {
        peer.call();
        ++calls;
        elapsed = Clock::now() - start;
    } while (elapsed.count() < seconds);
    return elapsed.count() * 1e6 / calls;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// A null pointer for a server that cannot carry the reply.
using Peers = std::array<std::unique_ptr<Peer>, kServers>;

Peers makePeers(ThriftServices& services, const RecordedCall& recorded, const QString& busAddress, Call call)
{
    Peers peers;
    const auto add = [&](Server server, std::unique_ptr<Peer> peer) {
        peers[static_cast<std::size_t>(server)] = std::move(peer);
    };
    add(Server::Bare, std::make_unique<ThriftPeer>(*services.bare, call));
    add(Server::Ours, std::make_unique<ThriftPeer>(*services.ours, call));
    add(Server::OursNotDecoded, std::make_unique<RawPeer>(services.ours->port(), recorded));
    add(Server::Limit, std::make_unique<LimitPeer>(recorded));
    add(Server::Grpc, std::make_unique<GrpcPeer>(services.reply, call));
    add(Server::DBus, std::make_unique<DBusPeer>(busAddress, services.reply, call));
    return peers;
}

// Drops the servers that cannot carry the reply, and prints the reason.
void check(Peers& peers, const Case& entry, const Records& expected, bool printsReasons)
{
    for (std::size_t i = 0; i < peers.size(); ++i) {
        const std::string reason = peers[i]->unavailable();
        if (!reason.empty()) {
            if (printsReasons)
                std::fprintf(stderr, "%s: %s\n", entry.name.c_str(), reason.c_str());
            peers[i].reset();
        } else if (!peers[i]->isCorrect(expected)) {
            throw std::runtime_error(entry.name + ": wrong reply of " + nameOf(static_cast<Server>(i)));
        }
    }
}

using Times = std::array<std::vector<double>, kServers>;

// With new servers and connections.
void repeat(const Case& entry, const QString& busAddress, double seconds, Placement placement,
            std::mt19937& random, Times& times)
{
    // The servers inherit it.
    useServerCore(placement);
    ThriftServices services(entry);
    const RecordedCall recorded = recordCall(services.ours->port(), entry.call);
    Peers peers = makePeers(services, recorded, busAddress, entry.call);
    check(peers, entry, services.reply, times.front().empty());
    useClientCore(placement);

    std::array<std::size_t, kServers> order{};
    std::iota(order.begin(), order.end(), std::size_t(0));
    // A server's time also depends on the one that was measured before it.
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t i : order) {
        if (!peers[i])
            continue;
        // The first series is not counted: the system adapts the buffers of a new connection to its use.
        microsecondsPerCall(*peers[i], seconds);
        times[i].push_back(microsecondsPerCall(*peers[i], seconds));
    }
}

} // namespace

const char* nameOf(Server server)
{
    return kNames[static_cast<std::size_t>(server)];
}

Measured measure(const Case& entry, const QString& busAddress, const Effort& effort, Placement placement)
{
    Times times;
    std::mt19937 random(1);
    for (int repetition = 0; repetition < effort.repetitions; ++repetition)
        repeat(entry, busAddress, effort.seconds, placement, random, times);
    Measured measured{entry, {}};
    std::transform(times.begin(), times.end(), measured.microseconds.begin(), median);
    return measured;
}
