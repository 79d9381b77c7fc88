// The lookups in the host's records, and the order of the records.
#include "tools/HostRecords.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

namespace {

QVariantMap part(const char* letter, int tag)
{
    return {{"driveLetter", QString::fromUtf8(letter)}, {"tag", tag}};
}

class HostRecords : public testing::Test
{
protected:
    void build(const QVariantList& disks)
    {
        host.spec("deviceMgr").answer("disks", QVariant(disks));
        host.build();
    }

    QString partitionText(const char* letter)
    {
        return typed(findPartitionRecord(host.pages(), QString::fromUtf8(letter), 1));
    }
    int tagOf(const char* letter)
    {
        return findPartitionRecord(host.pages(), QString::fromUtf8(letter), 1).value("tag").toInt();
    }

    RecordingHost host;
};

TEST_F(HostRecords, WithoutABridge_AreEmptyOrBare)
{
    EXPECT_EQ(hostDeviceManager(nullptr), nullptr);
    EXPECT_TRUE(listHostDisks(nullptr, 1).isEmpty());
    EXPECT_EQ(typed(findPartitionRecord(nullptr, "c:x", 1)),
              "map{diskIndex=int:-1,driveLetter=QString:\"C:X\"}");
    EXPECT_EQ(typed(findDiskRecord(nullptr, 1, 7)), "map{diskIndex=int:7}");
    EXPECT_EQ(typed(findDefaultBootPartition(nullptr, 1, 7)), "map{diskIndex=int:7}");
    EXPECT_TRUE(pickTargetPartition(nullptr, {{"partitions", QVariantList{part("C", 1)}}}).isEmpty());
    EXPECT_FALSE(hostHasDisk(nullptr, 0, 1));
}

TEST_F(HostRecords, TheDeviceManager_IsTheContextObject)
{
    host.build();
    EXPECT_EQ(hostDeviceManager(host.pages()), host.object("deviceMgr"));
}

TEST_F(HostRecords, TheList_IsRequestedWithTheSelectorAndFalse)
{
    build({5});
    EXPECT_EQ(typed(listHostDisks(host.pages(), -3)), "list[int:5]");
    EXPECT_EQ(typed(host.recorder().calls().at(0).arguments), "list[int:-3,bool:false]");
}

TEST_F(HostRecords, AListOfAnotherType_IsEmpty)
{
    host.spec("deviceMgr").remove("disks").method("disks(int,bool)", "QVariant", [](const QVariantList&) {
        return QVariant(5);
    });
    host.build();
    EXPECT_TRUE(listHostDisks(host.pages(), 1).isEmpty());
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(HostRecords, APartition_IsFoundByTheFirstCharacterInEitherCase)
{
    build({QVariantMap{{"partitions", QVariantList{part("", 1), part("d:\\", 2), part("E", 3)}}}});
    for (const char* letter : {"d", "D", "D:", "dX"})
        EXPECT_EQ(tagOf(letter), 2) << letter;
    EXPECT_EQ(tagOf("e:"), 3);
}

TEST_F(HostRecords, OnOneDiskTheFirstMatchIsTaken_OnSeveralTheLastDisks)
{
    build({QVariantMap{{"partitions", QVariantList{part("D", 1), part("d", 2)}}},
           QVariantMap{{"partitions", QVariantList{part("E", 3)}}},
           QVariantMap{{"partitions", QVariantList{part("x", 4), part("D:", 5), part("D:", 6)}}},
           QVariantMap{{"partitions", QVariantList{part("E", 7)}}}});
    EXPECT_EQ(tagOf("D"), 5);
    EXPECT_EQ(tagOf("E"), 7);
}

TEST_F(HostRecords, AnUnknownOrEmptyLetter_GivesTheBareRecordWithTheWholeTextInUpperCase)
{
    build({QVariantMap{{"partitions", QVariantList{part("", 1), part("D", 2)}}}, QVariant("no map")});
    EXPECT_EQ(partitionText("q:\\dir"), "map{diskIndex=int:-1,driveLetter=QString:\"Q:\\DIR\"}");
    EXPECT_EQ(partitionText(""), "map{diskIndex=int:-1,driveLetter=QString:\"\"}");
}

TEST_F(HostRecords, ADisk_IsTheFirstOfThatIndexWithAllItsKeys)
{
    build({QVariantMap{{"diskIndex", 2}, {"tag", 1}}, QVariantMap{{"diskIndex", 5}, {"tag", 2}},
           QVariantMap{{"diskIndex", 5}, {"tag", 3}}});
    EXPECT_EQ(typed(findDiskRecord(host.pages(), 1, 5)), "map{diskIndex=int:5,tag=int:2}");
    EXPECT_EQ(typed(findDiskRecord(host.pages(), 1, -1)), "map{diskIndex=int:-1}");
    EXPECT_TRUE(hostHasDisk(host.pages(), 5, 1));
    EXPECT_FALSE(hostHasDisk(host.pages(), 6, 1));
}

QVariantMap bootDisk(int index, bool boot, int tag)
{
    return {{"diskIndex", index},
            {"isBoot", boot},
            {"partitions", QVariantList{QVariantMap{{"tag", 0}}, QVariantMap{{"defBoot", true}, {"tag", tag}},
                                        QVariantMap{{"defBoot", true}, {"tag", 99}}}}};
}

TEST_F(HostRecords, TheDefaultBootPartition_IsThatOfTheFirstDiskOfTheIndexOrTheFirstBootDisk)
{
    build({bootDisk(0, false, 10), bootDisk(1, true, 11), bootDisk(2, false, 12)});
    const auto tag = [this](int index) {
        return findDefaultBootPartition(host.pages(), 4, index).value("tag").toInt();
    };
    EXPECT_EQ(tag(0), 10);
    EXPECT_EQ(tag(1), 11);
    // The boot disk comes first in the list.
    EXPECT_EQ(tag(2), 11);
    EXPECT_EQ(tag(9), 11);
    EXPECT_EQ(typed(host.recorder().calls().at(0).arguments), "list[int:4,bool:false]");
}

TEST_F(HostRecords, TheDefaultBootPartitionOfMinusTwo_IgnoresBootDisks)
{
    build({bootDisk(1, true, 11)});
    EXPECT_EQ(typed(findDefaultBootPartition(host.pages(), 1, -2)), "map{diskIndex=int:-2}");
}

TEST_F(HostRecords, TheDefaultBootPartitionOfMinusTwo_IsFoundWhereTheHostListsSuchADisk)
{
    build({bootDisk(1, true, 11), bootDisk(-2, false, 12)});
    EXPECT_EQ(findDefaultBootPartition(host.pages(), 1, -2).value("tag"), QVariant(12));
}

TEST_F(HostRecords, AChosenDiskWithoutADefaultBootPartition_GivesTheBareRecordAndEndsTheWalk)
{
    build({QVariantMap{{"diskIndex", 3}, {"partitions", QVariantList{QVariantMap{{"defBoot", false}}}}},
           bootDisk(3, true, 11)});
    EXPECT_EQ(typed(findDefaultBootPartition(host.pages(), 1, 3)), "map{diskIndex=int:3}");
}

TEST_F(HostRecords, TheTargetOnADisk_IsTheFirstRecordUnlessALaterOneIsFreeSpace)
{
    host.build();
    const auto target = [this](const QVariantList& partitions) {
        return pickTargetPartition(host.pages(), {{"partitions", partitions}}).value("tag").toInt();
    };
    const QVariantMap used1{{"tag", 1}}, used2{{"tag", 2}};
    const QVariantMap free3{{"tag", 3}, {"unallocated", true}}, free4{{"tag", 4}, {"unallocated", true}};
    EXPECT_EQ(target({used1}), 1);
    EXPECT_EQ(target({used1, used2}), 1);
    EXPECT_EQ(target({used1, used2, free3, free4}), 3);
    EXPECT_EQ(target({free3}), 3);
    EXPECT_EQ(target({free3, used1}), 3);
    EXPECT_EQ(target({free3, used1, free4}), 4);
    EXPECT_EQ(target({}), 0);
    // An empty record does not count as a partition.
    EXPECT_EQ(target({QVariantMap(), used1, free3}), 3);
    EXPECT_EQ(target({QVariantMap(), free3, used1}), 3);
    EXPECT_TRUE(pickTargetPartition(host.pages(), {}).isEmpty());
}

} // namespace
