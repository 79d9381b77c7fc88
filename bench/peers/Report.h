#pragma once

#include "bench/peers/Measurement.h"

#include <vector>

void printHeader();
void printRows(const Measured& measured);

/// Prints the ratios of the service that have a target. Returns false if one exceeds it.
bool printTargets(const std::vector<Measured>& all);
