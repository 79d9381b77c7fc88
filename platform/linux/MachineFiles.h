#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <optional>
#include <vector>

/// What /sys and /proc tell of the machine, in the shape in which the platform seam answers. @p root stands
/// before each path; empty means the running machine. Any thread.

bool startedByUefi(const QString& root);

/// The memory that the kernel was given, whole, where it tells that; else what it has to offer, which is a
/// little less than what is built in.
std::optional<quint64> readInstalledMemoryKib(const QString& root);

/// One row for each socket: Name, AddressWidth, NumberOfCores, NumberOfLogicalProcessors, MaxClockSpeed
/// (MHz).
std::vector<QVariantMap> readProcessorRows(const QString& root);

/// One row if there is a TPM: IsActivated_InitialValue, IsEnabled_InitialValue, SpecVersion.
std::vector<QVariantMap> readTpmRows(const QString& root);

/// "64-bit" or "32-bit", of the running kernel.
QString runningSystemWidth();
