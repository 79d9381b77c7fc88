#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

/// One figure of the table: ours against a counterpart measured in the same run, as the ratio of the medians.
/// @p scale divides our time first, for a cost per record.
void addRatio(const std::string& name, double limit, std::function<void(benchmark::State&)> ours,
              std::function<void(benchmark::State&)> bare, double scale = 1.0);

/// Runs all that was added and prints the table. True if every ratio is within its limit.
bool runRatios();

void registerWireBenchmarks();
void registerRefillBenchmarks();
