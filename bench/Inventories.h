#pragma once

#include <QtCore/QVariantList>

/// An inventory of @p disks disks with @p partitions partitions each, with every key that the library reads.
QVariantList makeInventory(int disks, int partitions);
