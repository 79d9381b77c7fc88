// The shipped machines are readable and match their descriptions.
#include "host/machine/MachineReader.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr qint64 kTiB = Q_INT64_C(1) << 40;

host::Machine shipped(const QString& name)
{
    auto read = host::readMachineFile(QStringLiteral(SHIPPED_MACHINES) + "/" + name + ".json");
    if (const auto* error = std::get_if<host::MachineError>(&read)) {
        ADD_FAILURE() << error->text.toStdString();
        return host::Machine();
    }
    return std::get<host::Machine>(read);
}

TEST(ShippedMachines, Laptop_HasOneNvmeDiskWithAnEncryptedSystemDrive)
{
    const host::Machine machine = shipped("laptop");
    ASSERT_EQ(machine.disks.size(), 1u);
    EXPECT_EQ(machine.disks[0].diskInterface, "NVMe");
    EXPECT_TRUE(machine.disks[0].isGPT);
    const host::Partition* system = machine.partition("C");
    ASSERT_NE(system, nullptr);
    EXPECT_TRUE(system->isBitLocker);
    EXPECT_NE(system->bltState, 0);
}

TEST(ShippedMachines, Desktop_HasFourDisks)
{
    EXPECT_EQ(shipped("desktop").disks.size(), 4u);
}

TEST(ShippedMachines, Desktop_HasALargeMbrDiskThatWastesSpace)
{
    const host::Machine machine = shipped("desktop");
    const bool found = std::any_of(machine.disks.begin(), machine.disks.end(), [](const host::Disk& disk) {
        return !disk.isGPT && disk.size > 2 * kTiB && disk.partitions.back().unallocated &&
               disk.partitions.back().endOffset() > 2 * kTiB;
    });
    EXPECT_TRUE(found);
}

TEST(ShippedMachines, Desktop_HasALargeFat32StickAndRoomForAPartition)
{
    const host::Machine machine = shipped("desktop");
    bool stick = false;
    bool room = false;
    for (const host::Disk& disk : machine.disks) {
        for (const host::Partition& entry : disk.partitions) {
            stick = stick || (disk.isUSB && entry.fsString == "FAT32" &&
                              entry.size > Q_INT64_C(34359738368) && !entry.driveLetter.isEmpty());
            room = room || (disk.isGPT && entry.unallocated && entry.size > kTiB / 16);
        }
    }
    EXPECT_TRUE(stick);
    EXPECT_TRUE(room);
    EXPECT_NE(machine.partition("D"), nullptr);
}

TEST(ShippedMachines, Server_HasTwentyFourDisks)
{
    EXPECT_EQ(shipped("server").disks.size(), 24u);
}

} // namespace
