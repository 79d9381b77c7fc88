// Each function is planned as calls of the disk service, carried out by the back end itself, or rejected.
#include "host/machine/Functions.h"
#include "host/udisks/OrderPlan.h"
#include "host/udisks/OrderRules.h"

#include <QtCore/QMetaEnum>

#include <gtest/gtest.h>

namespace {

enum class Verdict { Planned, Own, Rejected };

struct FunctionRow
{
    const char* name;
    Verdict verdict;
};

const FunctionRow kFunctions[] = {
    {"OpenDiskLayoutEditor", Verdict::Planned},
    {"SmartSpaceAdjustment", Verdict::Planned},
    {"DeleteAllPartitions", Verdict::Planned},
    {"InitializeDiskToMbr", Verdict::Planned},
    {"InitializeDiskToGpt", Verdict::Planned},
    {"WipeDisk", Verdict::Planned},
    {"ResizePartition", Verdict::Planned},
    {"FormatPartition", Verdict::Planned},
    {"DeletePartition", Verdict::Planned},
    {"SplitPartition", Verdict::Planned},
    {"CreatePartition", Verdict::Planned},
    {"ShowBitLockerStatus", Verdict::Planned},
    {"MergePartitions", Verdict::Rejected},
    {"OpenPartitionLayoutEditor", Verdict::Planned},
    {"AllocateSpace", Verdict::Planned},
    {"WipePartition", Verdict::Planned},
    {"ConvertPartitionToPrimary", Verdict::Rejected},
    {"ConvertPartitionToLogical", Verdict::Rejected},
    {"ChangePartitionClusterSize", Verdict::Rejected},
    {"ChangePartitionDriveLetter", Verdict::Own},
    {"ChangePartitionLabel", Verdict::Planned},
    {"SetPartitionActive", Verdict::Planned},
    {"SetPartitionHidden", Verdict::Planned},
    {"MigrateSystemDriveData", Verdict::Rejected},
    {"AutoCreatePartitions", Verdict::Planned},
    {"DiskBringOnline", Verdict::Rejected},
    {"EjectUsb", Verdict::Planned},
    {"LowLevelFormat", Verdict::Planned},
    {"CloneDisk", Verdict::Own},
    {"CloneSystem", Verdict::Rejected},
    {"ClonePartition", Verdict::Own},
    {"ConvertDiskToGpt", Verdict::Planned},
    {"ConvertDiskToMbr", Verdict::Planned},
    {"ConvertDiskToBasic", Verdict::Rejected},
    {"ConvertDiskToDynamic", Verdict::Rejected},
    {"ConvertPartitionToNtfs", Verdict::Rejected},
    {"ConvertPartitionToFat", Verdict::Rejected},
    {"ConvertPartitionToExfat", Verdict::Rejected},
    {"CreateBootMedia", Verdict::Rejected},
    {"InstallPreOs", Verdict::Rejected},
    {"DisablePreOs", Verdict::Rejected},
    {"RecoverLostPartition", Verdict::Rejected},
    {"ToggleWriteProtection", Verdict::Rejected},
    {"RebuildMbr", Verdict::Rejected},
    {"AlignDiskTo4k", Verdict::Rejected},
    {"ScanBadSectors", Verdict::Own},
    {"CheckFileSystem", Verdict::Planned},
};

TEST(FunctionVerdicts, EachFunctionHasOne)
{
    const QMetaEnum all = QMetaEnum::fromType<host::Function>();
    ASSERT_EQ(std::size(kFunctions), static_cast<std::size_t>(all.keyCount()));
    for (int i = 0; i < all.keyCount(); ++i) {
        const int number = all.value(i);
        EXPECT_STREQ(all.key(i), kFunctions[i].name);
        EXPECT_EQ(host::hasOrderPlan(number), kFunctions[i].verdict == Verdict::Planned) << all.key(i);
        EXPECT_EQ(host::hasOwnExecution(number), kFunctions[i].verdict == Verdict::Own) << all.key(i);
        EXPECT_EQ(host::unavailableRejection(number).has_value(), kFunctions[i].verdict == Verdict::Rejected)
            << all.key(i);
    }
}

TEST(FunctionVerdicts, UnknownFunction_HasNone)
{
    EXPECT_FALSE(host::hasOrderPlan(999));
    EXPECT_FALSE(host::hasOwnExecution(999));
    EXPECT_FALSE(host::unavailableRejection(999).has_value());
}

// A disk on a USB drive, as the service reports it.
host::DiskServiceCall ejectCall(bool canPowerOff, bool isEjectable)
{
    host::Machine machine;
    machine.disks.resize(1);
    machine.disks[0].diskIndex = 0;
    machine.disks[0].partitions.resize(1);
    machine.disks[0].partitions[0].diskIndex = 0;
    machine.disks[0].partitions[0].driveLetter = "D";
    const auto plan = host::orderPlan(machine, {{"/dev/sdx", false}},
                                      static_cast<int>(host::Function::EjectUsb), {{"driveLetter", "D"}});
    host::DiskSnapshot snapshot;
    host::DriveInfo drive;
    drive.path = "/drives/stick";
    drive.canPowerOff = canPowerOff;
    drive.isEjectable = isEjectable;
    snapshot.drives.push_back(drive);
    host::BlockDevice disk;
    disk.drive = drive.path;
    const auto call = plan.steps.at(0).call({snapshot, disk, nullptr});
    return std::holds_alternative<host::Text>(call)
               ? host::DiskServiceCall{"", "", std::get<host::Text>(call).english(), {}}
               : std::get<host::DiskServiceCall>(call);
}

TEST(Eject, PowersTheDriveOffIfItCan)
{
    EXPECT_EQ(ejectCall(true, true).method, "PowerOff");
    EXPECT_EQ(ejectCall(true, true).path, "/drives/stick");
    EXPECT_EQ(ejectCall(false, true).method, "Eject");
    EXPECT_EQ(ejectCall(false, false).method, "The disk can be neither powered off nor ejected.");
}

} // namespace
