#pragma once

#include "recscan/ScanCases.h"

#include <functional>

/// Helpers that several cases share. Scan thread.

/// The drive of the running system.
struct SystemDrive
{
    QString directory;                        ///< path of the system directory in upper case
    char letterByte = 0;                      ///< first byte of the path, the key into the inventory
    QString letter;                           ///< the same letter as a string
    const PartitionInfo* partition = nullptr; ///< never null; owned by the subject
};

/// Empty if the system directory is unknown or the inventory does not contain its letter.
std::optional<SystemDrive> findSystemDrive(const ScanSubject& subject);

/// True if the partition has a drive letter.
bool hasDriveLetter(const PartitionInfo& partition);

/// The disk's partitions; null if the inventory does not contain the disk. Owned by the subject.
const std::vector<PartitionInfo>* partitionsOf(const ScanSubject& subject, int diskIndex);

using PartitionTest = std::function<bool(const PartitionInfo&)>;

/// The first partition that passes @p test, on the disk with the highest index that has one; null if no
/// partition passes. Owned by the subject.
const PartitionInfo* firstOnLastDisk(const ScanSubject& subject, const PartitionTest& test);

/// Lock state of a volume that cannot be read until its key is entered.
extern const char kBitLockerLocked[];

/// @name Finished recommendations with the usual buttons
/// @{
Recommendation recommend(int actionIndex, const QString& message, const QVariantMap& actionParams = {});
Recommendation recommendForDisk(int actionIndex, const QString& message, int diskIndex);
Recommendation recommendForDrive(int actionIndex, const QString& message, const QString& driveLetter);
/// @}
