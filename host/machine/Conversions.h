#pragma once

#include "host/machine/GuidedTasks.h"

namespace host {

/// The conversions, with the numbers that the library sends. The first four convert a disk, the others a
/// partition.
enum class Conversion : int { ToGpt, ToMbr, ToBasic, ToDynamic, ToNtfs, ToFat, ToExfat };

/// Empty for an unknown number.
std::optional<Conversion> conversionOf(int number);
Text conversionName(Conversion conversion);
/// The resulting file system; empty for the conversion of a disk.
QString conversionFileSystem(Conversion conversion);

/// Rejects an empty @p conversion.
Rejection conversionRejection(const Machine& machine, std::optional<Conversion> conversion,
                              const QVariantMap& record);

/// The work of the guide that converts a disk or a partition.
GuidedWork conversionWork(Conversion conversion, const QVariantMap& record);

} // namespace host
