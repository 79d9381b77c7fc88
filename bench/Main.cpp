#include "bench/Cores.h"
#include "bench/Ratios.h"

#include <QtGui/QGuiApplication>

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kRepetitions = 11;

} // namespace

// aibridge_bench [--smoke] [benchmark options]: exit code 1 if a ratio exceeds its limit. --smoke ignores the
// limits.
int main(int argc, char** argv)
{
    // On several cores, the scheduler could place two compared servers differently.
    useServerCore(Placement::OneCore);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    bool smoke = false;
    std::vector<char*> arguments;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--smoke") == 0)
            smoke = true;
        else
            arguments.push_back(argv[i]);
    }
    std::string repetitions = "--benchmark_repetitions=" + std::to_string(smoke ? 3 : kRepetitions);
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char shortTime[] = "--benchmark_min_time=0.02";
    arguments.push_back(repetitions.data());
    arguments.push_back(interleaving);
    if (smoke)
        arguments.push_back(shortTime);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    registerWireBenchmarks();
    registerActingBenchmarks();
    registerRefillBenchmarks();
    registerReaderBenchmarks();
    registerScanBenchmarks();
    const bool within = runRatios(smoke ? 1 : kRepetitions);
    return within || smoke ? 0 : 1;
}
