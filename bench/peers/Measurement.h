#pragma once

#include "bench/Cores.h"
#include "bench/peers/Cases.h"

#include <QtCore/QString>

#include <array>
#include <string>
#include <vector>

enum class Server { Bare, Ours, OursNotDecoded, Limit, Grpc, DBus };
constexpr int kServers = 6;

/// The name in the report.
const char* nameOf(Server server);

/// The rows of one call: microseconds per call of each server, or 0 if it cannot carry the reply.
struct Measured
{
    Case entry;
    std::array<double, kServers> microseconds{};

    double of(Server server) const { return microseconds[static_cast<std::size_t>(server)]; }
    double ratio(Server server, Server reference) const { return of(server) / of(reference); }
};

struct Effort
{
    int repetitions;
    double seconds; ///< of each series; at least one call
};

/// Each repetition starts every server, compares its reply with the expected records and measures it over a
/// new connection, in random order; the result contains the medians. Throws std::runtime_error if a reply is
/// wrong.
Measured measure(const Case& entry, const QString& busAddress, const Effort& effort, Placement placement);
