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
    std::function<std::pair<double, double>()> measure; ///< null: the benchmark runner measures
};

struct Time
{
    std::string name;
    std::function<double()> measure;
};

std::vector<Ratio>& ratios()
{
    static std::vector<Ratio> all;
    return all;
}

std::vector<Time>& times()
{
    static std::vector<Time> all;
    return all;
}

double middle(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

// Stores the time of each repetition. The table contains the medians.
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
        return found == times_.end() ? 0 : middle(found->second);
    }

private:
    std::map<std::string, std::vector<double>> times_;
};

std::pair<double, double> medians(const Ratio& ratio, const Collector& collector, int repetitions)
{
    if (!ratio.measure)
        return {collector.median(ratio.name + " ours") / ratio.scale, collector.median(ratio.name + " bare")};
    std::vector<double> ours;
    std::vector<double> bare;
    for (int i = 0; i < repetitions; ++i) {
        const auto [one, other] = ratio.measure();
        ours.push_back(one);
        bare.push_back(other);
    }
    return {middle(ours), middle(bare)};
}

bool printRatio(const Ratio& ratio, double ours, double bare)
{
    const double value = bare > 0 ? ours / bare : 0;
    const bool good = bare > 0 && (ratio.limit == kNoLimit || value <= ratio.limit);
    const std::string limit = ratio.limit == kNoLimit ? "-" : std::to_string(ratio.limit).substr(0, 4);
    std::printf("%-58s %12.2f %12.2f %7.3f %7s%s\n", ratio.name.c_str(), ours, bare, value, limit.c_str(),
                good ? "" : "  over");
    std::fflush(stdout);
    return good;
}

void printTimes(int repetitions)
{
    std::printf("\n%-58s %12s\n", "time (medians)", "microseconds");
    for (const Time& time : times()) {
        std::vector<double> values;
        for (int i = 0; i < repetitions; ++i)
            values.push_back(time.measure());
        std::printf("%-58s %12.4f\n", time.name.c_str(), middle(values));
    }
}

} // namespace

void addMeasured(const std::string& name, double limit, std::function<std::pair<double, double>()> measure)
{
    ratios().push_back({name, limit, 1.0, std::move(measure)});
}

void addTime(const std::string& name, std::function<double()> measure)
{
    times().push_back({name, std::move(measure)});
}

void addRatio(const std::string& name, double limit, std::function<void(benchmark::State&)> ours,
              std::function<void(benchmark::State&)> bare, double scale)
{
    ratios().push_back({name, limit, scale, {}});
    for (const auto& [suffix, body] : {std::pair(" ours", ours), std::pair(" bare", bare)})
        benchmark::RegisterBenchmark((name + suffix).c_str(), body)
            ->UseRealTime()
            ->Unit(benchmark::kMicrosecond);
}

bool runRatios(int repetitions)
{
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    bool within = true;
    std::printf("%-58s %12s %12s %7s %7s\n", "figure (medians, microseconds)", "ours", "bare", "ratio",
                "limit");
    for (const Ratio& ratio : ratios()) {
        const auto [ours, bare] = medians(ratio, collector, repetitions);
        within = printRatio(ratio, ours, bare) && within;
    }
    printTimes(repetitions);
    // The functions own objects that must not outlive the application.
    benchmark::ClearRegisteredBenchmarks();
    ratios().clear();
    times().clear();
    return within;
}
