#pragma once

#include "host/udisks/Inventory.h"

namespace host {

/// The identity of a disk: its serial numbers, or the file of a loop device.
DiskIdentity identityOf(const DiskSnapshot& snapshot, const BlockDevice& disk);
bool isSameDisk(const DiskIdentity& one, const DiskIdentity& other);

/// Reads the identity of each device among @p sources, which is valid until the end of the program. The
/// result is an error sentence if one is not a whole disk, or if a disk is named twice; empty on success.
QString identifyDevices(const DiskSnapshot& snapshot, std::vector<DiskSource>& sources);

/// The names of the disks for the user: file names of images, models of devices.
QString namesOf(const std::vector<DiskSource>& sources);

} // namespace host
