#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <utility>

/// The limit of a figure that is there for comparison.
constexpr double kNoLimit = 0;

/// One figure of the table: ours against a counterpart measured in the same run, as the ratio of the medians.
/// @p scale divides our time first, for a cost per record.
void addRatio(const std::string& name, double limit, std::function<void(benchmark::State&)> ours,
              std::function<void(benchmark::State&)> bare, double scale = 1.0);

/// As addRatio, for what is not the mean time of a loop: @p measure gives one repetition of both, in
/// microseconds.
void addMeasured(const std::string& name, double limit, std::function<std::pair<double, double>()> measure);

/// A time without a counterpart, in microseconds: @p measure gives one repetition.
void addTime(const std::string& name, std::function<double()> measure);

/// Runs all that was added and prints the tables. What is measured apart is repeated @p repetitions times.
/// True if every ratio is within its limit.
bool runRatios(int repetitions);

void registerWireBenchmarks();
void registerActingBenchmarks();
void registerRefillBenchmarks();
void registerReaderBenchmarks();
void registerScanBenchmarks();
