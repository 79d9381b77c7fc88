#pragma once

#include "inventory/WireTypes.h"

#include <QtCore/QVariantMap>

/// The wire record of one disk map of the host. Fields that only a host method can supply stay false.
DiskInfo diskRecord(const QVariantMap& disk);

/// The wire record of one partition map of the host. Fields that only a host method can supply stay false.
/// @p systemLetter is the first character of the system directory in upper case.
PartitionInfo partitionRecord(const QVariantMap& partition, char systemLetter);
