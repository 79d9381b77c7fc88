#pragma once

#include <QtCore/QVariantList>

/// An inventory of @p disks disks with @p partitions partitions each, with every key that the library reads.
QVariantList makeInventory(int disks, int partitions);

/// As makeInventory, with letters from C on and so much room everywhere that the scan finds nothing to say.
QVariantList makeRoomyInventory(int disks, int partitions);
