#pragma once

#include "fuzz/Bytes.h"

/// Ends the process with @p what if the property does not hold: to the fuzzer that is a finding like a crash.
void require(bool holds, const char* what);

/// Called for each input, on the application thread of a QGuiApplication.
void fuzzOne(Bytes input);
