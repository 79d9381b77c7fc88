#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <optional>
#include <vector>

/// The machine's properties from /sys and /proc, in the form that Platform returns. @p root is a prefix of
/// each path; empty selects the running machine. Any thread.

bool startedByUefi(const QString& root);

/// Installed memory in KiB: the sum of the kernel's memory blocks. Without memory blocks it is the kernel's
/// total, which is slightly less.
std::optional<quint64> readInstalledMemoryKib(const QString& root);

/// One row per socket: Name, AddressWidth, NumberOfCores, NumberOfLogicalProcessors, MaxClockSpeed (MHz).
std::vector<QVariantMap> readProcessorRows(const QString& root);

/// One row if the machine has a TPM: IsActivated_InitialValue, IsEnabled_InitialValue, SpecVersion.
std::vector<QVariantMap> readTpmRows(const QString& root);

/// "64-bit" or "32-bit": the width of the running kernel.
QString runningSystemWidth();
