#pragma once

#include "plugin/ReplyCache.h"
#include "tools/FunctionIndex.h"

#include "ZORNativePlugin.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

struct ToolBridge;

/// The service: one operation per tool, and the gate. One object serves all connections and the
/// recommendation actions, so every operation can be called on any thread. Off the application thread, an
/// operation that calls the host waits for its answer.
///
/// Overlapping tools share one parameter map; only the gate keeps tools apart.
class CZorHandle : public ZORNativePluginNull, public ReplySource
{
public:
    CZorHandle();

    /// Sets the parts of the component that the tools use. They are not owned and must outlive this object's
    /// last call. With null, every tool rejects its call.
    void setBridge(const ToolBridge* bridge);

    bool Init() override;
    void PreProcessing(TaskInfo& answer, const std::string& toolCalls) override;
    bool PostProcessing(const std::string& result) override;

    void ListAllDisks(std::vector<DiskInfo>& out) override;
    void ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t diskIndex) override;
    void GetPartitionInfo(PartitionInfo& out, const std::string& driveLetter) override;
    void GetAllPartitionInfo(std::vector<PartitionInfo>& out) override;
    std::shared_ptr<ReplyCache> replyCache() const override;

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
    /// Clears the parameter map.
    void ResetParams();
    /// Adds one entry to the parameter map.
    void setParam(const QString& key, const QVariant& value);
    void setParam(const QString& key, const std::string& value);
    /// One entry of the parameter map; invalid if missing.
    QVariant param(const QString& key) const;
    /// A copy of the current parameter map.
    QVariantMap paramsCopy() const;

    /// Asks the partition page whether it accepts the function and, if so, calls the function.
    void RunTask(std::string& answer, int functionIndex);
    /// As RunTask, but first rejects the call unless the value of `driveLetter` begins with an ASCII letter.
    void RunDriveTask(std::string& answer, int functionIndex);

    /// Milliseconds since the last PostProcessing or since construction. Virtual so that a test can replace
    /// the clock.
    virtual qint64 sinceLastCall() const;

private:
    void runDiskTask(std::string& answer, int functionIndex, int32_t diskIndex);
    void runLetterTask(std::string& answer, int functionIndex, const std::string& driveLetter);
    void runBootMediaTask(std::string& answer);

    QVariantMap params;
    const ToolBridge* bridge = nullptr;
    QElapsedTimer lastCallEnd;
    // Guards each access to params and lastCallEnd, not a whole tool.
    mutable std::mutex guard_;
};

/// True if @p text begins with an ASCII letter. The remaining characters are ignored.
bool isDriveLetterValid(const QString& text);

/// The first character of @p text in upper case; empty for an empty string.
QString normalisedLetter(const std::string& text);
