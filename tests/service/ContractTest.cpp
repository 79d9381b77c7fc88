// The contract with agents that are already in use, typed by hand: the methods in their order, the ids, types
// and names of their arguments, their results, and the sentences that agents compare.
#include "tests/support/Interface.h"

#include "ZORNativePlugin_constants.h"

#include <gtest/gtest.h>

namespace {

const char* const kMethods = R"(
bool Init()
bool PostProcessing(1: string result)
TaskInfo PreProcessing(1: string toolCalls)
string ShowBitLockerStatus(1: string driveLetter)
string RetrieveBitLockerRecoveryKey(1: string driveLetter)
string CreateBootableISO()
string CreateBootableUsbByDisk(1: i32 diskIndex)
string CreateBootableUsbByDriveLetter(1: string driveLetter)
string InstallAndEnablePreOS()
string DisablePreOS()
string CreateWindowsInstallerMedia()
string CloneOSDataFromCurrent(1: i32 targetDiskIndex)
string CloneOSDataFromDisk(1: i32 targetDiskIndex, 2: i32 osDiskIndex)
string CloneOSDataFromPartition(1: i32 targetDiskIndex, 2: string osDriveLetter)
string CloneDiskToDisk(1: i32 sourceDiskIndex, 2: i32 destDiskIndex)
string ClonePartitionToPartition(1: string sourceDriveLetter, 2: string destDriveLetter)
string ClonePartitionToDisk(1: string sourceDriveLetter, 2: i32 destDiskIndex)
string ConvertDiskToGpt(1: i32 diskIndex)
string ConvertDiskToMbr(1: i32 diskIndex)
string ConvertDiskToDynamic(1: i32 diskIndex)
string ConvertDiskToBasic(1: i32 diskIndex)
string ConvertPartitionToPrimary(1: string driveLetter)
string ConvertPartitionToLogical(1: string driveLetter)
string ConvertPartitionToFat(1: string driveLetter)
string ConvertPartitionToExfat(1: string driveLetter)
string ConvertPartitionToNtfs(1: string driveLetter)
list<DiskInfo> ListAllDisks()
list<PartitionInfo> ListPartitionsOnDisk(1: i32 diskIndex)
PartitionInfo GetPartitionInfo(1: string driveLetter)
list<PartitionInfo> GetAllPartitionInfo()
string SmartSpaceAdjustment(1: string driveLetter)
string OpenPartitionLayoutEditor(1: string driveLetter)
string OpenDiskLayoutEditor(1: i32 diskIndex)
string DeleteAllPartitions(1: i32 diskIndex)
string InitializeDiskToGpt(1: i32 diskIndex)
string InitializeDiskToMbr(1: i32 diskIndex)
string WipeDisk(1: i32 diskIndex, 2: i32 eraseCount)
string FormatPartition(1: string driveLetter, 2: string fileSystem, 3: string label, 4: i32 clusterSize, 5: bool quickFormat)
string DeletePartition(1: string driveLetter)
string SplitPartition(1: string driveLetter, 2: i64 newPartitionCapacity, 3: string newPartitionFileSystem, 4: string newPartitionLabel)
string CreatePartition(1: i32 diskIndex, 2: i64 capacity, 3: string fileSystem, 4: string label, 5: i32 unallocatedIndex)
string MergePartitions(1: string driveLetter1, 2: string driveLetter2)
string ResizePartition(1: string driveLetter, 2: i64 newPartitionCapacity)
string ResizePartitionRelative(1: string driveLetter, 2: i64 sizeAdjustment)
string AllocateSpaceFromPartitionToNewPartition(1: string sourceDriveLetter, 2: i64 partitionCapacity, 3: string fileSystem, 4: string label)
string AllocateSpaceFromPartitionToPartition(1: string sourceDriveLetter, 2: string targetDriveLetter, 3: i64 newPartitionCapacity)
string WipePartition(1: string driveLetter, 2: i32 eraseCount)
string ChangePartitionClusterSize(1: string driveLetter, 2: i32 newClusterSize)
string ChangePartitionDriveLetter(1: string driveLetter, 2: string newDriveLetter)
string ChangePartitionLabel(1: string driveLetter, 2: string newLabel)
string SetPartitionHidden(1: string driveLetter)
string SetPartitionActive(1: string driveLetter)
string CheckPartitionFileSystem(1: string driveLetter)
string AutoCreatePartitions(1: i32 diskIndex, 2: i32 partitionCount, 3: string GptOrMbr)
string DiskBringOnline(1: i32 diskIndex)
string EjectUsb(1: string driveLetter)
string DiskHealthCheck(1: i32 diskIndex)
string MigrateSystemDriveData()
string LowLevelFormat(1: i32 diskIndex)
string RecoverLostPartition(1: i32 diskIndex)
string RepairRawOrDamagedPartition(1: string driveLetter)
string ScanDiskBadSectors(1: i32 diskIndex)
string ScanPartitionBadSectors(1: string driveLetter)
string RebuildMbr(1: i32 diskIndex)
string ToggleWriteProtection(1: string driveLetter)
string AlignDiskTo4k(1: i32 diskIndex)
string RepairWindowsBoot()
string PasswordReset()
string Windows11UpgradeCheck()
)";

TEST(Contract, MethodsArgumentsAndResults_AreThoseOfAgentsInUse)
{
    std::string declared = "\n";
    for (const InterfaceMethod& method : interfaceMethods()) {
        std::string arguments;
        for (const InterfaceArgument& argument : method.arguments)
            arguments += (arguments.empty() ? "" : ", ") + std::to_string(argument.id) + ": " +
                         argument.type + ' ' + argument.name;
        declared += method.result + ' ' + method.name + '(' + arguments + ")\n";
    }
    EXPECT_EQ(declared, kMethods);
}

TEST(Contract, AnswersAndReasons_AreTheSentencesThatAgentsCompare)
{
    EXPECT_EQ(g_ZORNativePlugin_constants.TASK_QUEUED, "Task Queued");
    EXPECT_EQ(g_ZORNativePlugin_constants.TASK_NOT_VALID, "Task NotValid");
    EXPECT_EQ(g_ZORNativePlugin_constants.OPERATION_IN_PROGRESS,
              "An operation is currently in progress, please wait a few moments and try again. If you need "
              "further assistance, please let me know!");
    EXPECT_EQ(g_ZORNativePlugin_constants.TASKS_IN_EXECUTION,
              "One or more tasks are currently in execution, please wait a few moments and try again. If you "
              "need further assistance, please let me know!");
}

} // namespace
