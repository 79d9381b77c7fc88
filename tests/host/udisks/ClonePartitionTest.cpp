// Clones of partitions, compared and checked with independent tools.
#include "tests/host/udisks/CloneFixture.h"

namespace {

using host::Function;

class ClonePartition : public CloneFixture
{
protected:
    // A source with one partition of 40 MiB, and an empty GPT disk.
    void prepare(const QString& volume)
    {
        partition(image, "label: gpt\\nstart=2048,size=40M\\n");
        partition(copy, "label: gpt\\n");
        put(volume, image, kMiB);
        before = sum(image);
        openBoth(1);
    }

    std::string cloneIntoFreeSpace()
    {
        return clone(Function::ClonePartition, fromTo(entryAt(0, kMiB), entryAt(1, kMiB)));
    }

    // The clone as a file. The source must be unchanged.
    QString result()
    {
        backend.reset();
        EXPECT_EQ(sum(image), before);
        return extract(copy, kMiB, 40 * kMiB);
    }

    QString before;
};

TEST_F(ClonePartition, Ext4_HasTheFilesAndAnotherUuid)
{
    const QString original = volume(40 * kMiB, "mkfs.ext4", {"-q", "-L", "Data"});
    const QString file = randomFile(20 * kMiB);
    putInto(original, file);
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    EXPECT_EQ(drive("E").fsString, "EXT4");
    EXPECT_EQ(drive("E").label, "Data");
    EXPECT_EQ(drive("E").size, 40 * kMiB);
    const QString cloned = result();
    outputOf("e2fsck", {"-fn", cloned});
    EXPECT_TRUE(has(cloned, file));
    EXPECT_EQ(tag(cloned, "LABEL"), "Data");
    EXPECT_EQ(tag(cloned, "TYPE"), "ext4");
    EXPECT_NE(tag(cloned, "UUID"), tag(original, "UUID"));
    const QJsonObject entry = tableOf(copy)["partitions"].toArray()[0].toObject();
    EXPECT_EQ(entry["type"].toString(), "0FC63DAF-8483-4772-8E79-3D69D8477DE4");
    EXPECT_EQ(entry["size"].toInt(), 40 * 2048);
}

TEST_F(ClonePartition, Ntfs_HasTheFilesAndAnotherSerialNumber)
{
    const QString original = volume(40 * kMiB, "mkfs.ntfs", {"-q", "-F", "-L", "Data"});
    const QString file = randomFile(20 * kMiB);
    outputOf("ntfscp", {"-q", original, file, "file"});
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    EXPECT_EQ(drive("E").fsString, "NTFS");
    const QString cloned = result();
    outputOf("ntfsfix", {"-n", cloned});
    outputOf("sh", {"-c", QString("ntfscat '%1' file | cmp - '%2'").arg(cloned, file)});
    EXPECT_EQ(tag(cloned, "LABEL"), "Data");
    EXPECT_NE(tag(cloned, "UUID"), tag(original, "UUID"));
    const QJsonObject entry = tableOf(copy)["partitions"].toArray()[0].toObject();
    EXPECT_EQ(entry["type"].toString(), "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7");
}

TEST_F(ClonePartition, Fat_DiffersInTheSerialNumberOnly)
{
    const QString original = volume(40 * kMiB, "mkfs.fat", {"-F", "32", "-n", "DATA"});
    put(randomFile(20 * kMiB), original, 20 * kMiB);
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    const QString cloned = result();
    outputOf("fsck.fat", {"-n", cloned});
    EXPECT_EQ(tag(cloned, "LABEL"), "DATA");
    EXPECT_NE(tag(cloned, "UUID"), tag(original, "UUID"));
    // 4 bytes of the boot sector and of its backup.
    const QString differences =
        outputOf("sh", {"-c", QString("cmp -l '%1' '%2' | wc -l").arg(cloned, original)});
    EXPECT_GT(differences.toInt(), 0);
    EXPECT_LE(differences.toInt(), 8);
}

TEST_F(ClonePartition, Exfat_HasAnotherSerialNumber)
{
    const QString original = volume(40 * kMiB, "mkfs.exfat", {"-L", "Data"});
    put(randomFile(20 * kMiB), original, 20 * kMiB);
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    const QString cloned = result();
    outputOf("fsck.exfat", {"-n", cloned});
    EXPECT_EQ(tag(cloned, "LABEL"), "Data");
    EXPECT_NE(tag(cloned, "UUID"), tag(original, "UUID"));
    EXPECT_EQ(outputOf("sh", {"-c", QString("cmp -i 1M '%1' '%2' && echo same").arg(cloned, original)}),
              "same\n");
}

TEST_F(ClonePartition, WithoutAFileSystem_HasTheSameBytes)
{
    const QString original = randomFile(40 * kMiB);
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    EXPECT_EQ(sum(result()), sum(original));
}

TEST_F(ClonePartition, SwapSpace_HasAnotherUuid)
{
    const QString original = volume(40 * kMiB, "mkswap", {});
    prepare(original);
    EXPECT_EQ(cloneIntoFreeSpace(), "");
    const QString cloned = result();
    EXPECT_EQ(tag(cloned, "TYPE"), "swap");
    EXPECT_NE(tag(cloned, "UUID"), tag(original, "UUID"));
}

class CloneOntoPartition : public CloneFixture
{
protected:
    // A source with one partition of 40 MiB, and a destination with one of 90 MiB between two others.
    void prepare(const QString& volume)
    {
        partition(image, "label: dos\\nstart=2048,size=40M,type=7\\n");
        partition(copy, "label: dos\\nsize=20M,type=7\\nsize=90M,type=83\\nsize=20M,type=c\\n");
        put(volume, image, kMiB);
        before = sum(image);
        openBoth(1);
        ASSERT_TRUE(pumpUntil([&] { return partitionsOf(1).size() == 3; }, kTestMs));
    }

    QString before;
};

TEST_F(CloneOntoPartition, Ntfs_GrowsToTheDestination)
{
    const QString original = volume(40 * kMiB, "mkfs.ntfs", {"-q", "-F"});
    const QString file = randomFile(20 * kMiB);
    outputOf("ntfscp", {"-q", original, file, "file"});
    prepare(original);
    const QString neighbours =
        sum(extract(copy, kMiB, 20 * kMiB)) + sum(extract(copy, 111 * kMiB, 20 * kMiB));
    EXPECT_EQ(clone(Function::ClonePartition, fromTo(entryAt(0, kMiB), entryAt(1, 21 * kMiB))), "");
    backend.reset();
    EXPECT_EQ(sum(image), before);
    EXPECT_EQ(sum(extract(copy, kMiB, 20 * kMiB)) + sum(extract(copy, 111 * kMiB, 20 * kMiB)), neighbours);
    const QString cloned = extract(copy, 21 * kMiB, 90 * kMiB);
    outputOf("ntfsfix", {"-n", cloned});
    EXPECT_TRUE(outputOf("ntfsresize", {"--info", "--force", cloned}).contains("Current volume size: 9436"));
    outputOf("sh", {"-c", QString("ntfscat '%1' file | cmp - '%2'").arg(cloned, file)});
    const QJsonArray entries = tableOf(copy)["partitions"].toArray();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[1].toObject()["start"].toInt(), 21 * 2048);
    EXPECT_EQ(entries[1].toObject()["size"].toInt(), 90 * 2048);
    EXPECT_EQ(entries[1].toObject()["type"].toString(), "7");
}

TEST_F(CloneOntoPartition, Ext4_GrowsToTheDestination)
{
    const QString original = volume(40 * kMiB, "mkfs.ext4", {"-q"});
    const QString file = randomFile(20 * kMiB);
    putInto(original, file);
    prepare(original);
    EXPECT_EQ(clone(Function::ClonePartition, fromTo(entryAt(0, kMiB), entryAt(1, 21 * kMiB))), "");
    backend.reset();
    EXPECT_EQ(sum(image), before);
    const QString cloned = extract(copy, 21 * kMiB, 90 * kMiB);
    outputOf("e2fsck", {"-fn", cloned});
    EXPECT_TRUE(has(cloned, file));
    // 90 MiB in blocks of 1 KiB or 4 KiB.
    EXPECT_TRUE(
        outputOf("dumpe2fs", {"-h", cloned}).contains(QRegularExpression("Block count: +(92160|23040)\n")));
    EXPECT_EQ(tableOf(copy)["partitions"].toArray()[1].toObject()["type"].toString(), "83");
}

TEST_F(CloneOntoPartition, DestinationSmallerThanTheSource_IsRejected)
{
    prepare(volume(40 * kMiB, "mkfs.ntfs", {"-q", "-F"}));
    EXPECT_EQ(rejection(Function::ClonePartition, fromTo(entryAt(0, kMiB), entryAt(1, kMiB))),
              "All blocks are copied, so the destination must be as large as the source.");
}

TEST_F(CloneOntoPartition, FileSystemWithoutATool_IsRejected)
{
    prepare(volume(40 * kMiB, "sh",
                   {"-c", "printf _BHRfS_M | dd of=\"$0\" bs=1 seek=65600 conv=notrunc status=none"}));
    const std::string reason =
        rejection(Function::ClonePartition, fromTo(entryAt(0, kMiB), entryAt(1, 21 * kMiB)));
    EXPECT_EQ(reason,
              "A copy of a BTRFS volume would have the same identifier as the original, because no tool "
              "changes it.");
}

} // namespace
