#pragma once

#include "fuzz/Bytes.h"

/// Aborts the process with @p what if the property does not hold. The fuzzer treats this as a crash.
void require(bool holds, const char* what);

/// Called for each input, on the application thread of a QGuiApplication.
void fuzzOne(Bytes input);
