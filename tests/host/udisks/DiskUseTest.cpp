// The reasons for which a disk must not be changed, from the objects of the disk service.
#include "host/udisks/DiskUse.h"

#include <gtest/gtest.h>

namespace {

using host::DiskServiceObjects;

const QString kFolder = "/org/freedesktop/UDisks2/block_devices/";
const QString kDisk = kFolder + "sdx";
const QString kPartition = kFolder + "sdx1";

QVariant objectPath(const QString& path)
{
    return QVariant::fromValue(QDBusObjectPath(path));
}

class DiskUse : public testing::Test
{
protected:
    DiskUse()
    {
        host::registerDiskServiceTypes();
        block(kDisk, "/dev/sdx");
        block(kPartition, "/dev/sdx1");
        set(kDisk, "PartitionTable", {{"Type", "gpt"}});
        set(kPartition, "Partition", {{"Table", objectPath(kDisk)}, {"Offset", 1048576}, {"Size", 1048576}});
    }

    void block(const QString& path, const char* device)
    {
        // A device file ends in a null byte.
        set(path, "Block",
            {{"Device", QByteArray(device, static_cast<int>(qstrlen(device)) + 1)},
             {"MDRaidMember", objectPath("/")},
             {"CryptoBackingDevice", objectPath("/")}});
    }

    void set(const QString& path, const QString& interface, const QVariantMap& properties)
    {
        QVariantMap& all = objects[QDBusObjectPath(path)]["org.freedesktop.UDisks2." + interface];
        for (auto it = properties.begin(); it != properties.end(); ++it)
            all.insert(it.key(), it.value());
    }

    std::string rejection() const
    {
        const host::DiskSnapshot snapshot = host::snapshotOf(objects);
        const host::Rejection found = host::useRejection(snapshot, *snapshot.device(kDisk));
        return found ? found->english().toStdString() : "";
    }

    DiskServiceObjects objects;
};

TEST_F(DiskUse, UnusedFileSystemAndSwapSpace_AreAccepted)
{
    set(kPartition, "Filesystem", {{"MountPoints", QVariant::fromValue(QList<QByteArray>())}});
    EXPECT_EQ(rejection(), "");
    set(kPartition, "Swapspace", {{"Active", false}});
    EXPECT_EQ(rejection(), "");
}

TEST_F(DiskUse, MountedPartition_IsNamedWithItsFolder)
{
    const QList<QByteArray> folders{QByteArray("/mnt/data", 10)};
    set(kPartition, "Filesystem", {{"MountPoints", QVariant::fromValue(folders)}});
    EXPECT_EQ(rejection(), "/dev/sdx1 holds a mounted file system (/mnt/data).");
}

TEST_F(DiskUse, ActiveSwapSpace_IsNamed)
{
    set(kPartition, "Swapspace", {{"Active", true}});
    EXPECT_EQ(rejection(), "/dev/sdx1 holds active swap space.");
}

TEST_F(DiskUse, PhysicalVolumeOfLvm_IsNamed)
{
    set(kPartition, "Block", {{"IdUsage", "raid"}, {"IdType", "LVM2_member"}});
    EXPECT_EQ(rejection(), "/dev/sdx1 is a physical volume of LVM.");
}

TEST_F(DiskUse, RaidMember_IsNamed)
{
    set(kPartition, "Block", {{"IdUsage", "raid"}, {"IdType", "linux_raid_member"}});
    EXPECT_EQ(rejection(), "/dev/sdx1 is a member of a RAID.");
}

TEST_F(DiskUse, WholeDiskInARaidWithoutSignature_IsNamed)
{
    set(kDisk, "Block", {{"MDRaidMember", objectPath("/org/freedesktop/UDisks2/mdraid/a")}});
    EXPECT_EQ(rejection(), "/dev/sdx is a member of a RAID.");
}

TEST_F(DiskUse, EncryptedVolume_IsRejectedWhileItIsOpen)
{
    set(kPartition, "Encrypted", {{"CleartextDevice", objectPath("/")}});
    EXPECT_EQ(rejection(), "");
    set(kPartition, "Encrypted", {{"CleartextDevice", objectPath(kFolder + "dm_2d0")}});
    EXPECT_EQ(rejection(), "/dev/sdx1 is an encrypted volume that is open.");
}

TEST_F(DiskUse, ContentOfAnEncryptedVolume_RejectsItsDisk)
{
    block(kFolder + "dm_2d0", "/dev/dm-0");
    set(kFolder + "dm_2d0", "Block", {{"CryptoBackingDevice", objectPath(kPartition)}});
    EXPECT_EQ(rejection(), "/dev/sdx1 is an encrypted volume that is open.");
}

TEST_F(DiskUse, UnreadableTable_RejectsTheDisk)
{
    const auto content = [this] {
        const host::DiskSnapshot snapshot = host::snapshotOf(objects);
        const host::Rejection found = host::contentRejection(*snapshot.device(kDisk));
        return found ? found->english().toStdString() : "";
    };
    EXPECT_EQ(content(), "");
    set(kDisk, "PartitionTable", {{"Type", "dos"}});
    EXPECT_EQ(content(), "");
    // As the service reports a GPT disk that has been cut off.
    set(kDisk, "PartitionTable", {{"Type", "PMBR"}});
    EXPECT_EQ(content(), "The partition table of /dev/sdx is damaged or of an unsupported type (PMBR).");
    objects[QDBusObjectPath(kDisk)].remove("org.freedesktop.UDisks2.PartitionTable");
    set(kDisk, "Block", {{"IdType", "ext4"}});
    EXPECT_EQ(content(), "/dev/sdx holds a file system without a partition table.");
}

TEST_F(DiskUse, OtherDisks_DoNotMatter)
{
    block(kFolder + "sdy", "/dev/sdy");
    set(kFolder + "sdy", "Swapspace", {{"Active", true}});
    EXPECT_EQ(rejection(), "");
}

} // namespace
