// Clones of disks, compared and checked with independent tools.
#include "tests/host/udisks/CloneFixture.h"

namespace {

using host::Function;

class CloneDisk : public CloneFixture
{
protected:
    std::string cloneDisk() { return clone(Function::CloneDisk, fromTo(wholeDisk(0), wholeDisk(1))); }

    QJsonArray entriesOf(const QString& file) const { return tableOf(file)["partitions"].toArray(); }
};

TEST_F(CloneDisk, Gpt_HasTheSamePartitionsWithOtherIdentifiers)
{
    partition(image, "label: gpt\\n"
                     "start=2048,size=20M,type=C12A7328-F81F-11D2-BA4B-00A0C93EC93B,name=\"EFI part\"\\n"
                     "start=45056,size=30M,type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7,attrs=GUID:62\\n"
                     "start=112640,size=40M\\n");
    partition(copy, "label: dos\\nsize=10M\\n");
    put(volume(20 * kMiB, "mkfs.fat", {"-n", "EFI"}), image, kMiB);
    const QString ntfs = volume(30 * kMiB, "mkfs.ntfs", {"-q", "-F", "-L", "Hidden"});
    put(ntfs, image, 22 * kMiB);
    const QString ext = volume(40 * kMiB, "mkfs.ext4", {"-q"});
    const QString file = randomFile(20 * kMiB);
    putInto(ext, file);
    put(ext, image, 55 * kMiB);
    const QString before = sum(image);
    openBoth(3);
    EXPECT_EQ(cloneDisk(), "");
    backend.reset();
    EXPECT_EQ(sum(image), before);
    const QJsonArray originals = entriesOf(image);
    const QJsonArray copies = entriesOf(copy);
    ASSERT_EQ(copies.size(), 3);
    const int starts[] = {2048, 43008, 104448};
    for (int i = 0; i < 3; ++i) {
        const QJsonObject original = originals[i].toObject();
        const QJsonObject cloned = copies[i].toObject();
        EXPECT_EQ(cloned["start"].toInt(), starts[i]);
        EXPECT_EQ(cloned["size"].toInt(), original["size"].toInt());
        EXPECT_EQ(cloned["type"].toString(), original["type"].toString());
        EXPECT_EQ(cloned["name"].toString(), original["name"].toString());
        EXPECT_EQ(cloned["attrs"].toString(), original["attrs"].toString());
        EXPECT_NE(cloned["uuid"].toString(), original["uuid"].toString());
    }
    EXPECT_EQ(copies[0].toObject()["name"].toString(), "EFI part");
    EXPECT_EQ(copies[1].toObject()["attrs"].toString(), "GUID:62");
    EXPECT_NE(tableOf(copy)["id"].toString(), tableOf(image)["id"].toString());
    outputOf("fsck.fat", {"-n", extract(copy, kMiB, 20 * kMiB)});
    const QString clonedNtfs = extract(copy, 21 * kMiB, 30 * kMiB);
    outputOf("ntfsfix", {"-n", clonedNtfs});
    EXPECT_NE(tag(clonedNtfs, "UUID"), tag(ntfs, "UUID"));
    const QString clonedExt = extract(copy, 51 * kMiB, 40 * kMiB);
    outputOf("e2fsck", {"-fn", clonedExt});
    EXPECT_TRUE(has(clonedExt, file));
    EXPECT_NE(tag(clonedExt, "UUID"), tag(ext, "UUID"));
}

TEST_F(CloneDisk, Mbr_HasTheLogicalDrivesAndTheActiveFlag)
{
    partition(image, "label: dos\\nstart=2048,size=20M,type=7,bootable\\nstart=43008,size=80M,type=f\\n"
                     "start=45056,size=20M,type=83\\nstart=90112,size=20M,type=b\\n");
    partition(copy, "label: gpt\\n");
    put(volume(20 * kMiB, "mkfs.ntfs", {"-q", "-F"}), image, kMiB);
    const QString ext = volume(20 * kMiB, "mkfs.ext4", {"-q"});
    put(ext, image, 22 * kMiB);
    put(volume(20 * kMiB, "mkfs.fat", {"-n", "FAT"}), image, 44 * kMiB);
    openBoth(3);
    EXPECT_EQ(cloneDisk(), "");
    EXPECT_EQ(partitionsOf(1).size(), 3);
    backend.reset();
    EXPECT_EQ(tableOf(copy)["label"].toString(), "dos");
    EXPECT_NE(tableOf(copy)["id"].toString(), tableOf(image)["id"].toString());
    const QJsonArray copies = entriesOf(copy);
    ASSERT_EQ(copies.size(), 4);
    EXPECT_TRUE(copies[0].toObject()["bootable"].toBool());
    const char* types[] = {"7", "5", "83", "b"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(copies[i].toObject()["type"].toString(), types[i]);
    const auto start = [&](int index) { return copies[index].toObject()["start"].toInt() * qint64(512); };
    outputOf("ntfsfix", {"-n", extract(copy, kMiB, 20 * kMiB)});
    const QString clonedExt = extract(copy, start(2), 20 * kMiB);
    outputOf("e2fsck", {"-fn", clonedExt});
    EXPECT_NE(tag(clonedExt, "UUID"), tag(ext, "UUID"));
    outputOf("fsck.fat", {"-n", extract(copy, start(3), 20 * kMiB)});
}

TEST_F(CloneDisk, DestinationWithoutRoomForAllBlocks_IsRejected)
{
    copy = service.image("small.img", 60 * kMiB);
    partition(image, "label: gpt\\nstart=2048,size=30M\\nstart=63488,size=40M\\n");
    partition(copy, "label: gpt\\n");
    // The simulation would shrink these file systems.
    put(volume(30 * kMiB, "mkfs.ntfs", {"-q", "-F"}), image, kMiB);
    put(volume(40 * kMiB, "mkfs.ntfs", {"-q", "-F"}), image, 31 * kMiB);
    openBoth(2);
    EXPECT_EQ(rejection(Function::CloneDisk, fromTo(wholeDisk(0), wholeDisk(1))),
              "All blocks are copied, so the destination must be as large as the source.");
}

TEST_F(CloneDisk, SystemClone_IsRejected)
{
    partition(image, "label: gpt\\nsize=40M\\n");
    partition(copy, "label: gpt\\n");
    openBoth(1);
    EXPECT_EQ(rejection(Function::CloneSystem, fromTo(wholeDisk(0), wholeDisk(1))),
              "The host does not know which partitions of a real disk belong to an operating system.");
}

} // namespace
