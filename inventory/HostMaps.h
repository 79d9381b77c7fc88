#pragma once

#include "inventory/WireTypes.h"

#include <QtCore/QVariantMap>

/// The wire record of one disk map of the host; what only a host method knows is left at false.
DiskInfo diskRecord(const QVariantMap& disk);

/// The wire record of one partition map of the host; what only a host method knows is left at false.
/// @p systemLetter is the first character of the upper-cased system directory.
PartitionInfo partitionRecord(const QVariantMap& partition, char systemLetter);
