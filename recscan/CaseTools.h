#pragma once

#include "recscan/ScanCases.h"

#include <functional>

/// What several cases share.

/// The running system's drive.
struct SystemDrive
{
    QString directory;                        ///< the whole system directory, in upper case
    char letterByte = 0;                      ///< its first byte, the key into the inventory
    QString letter;                           ///< the same as text
    const PartitionInfo* partition = nullptr; ///< never null; lives as long as the subject
};

/// Empty if the system has no answer or the inventory no such letter.
std::optional<SystemDrive> findSystemDrive(const ScanSubject& subject);

/// True if the partition has a letter that stands for a drive.
bool hasDriveLetter(const PartitionInfo& partition);

/// The disk's partitions, null if the inventory has none.
const std::vector<PartitionInfo>* partitionsOf(const ScanSubject& subject, int diskIndex);

using PartitionTest = std::function<bool(const PartitionInfo&)>;

/// On the last disk, by index, that has a partition for which @p test holds, the first such partition.
const PartitionInfo* firstOnLastDisk(const ScanSubject& subject, const PartitionTest& test);

/// The volume cannot be read because its key has not been given.
extern const char kBitLockerLocked[];

/// @name Finished recommendations with the usual buttons
/// @{
Recommendation recommend(int actionIndex, const QString& message, const QVariantMap& actionParams = {});
Recommendation recommendForDisk(int actionIndex, const QString& message, int diskIndex);
Recommendation recommendForDrive(int actionIndex, const QString& message, const QString& driveLetter);
/// @}
