#include "bench/Ratios.h"

#include <QtGui/QGuiApplication>

#include <cstring>

// aibridge_bench [--smoke] [benchmark options]: exit code 1 if a ratio is over its limit, which --smoke
// ignores.
int main(int argc, char** argv)
{
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
    char repetitions[] = "--benchmark_repetitions=11";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char shortTime[] = "--benchmark_min_time=0.02";
    arguments.push_back(repetitions);
    arguments.push_back(interleaving);
    if (smoke)
        arguments.push_back(shortTime);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    registerWireBenchmarks();
    registerRefillBenchmarks();
    const bool within = runRatios();
    return within || smoke ? 0 : 1;
}
