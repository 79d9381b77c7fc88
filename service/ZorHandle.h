#pragma once

#include "service/FunctionIndex.h"

#include "ZORNativePlugin.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

class AIBridge;

/// The two answers of a tool that acts.
extern const std::string kTaskQueued;
extern const std::string kTaskNotValid;

/// The service: one operation for each tool, and the gate around them. One object serves all connections and
/// the recommendation actions, so every operation may be called from any thread; off the application thread
/// those that reach the host wait until it has answered.
///
/// Two tools that overlap share one parameter map: only the gate keeps them apart.
class CZorHandle : public ZORNativePluginNull
{
public:
    CZorHandle();

    /// What the tools work on; not owned, outlives this object's last call. Null makes every tool refuse.
    void setBridge(AIBridge* bridge);

    bool Init() override;
    void PreProcessing(TaskInfo& answer, const std::string& toolCalls) override;
    bool PostProcessing(const std::string& result) override;

    void ListAllDisks(std::vector<DiskInfo>& out) override;
    void ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t diskIndex) override;
    void GetPartitionInfo(PartitionInfo& out, const std::string& driveLetter) override;
    void GetAllPartitionInfo(std::vector<PartitionInfo>& out) override;

    void OpenDiskLayoutEditor(std::string& answer, int32_t diskIndex) override;
    void DeleteAllPartitions(std::string& answer, int32_t diskIndex) override;
    void InitializeDiskToGpt(std::string& answer, int32_t diskIndex) override;
    void InitializeDiskToMbr(std::string& answer, int32_t diskIndex) override;
    void WipeDisk(std::string& answer, int32_t diskIndex, int32_t eraseCount) override;
    void AutoCreatePartitions(std::string& answer, int32_t diskIndex, int32_t partitionCount,
                              const std::string& GptOrMbr) override;
    void DiskBringOnline(std::string& answer, int32_t diskIndex) override;
    void LowLevelFormat(std::string& answer, int32_t diskIndex) override;
    void SmartSpaceAdjustment(std::string& answer, const std::string& driveLetter) override;
    void OpenPartitionLayoutEditor(std::string& answer, const std::string& driveLetter) override;
    void EjectUsb(std::string& answer, const std::string& driveLetter) override;
    void MigrateSystemDriveData(std::string& answer) override;

    void DeletePartition(std::string& answer, const std::string& driveLetter) override;
    void FormatPartition(std::string& answer, const std::string& driveLetter, const std::string& fileSystem,
                         const std::string& label, int32_t clusterSize, bool quickFormat) override;
    void SplitPartition(std::string& answer, const std::string& driveLetter, int64_t newPartitionCapacity,
                        const std::string& newPartitionFileSystem,
                        const std::string& newPartitionLabel) override;
    void ResizePartition(std::string& answer, const std::string& driveLetter,
                         int64_t newPartitionCapacity) override;
    void ResizePartitionRelative(std::string& answer, const std::string& driveLetter,
                                 int64_t sizeAdjustment) override;
    void WipePartition(std::string& answer, const std::string& driveLetter, int32_t eraseCount) override;
    void ChangePartitionClusterSize(std::string& answer, const std::string& driveLetter,
                                    int32_t newClusterSize) override;
    void ChangePartitionDriveLetter(std::string& answer, const std::string& driveLetter,
                                    const std::string& newDriveLetter) override;
    void ChangePartitionLabel(std::string& answer, const std::string& driveLetter,
                              const std::string& newLabel) override;
    void SetPartitionHidden(std::string& answer, const std::string& driveLetter) override;
    void SetPartitionActive(std::string& answer, const std::string& driveLetter) override;
    void ConvertPartitionToPrimary(std::string& answer, const std::string& driveLetter) override;
    void ConvertPartitionToLogical(std::string& answer, const std::string& driveLetter) override;
    void CreatePartition(std::string& answer, int32_t diskIndex, int64_t capacity,
                         const std::string& fileSystem, const std::string& label,
                         int32_t unallocatedIndex) override;
    void MergePartitions(std::string& answer, const std::string& driveLetter1,
                         const std::string& driveLetter2) override;
    void AllocateSpaceFromPartitionToPartition(std::string& answer, const std::string& sourceDriveLetter,
                                               const std::string& targetDriveLetter,
                                               int64_t newPartitionCapacity) override;
    void AllocateSpaceFromPartitionToNewPartition(std::string& answer, const std::string& sourceDriveLetter,
                                                  int64_t partitionCapacity, const std::string& fileSystem,
                                                  const std::string& label) override;

    void CloneOSDataFromCurrent(std::string& answer, int32_t targetDiskIndex) override;
    void CloneOSDataFromDisk(std::string& answer, int32_t targetDiskIndex, int32_t osDiskIndex) override;
    void CloneOSDataFromPartition(std::string& answer, int32_t targetDiskIndex,
                                  const std::string& osDriveLetter) override;
    void CloneDiskToDisk(std::string& answer, int32_t sourceDiskIndex, int32_t destDiskIndex) override;
    void ClonePartitionToPartition(std::string& answer, const std::string& sourceDriveLetter,
                                   const std::string& destDriveLetter) override;
    void ClonePartitionToDisk(std::string& answer, const std::string& sourceDriveLetter,
                              int32_t destDiskIndex) override;

    void ConvertDiskToGpt(std::string& answer, int32_t diskIndex) override;
    void ConvertDiskToMbr(std::string& answer, int32_t diskIndex) override;
    void ConvertDiskToDynamic(std::string& answer, int32_t diskIndex) override;
    void ConvertDiskToBasic(std::string& answer, int32_t diskIndex) override;
    void ConvertPartitionToFat(std::string& answer, const std::string& driveLetter) override;
    void ConvertPartitionToExfat(std::string& answer, const std::string& driveLetter) override;
    void ConvertPartitionToNtfs(std::string& answer, const std::string& driveLetter) override;

    void CreateBootableISO(std::string& answer) override;
    void CreateBootableUsbByDisk(std::string& answer, int32_t diskIndex) override;
    void CreateBootableUsbByDriveLetter(std::string& answer, const std::string& driveLetter) override;
    void CreateWindowsInstallerMedia(std::string& answer) override;
    void InstallAndEnablePreOS(std::string& answer) override;
    void DisablePreOS(std::string& answer) override;

    void RecoverLostPartition(std::string& answer, int32_t diskIndex) override;
    void RepairRawOrDamagedPartition(std::string& answer, const std::string& driveLetter) override;
    void DiskHealthCheck(std::string& answer, int32_t diskIndex) override;
    void ShowBitLockerStatus(std::string& answer, const std::string& driveLetter) override;
    void RetrieveBitLockerRecoveryKey(std::string& answer, const std::string& driveLetter) override;
    void CheckPartitionFileSystem(std::string& answer, const std::string& driveLetter) override;
    void ScanDiskBadSectors(std::string& answer, int32_t diskIndex) override;
    void ScanPartitionBadSectors(std::string& answer, const std::string& driveLetter) override;
    void RebuildMbr(std::string& answer, int32_t diskIndex) override;
    void ToggleWriteProtection(std::string& answer, const std::string& driveLetter) override;
    void AlignDiskTo4k(std::string& answer, int32_t diskIndex) override;
    void RepairWindowsBoot(std::string& answer) override;
    void PasswordReset(std::string& answer) override;
    void Windows11UpgradeCheck(std::string& answer) override;

protected:
    /// Empties the parameter map.
    void ResetParams();
    /// Adds one entry to the parameter map.
    void setParam(const QString& key, const QVariant& value);
    void setParam(const QString& key, const std::string& value);
    /// A copy of the parameter map as it is now.
    QVariantMap paramsCopy() const;

    /// Asks the partition page and, on yes, orders the function.
    void RunTask(std::string& answer, int functionIndex);
    /// As RunTask, but first refuses unless the text under `driveLetter` begins with an ASCII letter.
    void RunDriveTask(std::string& answer, int functionIndex);

    /// Milliseconds since the last PostProcessing, or since construction. A test puts its own clock here.
    virtual qint64 sinceLastCall() const;

private:
    void runDiskTask(std::string& answer, int functionIndex, int32_t diskIndex);
    void runLetterTask(std::string& answer, int functionIndex, const std::string& driveLetter);
    void runBootMediaTask(std::string& answer);

    QVariantMap params;
    AIBridge* bridge = nullptr;
    QElapsedTimer lastCallEnd;
    // Around each single access of params and lastCallEnd; a tool as a whole is not guarded.
    mutable std::mutex guard_;
};

/// True if @p text begins with an ASCII letter; nothing else of it is looked at.
bool isDriveLetterValid(const std::string& text);

/// @p text in upper case, cut to its first character; empty for an empty text.
QString normalisedLetter(const std::string& text);
