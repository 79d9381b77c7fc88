#pragma once

#include "inventory/WireTypes.h"
#include "recscan/ActionIndex.h"
#include "recscan/Recommendation.h"

#include <map>
#include <optional>
#include <vector>

class HostPages;
class QQmlEngine;
class ZORNativePluginIf;

/// Input of the scan: a copy of the inventory, which is never refreshed, and access to the host.
struct ScanSubject
{
    const HostPages* pages = nullptr;   ///< for questions to the host; not owned
    const QQmlEngine* engine = nullptr; ///< for the host's objects; not owned
    std::map<char, PartitionInfo> partitionsByLetter;
    std::map<int, std::vector<PartitionInfo>> partitionsByDisk;
    std::vector<DiskInfo> disks;
};

/// Number of cases. The scan tries them in order from 0.
constexpr int kCaseCount = ActionCount;

/// Runs one case. Empty if the case does not apply or @p index is not the number of a case. Scan thread: some
/// cases call the host on the calling thread, others wait for the application thread.
std::optional<Recommendation> runScanCase(int index, const ScanSubject& subject);

/// Performs the action of a case with the parameters of its recommendation. Has no effect if the case has no
/// action of its own or @p index is not the number of a case. Application thread.
void runCaseAction(ZORNativePluginIf& tools, int index, const QVariantMap& actionParams);

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
