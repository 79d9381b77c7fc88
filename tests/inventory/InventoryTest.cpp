// The inventory as a whole: its four lists, the letters and the lookups.
#include "bridge/AIBridge.h"
#include "tests/support/AIBridgeAccess.h"
#include "tools/ZorHandle.h"

#include <gtest/gtest.h>

namespace {

constexpr qlonglong kGiga = 1073741824;

QVariantMap part(int diskIndex, const char* letter, qlonglong size = 100)
{
    return {{"diskIndex", diskIndex}, {"driveLetter", QString::fromUtf8(letter)}, {"size", size}};
}

QVariantMap region(int diskIndex, qlonglong size)
{
    return {{"diskIndex", diskIndex}, {"unallocated", true}, {"size", size}};
}

QVariantMap disk(int diskIndex, const QVariantList& partitions)
{
    return {{"diskIndex", diskIndex}, {"partitions", partitions}};
}

class Inventory : public testing::Test
{
protected:
    Inventory() { tools.setBridge(AIBridgeAccess::toolBridge(&bridge)); }

    QString disks()
    {
        std::vector<DiskInfo> records;
        tools.ListAllDisks(records);
        QStringList texts;
        for (const DiskInfo& record : records)
            texts << QString::number(record.diskIndex);
        return texts.join(' ');
    }

    QString places(const std::vector<PartitionInfo>& records)
    {
        QStringList texts;
        for (const PartitionInfo& record : records)
            texts << QString::number(record.diskIndex) + QString::fromStdString(record.driveLetter) +
                         QString::number(record.rawCapacity);
        return texts.join(' ');
    }

    QString all()
    {
        std::vector<PartitionInfo> records;
        tools.GetAllPartitionInfo(records);
        return places(records);
    }

    QString on(int diskIndex)
    {
        std::vector<PartitionInfo> records;
        tools.ListPartitionsOnDisk(records, diskIndex);
        return places(records);
    }

    qint64 sizeOf(const std::string& letter)
    {
        PartitionInfo record;
        tools.GetPartitionInfo(record, letter);
        return record.rawCapacity;
    }

    AIBridge bridge;
    CZorHandle tools;
};

TEST_F(Inventory, BeforeTheFirstPush_EveryLookupIsEmpty)
{
    EXPECT_EQ(disks(), "");
    EXPECT_EQ(all(), "");
    EXPECT_EQ(on(0), "");
    PartitionInfo record;
    tools.GetPartitionInfo(record, "C");
    EXPECT_EQ(record, PartitionInfo());
    EXPECT_EQ(bridge.getPartitionSize("C"), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, 1), 0);
}

TEST_F(Inventory, TwoDisks_AreListedInTheHostsOrder)
{
    bridge.setDiskInfo({disk(3, {part(3, "E:", 5), region(3, 6)}), disk(1, {part(1, "C:", 7)})});
    EXPECT_EQ(disks(), "3 1");
    EXPECT_EQ(all(), "3E:5 36 1C:7");
    EXPECT_EQ(on(3), "3E:5 36");
    EXPECT_EQ(on(1), "1C:7");
}

TEST_F(Inventory, IsPushedThroughTheMetaObject)
{
    const QVariantList info{disk(4, {})};
    EXPECT_TRUE(QMetaObject::invokeMethod(&bridge, "setDiskInfo", Q_ARG(QVariantList, info)));
    EXPECT_EQ(disks(), "4");
}

TEST_F(Inventory, AnotherPush_ReplacesTheListsEvenIfItIsEmpty)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:")}), disk(1, {part(1, "D:")})});
    bridge.setDiskInfo({disk(1, {part(1, "X:", 8)})});
    EXPECT_EQ(disks(), "1");
    EXPECT_EQ(all(), "1X:8");
    EXPECT_EQ(on(0), "");
    bridge.setDiskInfo({});
    EXPECT_EQ(disks() + all() + on(1), "");
}

TEST_F(Inventory, ADiskWithoutPartitions_HasNoPartitionList)
{
    bridge.setDiskInfo({disk(2, {})});
    EXPECT_EQ(disks(), "2");
    EXPECT_EQ(on(2), "");
    // The caller's list is unchanged, so the entry is missing and not empty.
    std::vector<PartitionInfo> records(1);
    bridge.getPartitionInfo(records, 2);
    EXPECT_EQ(records.size(), 1u);
}

TEST_F(Inventory, ThePartitionCount_CountsUnallocatedRegions)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:"), part(0, ""), region(0, 1)})});
    std::vector<DiskInfo> records;
    bridge.getDiskInfo(records);
    EXPECT_EQ(records.at(0).partitionCount, 3);
}

TEST_F(Inventory, TheListsOfADisk_AreKeyedByTheFirstPartitionsOwnDiskIndex)
{
    bridge.setDiskInfo({disk(0, {part(7, "C:"), part(8, "D:")})});
    EXPECT_EQ(on(0), "");
    EXPECT_EQ(on(8), "");
    EXPECT_EQ(on(7), "7C:100 8D:100");
}

TEST_F(Inventory, OfTwoListsWithTheSameKey_TheEarlierStaysAndBothAreListed)
{
    bridge.setDiskInfo({disk(0, {part(5, "C:", 1)}), disk(1, {part(5, "D:", 2)})});
    EXPECT_EQ(on(5), "5C:1");
    EXPECT_EQ(all(), "5C:1 5D:2");
    EXPECT_EQ(sizeOf("D"), 2);
}

TEST_F(Inventory, GettersReplaceTheCallersValue)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:", 1)})});
    std::vector<DiskInfo> diskRecords(5);
    bridge.getDiskInfo(diskRecords);
    EXPECT_EQ(diskRecords.size(), 1u);
    std::vector<PartitionInfo> records(5);
    bridge.getAllPartitionInfo(records);
    EXPECT_EQ(records.size(), 1u);
    records.resize(5);
    bridge.getPartitionInfo(records, 0);
    EXPECT_EQ(records.size(), 1u);
    bridge.setDiskInfo({});
    bridge.getDiskInfo(diskRecords);
    bridge.getAllPartitionInfo(records);
    EXPECT_EQ(diskRecords.size() + records.size(), 0u);
}

TEST_F(Inventory, ALookupByLetter_TakesTheFirstByteInEitherCase)
{
    bridge.setDiskInfo({disk(0, {part(0, "c:", 5), part(0, "E", 6)})});
    for (const char* letter : {"c", "C", "C:", "c:\\Windows", "CD"})
        EXPECT_EQ(sizeOf(letter), 5) << letter;
    EXPECT_EQ(sizeOf("e"), 6);
    for (const char* letter : {"", "D", ":", " C"})
        EXPECT_EQ(sizeOf(letter), 0) << letter;
    PartitionInfo record;
    tools.GetPartitionInfo(record, "C");
    EXPECT_EQ(record.driveLetter, "c:");
}

TEST_F(Inventory, LettersAToZ_AndNoOtherBytes_AreFoundInEitherCase)
{
    bridge.setDiskInfo({disk(0, {part(0, "a:", 1), part(0, "Z", 2), part(0, "`", 3), part(0, "[", 4)})});
    for (const char* letter : {"a", "A"})
        EXPECT_EQ(sizeOf(letter), 1) << letter;
    for (const char* letter : {"z", "Z"})
        EXPECT_EQ(sizeOf(letter), 2) << letter;
    // The neighbours of a and z in ASCII do not have an upper-case form.
    EXPECT_EQ(sizeOf("`"), 3);
    EXPECT_EQ(sizeOf("@"), 0);
    EXPECT_EQ(sizeOf("{"), 0);
    EXPECT_EQ(sizeOf("["), 4);
    bridge.setDiskInfo({disk(0, {part(0, "A", 5), part(0, "z:", 6)})});
    EXPECT_EQ(sizeOf("a"), 5);
    EXPECT_EQ(sizeOf("Z"), 6);
}

TEST_F(Inventory, AnUnknownOrEmptyLetter_LeavesTheRecordAsItWas)
{
    PartitionInfo record;
    record.label = "kept";
    bridge.getPartitionInfo(record, "C");
    bridge.getPartitionInfo(record, "");
    EXPECT_EQ(record.label, "kept");
}

TEST_F(Inventory, EntriesWithoutALetterOrWithAnAsterisk_AreListedButNotFoundByLetter)
{
    bridge.setDiskInfo({disk(0, {part(0, "*", 5), part(0, "", 6), part(0, "**", 7)})});
    EXPECT_EQ(all(), "0*5 06 0**7");
    EXPECT_EQ(on(0), "0*5 06 0**7");
    // Exactly one asterisk marks a missing letter. Two are an ordinary string.
    EXPECT_EQ(sizeOf("*"), 7);
    bridge.setDiskInfo({disk(0, {part(0, "*", 9)})});
    EXPECT_EQ(sizeOf("*"), 7);
}

TEST_F(Inventory, ACharacterThatIsNotALetter_IsAKeyToo)
{
    bridge.setDiskInfo({disk(0, {part(0, "5", 1), part(0, "\xC3\x84:", 2)})});
    EXPECT_EQ(sizeOf("5"), 1);
    EXPECT_EQ(sizeOf("\xC3\x84"), 2);
    // Only the first byte counts, and these two letters share it.
    EXPECT_EQ(sizeOf("\xC3\x96"), 2);
    EXPECT_EQ(bridge.getPartitionSize("5x"), 1);
}

TEST_F(Inventory, OfTwoPartitionsWithOneLetter_TheLaterIsFound)
{
    bridge.setDiskInfo({disk(0, {part(0, "E:", 1)}), disk(1, {part(1, "e:", 2)})});
    EXPECT_EQ(sizeOf("E"), 2);
}

TEST_F(Inventory, ARemovedLetter_KeepsItsRecordUntilTheLetterIsReused)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:", 1), part(0, "E:", 2)})});
    bridge.setDiskInfo({disk(0, {part(0, "C:", 3)})});
    EXPECT_EQ(all(), "0C:3");
    EXPECT_EQ(sizeOf("E"), 2);
    EXPECT_EQ(bridge.getPartitionSize("E"), 2);
    EXPECT_EQ(sizeOf("C"), 3);
    bridge.setDiskInfo({});
    EXPECT_EQ(sizeOf("C"), 3);
    bridge.setDiskInfo({disk(4, {part(4, "E:", 9)})});
    EXPECT_EQ(sizeOf("E"), 9);
}

TEST_F(Inventory, PartitionSize_IsTheCapacityOrZero)
{
    bridge.setDiskInfo({disk(0, {part(0, "S:", 8 * kGiga)})});
    for (const char* letter : {"S", "s", "s:", "sX"})
        EXPECT_EQ(bridge.getPartitionSize(letter), 8 * kGiga) << letter;
    EXPECT_EQ(bridge.getPartitionSize(""), 0);
    EXPECT_EQ(bridge.getPartitionSize("D"), 0);
    // The whole string is converted to upper case, which makes two of this letter.
    EXPECT_EQ(bridge.getPartitionSize("\xC3\x9F"), 8 * kGiga);
}

TEST_F(Inventory, OneUnallocatedPartition_IsTheFirstThatIsLargeEnoughCountedAmongTheRegions)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:", 90 * kGiga), region(0, kGiga), part(0, "D:", 9),
                                 region(0, 5 * kGiga), region(0, 5 * kGiga), region(0, 3 * kGiga)}),
                        disk(1, {part(1, "E:", 5)}), disk(2, {region(2, 10)})});
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, 0), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, -5), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, kGiga), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, kGiga + 1), 1);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, 2 * kGiga), 1);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, 5 * kGiga), 1);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(0, 5 * kGiga + 1), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(1, 1), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(2, 11), 0);
    EXPECT_EQ(bridge.findOneUnallocatedPartition(99, 1), 0);
}

TEST_F(Inventory, ParsePartitionInfo_AddsOneDisksPartitions)
{
    bridge.setDiskInfo({disk(0, {part(0, "C:", 1)})});
    bridge.parsePartitionInfo({part(1, "D:", 2), region(1, 3)});
    EXPECT_EQ(disks(), "0");
    EXPECT_EQ(all(), "0C:1 1D:2 13");
    EXPECT_EQ(on(1), "1D:2 13");
    EXPECT_EQ(sizeOf("D"), 2);
    bridge.parsePartitionInfo({part(0, "C:", 7)});
    EXPECT_EQ(on(0), "0C:1");
    EXPECT_EQ(sizeOf("C"), 7);
    bridge.parsePartitionInfo({});
    EXPECT_EQ(all(), "0C:1 1D:2 13 0C:7");
}

// Large inventories are read in another way, eight maps at a time.
TEST_F(Inventory, ThousandPartitions_AreListedInOrderWithEntriesThatAreNoMaps)
{
    QVariantList disks;
    QVariantList entries;
    QStringList expected;
    for (int index = 0; index < 100; ++index) {
        QVariantList partitions;
        for (int i = 0; i < 10; ++i) {
            if ((index + i) % 7 == 0)
                partitions.append(i % 2 == 0 ? QVariant() : QVariant("no map"));
            else if ((index + i) % 7 == 1)
                partitions.append(QVariantMap());
            else
                partitions.append(part(index, "", 1 + i));
            expected << ((index + i) % 7 <= 1 ? QStringLiteral("00")
                                              : QString::number(index) + QString::number(1 + i));
        }
        disks.append(disk(index, partitions));
        entries += partitions;
    }
    bridge.setDiskInfo(disks);
    EXPECT_EQ(all().split(' '), expected);
    bridge.parsePartitionInfo(disks.at(3).toMap().value("partitions").toList());
    EXPECT_EQ(all().split(' '), expected + expected.mid(30, 10));
    bridge.setDiskInfo({});
    bridge.parsePartitionInfo(entries);
    EXPECT_EQ(all().split(' '), expected);
}

} // namespace
