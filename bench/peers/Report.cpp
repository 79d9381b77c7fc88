#include "bench/peers/Report.h"

#include <cstdio>
#include <functional>

namespace {

struct Target
{
    const char* name;
    double limit;
    Server server;
    Server reference;
    std::function<bool(const Case&)> applies;
};

const std::vector<Target>& targets()
{
    static const std::vector<Target> all = {
        {"GetPartitionInfo, this service to the bare runtime", 1.05, Server::Ours, Server::Bare,
         [](const Case& entry) { return !entry.isList(); }},
        {"each call, this service to the bare runtime", 1.0, Server::Ours, Server::Bare,
         [](const Case&) { return true; }},
        {"list reads, this service to the limit (neither decoded)", 1.25, Server::OursNotDecoded,
         Server::Limit, [](const Case& entry) { return entry.isList(); }},
    };
    return all;
}

bool printTarget(const Target& target, const std::vector<Measured>& all)
{
    const Measured* worst = nullptr;
    for (const Measured& measured : all) {
        if (target.applies(measured.entry) &&
            (worst == nullptr ||
             measured.ratio(target.server, target.reference) > worst->ratio(target.server, target.reference)))
            worst = &measured;
    }
    const double ratio = worst->ratio(target.server, target.reference);
    const bool good = ratio <= target.limit;
    std::printf("%-58s %7.3f %7.2f%s  %s\n", target.name, ratio, target.limit, good ? "      " : "  over",
                worst->entry.name.c_str());
    return good;
}

} // namespace

void printHeader()
{
    std::printf("%-40s %-26s %12s %8s %9s\n", "call (medians)", "server", "microseconds", "to bare",
                "to limit");
    std::fflush(stdout);
}

void printRows(const Measured& measured)
{
    const char* name = measured.entry.name.c_str();
    for (int i = 0; i < kServers; ++i) {
        const auto server = static_cast<Server>(i);
        if (measured.of(server) > 0)
            std::printf("%-40s %-26s %12.2f %8.3f %9.3f\n", name, nameOf(server), measured.of(server),
                        measured.ratio(server, Server::Bare), measured.ratio(server, Server::Limit));
        else
            std::printf("%-40s %-26s %12s %8s %9s\n", name, nameOf(server), "-", "-", "-");
        name = "";
    }
    std::fflush(stdout);
}

bool printTargets(const std::vector<Measured>& all)
{
    std::printf("\n%-58s %7s %7s        %s\n", "largest ratio", "ratio", "limit", "call");
    bool within = true;
    for (const Target& target : targets())
        within = printTarget(target, all) && within;
    return within;
}
