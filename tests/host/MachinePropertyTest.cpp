// Properties that hold after random operations on random machines. AIBRIDGE_PROPERTY_SEED sets the seed,
// which is printed, and AIBRIDGE_PROPERTY_OPERATIONS the number of operations.
#include "host/machine/Functions.h"
#include "host/machine/Orders.h"
#include "host/machine/Rules.h"
#include "tests/host/MachineProperties.h"
#include "tests/host/MachineText.h"
#include "tests/host/RandomMachine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <set>

namespace {

using host::Disk;
using host::Machine;
using host::Partition;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kOperations = 20000;
#else
constexpr int kOperations = 150000;
#endif
constexpr int kOperationsOnAMachine = 150;
constexpr int kTripEvery = 40;

int setting(const char* name, int otherwise)
{
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue(name, &isSet);
    return isSet ? value : otherwise;
}

using Names = std::set<QString>;

// These write a new table, which alone determines the free space.
const Names kNewTable = {"DeleteAllPartitions", "InitializeDiskToMbr",  "InitializeDiskToGpt", "WipeDisk",
                         "LowLevelFormat",      "AutoCreatePartitions", "CloneDisk",           "CloneSystem",
                         "CreateBootMedia"};
// These change the used size; all others must keep it.
const Names kChangesUse = {"DeleteAllPartitions", "WipeDisk",      "LowLevelFormat",  "AutoCreatePartitions",
                           "CloneDisk",           "CloneSystem",   "ClonePartition",  "CreateBootMedia",
                           "FormatPartition",     "WipePartition", "DeletePartition", "EjectUsb"};
// These create partitions.
const Names kCreates = {"CreatePartition", "SplitPartition", "AllocateSpace",  "AutoCreatePartitions",
                        "CloneDisk",       "CloneSystem",    "ClonePartition", "CreateBootMedia"};

// The sum of free space and partitions is unchanged, or determined by a new table.
QString spaceViolation(const QString& name, const Disk& before, const Disk& after)
{
    const qint64 grown = unlisted(after) - unlisted(before);
    const qint64 sector = after.partitions.empty() ? 512 : after.partitions.front().sectorSize;
    if (kNewTable.count(name) > 0 && unlisted(after) == reservedByTable(after))
        return QString();
    if (name == "ConvertDiskToGpt")
        return grown >= 0 && grown <= 33 * sector ? QString() : "a GPT took more than its place";
    if (name == "AlignDiskTo4k")
        return grown >= 0 && grown < kMiB ? QString() : "the alignment lost space";
    return grown == 0 ? QString() : QString("%1 bytes of disk %2 are lost").arg(grown).arg(after.diskIndex);
}

QString alignmentViolation(const QString& name, const Disk& before, const Disk& after)
{
    std::set<qint64> known;
    for (const Partition& entry : before.partitions)
        known.insert(entry.startOffset());
    for (const Partition& entry : after.partitions) {
        const bool isNew = !entry.unallocated && known.count(entry.startOffset()) == 0;
        if (kCreates.count(name) > 0 && isNew && entry.startOffset() % kMiB != 0 && name != "AllocateSpace")
            return "a new partition begins at no mebibyte";
    }
    return QString();
}

// An unwritable disk is unchanged, and so is the position of an unwritable drive while its disk keeps its
// table. Letters are stored in the system, not on the disk, so they may change.
QString protectionViolation(const QString& name, const Disk& before, const Disk& after)
{
    static const Names switches = {"DiskBringOnline", "ToggleWriteProtection", "ChangePartitionDriveLetter"};
    const bool writable = !before.readonly && !before.isProtected && !before.isOffline && !before.isBad;
    if (!writable && switches.count(name) == 0 && !isSame(before, after))
        return "a disk that cannot be written to was changed";
    if (kNewTable.count(name) > 0 || name == "DeletePartition")
        return QString();
    for (const Partition& entry : before.partitions) {
        const bool fixed = !entry.unallocated && (entry.readonly || entry.isLocked());
        const bool kept =
            std::any_of(after.partitions.begin(), after.partitions.end(), [&](const Partition& now) {
                return !now.unallocated && now.startSector == entry.startSector && now.size == entry.size;
            });
        if (fixed && !kept && name != "ConvertDiskToMbr")
            return "a drive that cannot be written to was moved";
    }
    return QString();
}

int runningSystems(const Machine& machine)
{
    int count = 0;
    for (const Disk& disk : machine.disks) {
        for (const Partition& entry : disk.partitions)
            count += entry.isBoot ? 1 : 0;
    }
    return count;
}

QString changeViolation(const QString& name, const Machine& before, const Machine& after)
{
    if (kChangesUse.count(name) == 0 && usedOf(before) != usedOf(after))
        return "data was lost or came from nowhere";
    if (runningSystems(before) != runningSystems(after))
        return "the running system is gone";
    for (const Disk& disk : after.disks) {
        const Disk& old = *before.disk(disk.diskIndex);
        for (const QString& violation : {spaceViolation(name, old, disk), alignmentViolation(name, old, disk),
                                         protectionViolation(name, old, disk)}) {
            if (!violation.isEmpty())
                return violation;
        }
    }
    return machineViolation(after);
}

class MachineProperties : public testing::Test
{
protected:
    // Runs one operation; returns the violated property.
    QString tryOne(Machine& machine)
    {
        const int function = chance.function();
        name = host::functionName(function);
        params = chance.params(machine, function);
        const Machine before = machine;
        ++tried;
        if (chance.chance(15) && !host::taskRejection(machine, function, params)) {
            host::leaveInterrupted(machine, function, params, chance.share());
            ++interrupted;
            return changeViolation(name, before, machine);
        }
        if (host::attempt(machine, function, params)) {
            ++rejected;
            return isSame(before, machine) ? QString() : "a rejected operation changed the machine";
        }
        ++accepted[name];
        return changeViolation(name, before, machine);
    }

    void SetUp() override { std::cout << "seed " << seed << ", " << operations << " operations\n"; }

    const int seed = setting("AIBRIDGE_PROPERTY_SEED", 20261121);
    const int operations = setting("AIBRIDGE_PROPERTY_OPERATIONS", kOperations);
    RandomMachine chance{static_cast<unsigned>(seed)};
    QString name;
    QVariantMap params;
    std::map<QString, int> accepted;
    int tried = 0;
    int rejected = 0;
    int interrupted = 0;
};

TEST_F(MachineProperties, RandomOperations_KeepTheMachineValid)
{
    Machine machine;
    while (tried < operations) {
        if (tried % kOperationsOnAMachine == 0)
            machine = chance.machine();
        ASSERT_EQ(machineViolation(machine).toStdString(), "") << "a machine by chance";
        const QString violation = tryOne(machine);
        ASSERT_EQ(violation.toStdString(), "")
            << "seed " << seed << ", operation " << tried << ": " << name.toStdString();
        if (tried % kTripEvery == 0) {
            ASSERT_EQ(tripViolation(machine).toStdString(), "") << "seed " << seed << ", operation " << tried;
        }
    }
    std::cout << rejected << " rejected, " << interrupted << " interrupted\n";
    // The properties are only tested if operations are rejected and interrupted.
    EXPECT_GT(rejected, operations / 10);
    EXPECT_GT(interrupted, operations / 100);
    if (operations >= kOperations) {
        EXPECT_EQ(accepted.size(), 47u);
    }
    for (const auto& [function, times] : accepted)
        std::cout << "  " << function.toStdString() << ' ' << times << '\n';
}

} // namespace
