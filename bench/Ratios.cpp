#include "bench/Ratios.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace {

struct Ratio
{
    std::string name;
    double limit;
    double scale;
};

std::vector<Ratio>& ratios()
{
    static std::vector<Ratio> all;
    return all;
}

// Keeps the time of each repetition; the table is made from their medians.
class Collector : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        }
    }
    double median(const std::string& name) const
    {
        const auto found = times_.find(name);
        if (found == times_.end())
            return 0;
        std::vector<double> sorted = found->second;
        std::sort(sorted.begin(), sorted.end());
        const std::size_t middle = sorted.size() / 2;
        return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
    }

private:
    std::map<std::string, std::vector<double>> times_;
};

} // namespace

void addRatio(const std::string& name, double limit, std::function<void(benchmark::State&)> ours,
              std::function<void(benchmark::State&)> bare, double scale)
{
    ratios().push_back({name, limit, scale});
    for (const auto& [suffix, body] : {std::pair(" ours", ours), std::pair(" bare", bare)})
        benchmark::RegisterBenchmark((name + suffix).c_str(), body)
            ->UseRealTime()
            ->Unit(benchmark::kMicrosecond);
}

bool runRatios()
{
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    bool within = true;
    std::printf("%-58s %12s %12s %7s %7s\n", "figure (medians, microseconds)", "ours", "bare", "ratio",
                "limit");
    for (const Ratio& ratio : ratios()) {
        const double ours = collector.median(ratio.name + " ours") / ratio.scale;
        const double bare = collector.median(ratio.name + " bare");
        const double value = bare > 0 ? ours / bare : 0;
        const bool good = bare > 0 && value <= ratio.limit;
        within = within && good;
        std::printf("%-58s %12.2f %12.2f %7.3f %7.2f%s\n", ratio.name.c_str(), ours, bare, value, ratio.limit,
                    good ? "" : "  over");
    }
    return within;
}
