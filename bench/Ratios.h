#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <utility>

/// The limit of a figure that serves only as a comparison.
constexpr double kNoLimit = 0;

/// One figure of the table: the ratio of our median to that of a counterpart in the same run. @p scale
/// divides our time first, for a cost per record.
void addRatio(const std::string& name, double limit, std::function<void(benchmark::State&)> ours,
              std::function<void(benchmark::State&)> bare, double scale = 1.0);

/// As addRatio, for a figure other than the mean time of a loop: @p measure returns one repetition of both,
/// in microseconds.
void addMeasured(const std::string& name, double limit, std::function<std::pair<double, double>()> measure);

/// A time without a counterpart: @p measure returns one repetition, in microseconds.
void addTime(const std::string& name, std::function<double()> measure);

/// Runs all benchmarks and prints the tables. Functions of addMeasured and addTime run @p repetitions times.
/// True if every ratio is within its limit.
bool runRatios(int repetitions);

void registerWireBenchmarks();
void registerActingBenchmarks();
void registerRefillBenchmarks();
void registerReaderBenchmarks();
void registerScanBenchmarks();
