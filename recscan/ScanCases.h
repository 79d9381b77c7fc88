#pragma once

#include "recscan/Recommendation.h"
#include "service/WireTypes.h"

#include <map>
#include <optional>
#include <vector>

class AIBridge;
class QQmlEngine;

/// The machine as the scan sees it: a copy of the inventory, never refreshed, and the roads to the host.
struct ScanSubject
{
    AIBridge* bridge = nullptr;         ///< for questions to the host; not owned
    const QQmlEngine* engine = nullptr; ///< for the host's objects; not owned
    std::map<char, PartitionInfo> partitionsByLetter;
    std::map<int, std::vector<PartitionInfo>> partitionsByDisk;
    std::vector<DiskInfo> disks;
};

/// The number of cases; they are tried in order from 0.
constexpr int kCaseCount = 12;

/// Runs one case; empty if it has nothing to say, or if @p index names no case. Scan thread: some cases call
/// the host on the calling thread, some wait for the application thread.
std::optional<Recommendation> runScanCase(int index, const ScanSubject& subject);

/// @name The cases, in order
/// @{
std::optional<Recommendation> checkWin10EndOfSupport(const ScanSubject& subject);
std::optional<Recommendation> checkDiskSmart(const ScanSubject& subject);
std::optional<Recommendation> checkSystemDriveSpace(const ScanSubject& subject);
std::optional<Recommendation> checkDriveSpace(const ScanSubject& subject);
std::optional<Recommendation> checkWastedMbrSpace(const ScanSubject& subject);
std::optional<Recommendation> checkLargeFat32External(const ScanSubject& subject);
std::optional<Recommendation> checkBootEntries(const ScanSubject& subject);
std::optional<Recommendation> check4kAlignment(const ScanSubject& subject);
std::optional<Recommendation> checkBitLockerUsb(const ScanSubject& subject);
std::optional<Recommendation> checkSlowBootDisk(const ScanSubject& subject);
std::optional<Recommendation> checkRawPartition(const ScanSubject& subject);
std::optional<Recommendation> checkBitLockerLocked(const ScanSubject& subject);
/// @}
