#include "bench/peers/Measurement.h"
#include "bench/peers/PrivateBus.h"
#include "bench/peers/Report.h"

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <exception>
#include <string>

namespace {

// Many short series over new connections: the scheduler places a client and its server on one core or on two,
// and keeps them there for a while.
constexpr Effort kEffort{51, 0.02};
constexpr Effort kSmokeEffort{1, 0.0};
const char* const kUsage =
    "aibridge_peers [--smoke] [--one-core | --two-cores]\n"
    "Measures one call over one connection: the service, the bare runtime, the limit, gRPC "
    "and D-Bus.\n"
    "--smoke measures one call of each, to check that it works.\n"
    "--one-core keeps all threads on one core: without waking another core, times repeat much better.\n"
    "--two-cores keeps the servers on one core and the clients on another, so that each message wakes one.\n"
    "Exit codes: 0, 1 (a ratio of the service exceeds its limit), 2 (error).\n";

int run(const Effort& effort, Placement placement, bool hasTargets)
{
    useServerCore(placement);
    const PrivateBus bus;
    std::vector<Measured> all;
    printHeader();
    for (const Case& entry : cases()) {
        all.push_back(measure(entry, bus.address(), effort, placement));
        printRows(all.back());
    }
    return !hasTargets || printTargets(all) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    bool smoke = false;
    Placement placement = Placement::Any;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        smoke = smoke || option == "--smoke";
        if (option == "--one-core")
            placement = Placement::OneCore;
        else if (option == "--two-cores")
            placement = Placement::TwoCores;
        else if (option != "--smoke") {
            const bool help = option == "--help" || option == "-h";
            std::fputs(kUsage, help ? stdout : stderr);
            return help ? 0 : 2;
        }
    }
    const QCoreApplication application(argc, argv);
    try {
        return run(smoke ? kSmokeEffort : kEffort, placement, !smoke);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "aibridge_peers: %s\n", error.what());
        return 2;
    }
}
