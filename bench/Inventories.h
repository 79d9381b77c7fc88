#pragma once

#include <QtCore/QVariantList>

/// An inventory of @p disks disks with @p partitions partitions each, with every key that the library reads.
QVariantList makeInventory(int disks, int partitions);

/// As makeInventory, with drive letters from C on and enough free space that the scan has no finding.
QVariantList makeRoomyInventory(int disks, int partitions);
