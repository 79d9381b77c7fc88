// The two record tables: the field of each key of the host's maps, and its conversion.
#include "bridge/AIBridge.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace {

constexpr qlonglong kMin = std::numeric_limits<qlonglong>::min();
constexpr qlonglong kMax = std::numeric_limits<qlonglong>::max();

template <class Record> QStringList fieldsOf(const Record& record)
{
    std::ostringstream text;
    text << record;
    return QString::fromStdString(text.str()).section('(', 1).chopped(1).split(", ");
}

// The fields in which a record differs from that of an empty map.
template <class Record> QString changed(const Record& record, const Record& empty)
{
    const QStringList ours = fieldsOf(record);
    const QStringList theirs = fieldsOf(empty);
    QStringList differing;
    for (int i = 0; i < ours.size(); ++i) {
        if (ours[i] != theirs.value(i))
            differing << ours[i];
    }
    return differing.join(", ");
}

DiskInfo disk(const QVariant& entry)
{
    AIBridge bridge;
    bridge.setDiskInfo({entry});
    std::vector<DiskInfo> disks;
    bridge.getDiskInfo(disks);
    return disks.at(0);
}

PartitionInfo partition(const QVariant& entry)
{
    AIBridge bridge;
    bridge.setDiskInfo({QVariantMap{{"partitions", QVariantList{entry}}}});
    std::vector<PartitionInfo> partitions;
    bridge.getAllPartitionInfo(partitions);
    return partitions.at(0);
}

QString diskChange(const QVariantMap& map)
{
    return changed(disk(map), disk(QVariantMap()));
}

QString partitionChange(const QVariantMap& map)
{
    return changed(partition(map), partition(QVariantMap()));
}

struct KeyRow
{
    const char* key;
    QVariant value;
    const char* fields;
};

TEST(DiskFields, OfAnEmptyMap_AreTheDefaultsAndTheirDerivedValues)
{
    EXPECT_EQ(
        fieldsOf(disk(QVariantMap())).join(' ').toStdString(),
        "diskLabel= diskIndex=0 partitionCount=0 totalCapacity=0 displayTotalCapacity=0 Byte usedSize=0 "
        "displayUsedSize=0 Byte availableSpace=0 displayAvailableSpace=0 Byte isUninitialized=0 isGpt=0 "
        "isMbr=1 "
        "isStorageSpace=0 isDynamic=0 isReadOnly=0 isOffline=0 isBadDisk=0 isWriteProtected=0 isRemovable=0 "
        "isVhd=0 "
        "isVmd=0 isVirtualDisk=0 isUsb=0 isSsd=0 existsBitLocker=0 isLowSpace=0 not4kAligned=0 "
        "emptyPartitionCount=0 "
        "serialNumber=");
}

TEST(DiskFields, EachKey_ChangesItsFieldsAndNoOthers)
{
    const QVariantList three{QVariantMap(), QVariantMap{{"unallocated", true}}, QVariantMap()};
    const KeyRow rows[] = {
        {"diskInterface", "NVMe", "diskLabel=NVMe"},
        {"diskIndex", 7, "diskIndex=7"},
        {"partitions", three, "partitionCount=3"},
        {"size", 1536,
         "totalCapacity=1536, displayTotalCapacity=1.50 KB, availableSpace=1536, displayAvailableSpace=1.50 "
         "KB"},
        {"usedSize", 1536, "usedSize=1536, displayUsedSize=1.50 KB, availableSpace=-1536"},
        {"isUnInitialize", true, "isUninitialized=1"},
        {"isGPT", true, "isGpt=1, isMbr=0"},
        {"isStorageSpace", true, "isStorageSpace=1"},
        {"isDynamic", true, "isDynamic=1"},
        {"readonly", true, "isReadOnly=1"},
        {"isOffline", true, "isOffline=1"},
        {"isBad", true, "isBadDisk=1"},
        {"isProtected", true, "isWriteProtected=1"},
        {"isRemoveUsb", true, "isRemovable=1"},
        {"isVHD", true, "isVhd=1"},
        {"isVMD", true, "isVmd=1"},
        {"isVirtualDisk", true, "isVirtualDisk=1"},
        {"isUSB", true, "isUsb=1"},
        {"isSSD", true, "isSsd=1"},
        {"bltState", 1, "existsBitLocker=1"},
        {"bltState", 9, "existsBitLocker=1"},
        {"bltState", -1, "existsBitLocker=1"},
        {"bltState", 0, ""},
        {"isLowSpace", true, "isLowSpace=1"},
        {"emptyPartitionCount", 4, "emptyPartitionCount=4"},
        {"serialNO", " S/N 5 ", "serialNumber= S/N 5 "},
        // Keys of partitions and keys with the names of fields are ignored here.
        {"isRemovable", true, ""},
        {"not4kAligned", true, ""},
        {"isMbr", false, ""},
        {"diskLabel", "x", ""},
        {"isReadOnly", true, ""},
    };
    for (const KeyRow& row : rows)
        EXPECT_EQ(diskChange({{row.key, row.value}}).toStdString(), row.fields) << row.key;
}

TEST(DiskFields, FreeSpace_IsTheDifferenceAndMayBeNegative)
{
    EXPECT_EQ(disk(QVariantMap{{"size", 4096}, {"usedSize", 1024}}).displayAvailableSpace, "3.00 KB");
    const DiskInfo over = disk(QVariantMap{{"size", 10}, {"usedSize", 11}});
    EXPECT_EQ(over.availableSpace, -1);
    EXPECT_EQ(over.displayAvailableSpace, "0 Byte");
    EXPECT_EQ(disk(QVariantMap{{"size", kMin}, {"usedSize", 1}}).availableSpace, kMax);
}

TEST(DiskFields, SizesBeyond32Bits_AreNotTruncated)
{
    const DiskInfo record = disk(QVariantMap{{"size", 18000207937536LL}, {"usedSize", 4294967297LL}});
    EXPECT_EQ(record.totalCapacity, 18000207937536);
    EXPECT_EQ(record.displayTotalCapacity, "16.37 TB");
    EXPECT_EQ(record.usedSize, 4294967297);
    EXPECT_EQ(record.displayUsedSize, "4.00 GB");
    EXPECT_EQ(record.availableSpace, 17995912970239);
    EXPECT_EQ(record.displayAvailableSpace, "16.37 TB");
}

TEST(PartitionFields, OfAnEmptyMap_AreTheDefaultsAndTheirDerivedValues)
{
    EXPECT_EQ(
        fieldsOf(partition(QVariantMap())).join(' ').toStdString(),
        "isUnallocated=0 diskIndex=0 partitionIndex=0 rawCapacity=0 displayRawCapacity=0 Byte "
        "dynamicVolumeSize=0 "
        "displayDynamicVolumeSize=0 Byte usedSize=0 displayUsedSize=0 Byte freeSize=0 displayFreeSize=0 Byte "
        "startingOffset=0 sectorSize=0 clusterSize=0 dbrStartSector=0 startSector=0 endSector=0 "
        "isUnformatted=0 "
        "isRawPartition=0 isBitlockerEncrypted=0 isReadOnly=0 isHidden=0 isActive=0 "
        "isCurrentSystemPartition=0 "
        "isCurrentBootPartition=0 isBootPartitionContainer=0 isPrimary=0 isLogical=1 isGpt=0 isMbr=1 "
        "isStorageSpace=0 "
        "isDynamic=0 isRemovable=0 isBadPartition=0 requiresSectorBySector=0 isOfflineBootPartition=0 "
        "isLowSpace=0 "
        "gptReserved=0 gptEfi=0 gptRecovery=0 partitionGuid= bitlockerState=unencrypted driveLetter= label= "
        "fileSystemType= dynamicVolumeType=TYPE_UNKNOWN");
}

TEST(PartitionFields, EachKey_ChangesItsFieldsAndNoOthers)
{
    const KeyRow rows[] = {
        {"unallocated", true, "isUnallocated=1"},
        {"diskIndex", 7, "diskIndex=7"},
        {"partitionIndex", 8, "partitionIndex=8"},
        {"size", 1536,
         "rawCapacity=1536, displayRawCapacity=1.50 KB, freeSize=1536, displayFreeSize=1.50 KB"},
        {"volumeSize", 1536, "dynamicVolumeSize=1536, displayDynamicVolumeSize=1.50 KB"},
        {"usedSize", 1536, "usedSize=1536, displayUsedSize=1.50 KB, freeSize=-1536"},
        {"sectorSize", 512, "sectorSize=512"},
        {"clusterSize", 8, ""},
        {"dbrStartSector", 63, "dbrStartSector=63"},
        {"startSector", 2048, "startSector=2048"},
        {"endSector", 5000000000LL, "endSector=5000000000"},
        {"isUnformattedType", true, "isUnformatted=1"},
        {"isBitLocker", true, "isBitlockerEncrypted=1"},
        {"readonly", true, "isReadOnly=1"},
        {"isHidden", true, "isHidden=1"},
        {"isActive", true, "isActive=1"},
        {"isSystem", true, "isCurrentSystemPartition=1"},
        {"isBoot", true, "isBootPartitionContainer=1"},
        {"isPrimary", true, "isPrimary=1, isLogical=0"},
        {"isGPT", true, "isGpt=1, isMbr=0"},
        {"isStorageSpace", true, "isStorageSpace=1"},
        {"isDynamic", true, "isDynamic=1"},
        {"isRemovable", true, "isRemovable=1"},
        {"isBad", true, "isBadPartition=1"},
        {"isNeedSectorBySector", true, "requiresSectorBySector=1"},
        {"isOfflineBoot", true, "isOfflineBootPartition=1"},
        {"isLowSpace", true, "isLowSpace=1"},
        {"gptReserved", true, "gptReserved=1"},
        {"gptEFI", true, "gptEfi=1"},
        {"gptRecovery", true, "gptRecovery=1"},
        {"partGUID", "{a-B}", "partitionGuid={a-B}"},
        {"driveLetter", "e:\\x", "driveLetter=e:\\x"},
        {"driveLetter", "*", "driveLetter=*"},
        {"label", " Data ", "label= Data "},
        {"fsString", "NTFS", "fileSystemType=NTFS"},
        {"isRawPartition", true, ""},
        {"isLogical", false, ""},
        {"isRemoveUsb", true, ""},
        {"freeSize", 5, ""},
    };
    for (const KeyRow& row : rows)
        EXPECT_EQ(partitionChange({{row.key, row.value}}).toStdString(), row.fields) << row.key;
}

// Maps with all known keys, and unknown keys before, between and after them.
TEST(WholeMaps, AreReadKeyByKeyAndUnknownKeysAreIgnored)
{
    QVariantMap map{{"diskInterface", "SATA"},
                    {"diskIndex", 2},
                    {"size", 4096},
                    {"usedSize", 1024},
                    {"isGPT", true},
                    {"isSSD", true},
                    {"readonly", true},
                    {"bltState", 2},
                    {"emptyPartitionCount", 1},
                    {"serialNO", "S"},
                    {"isUnInitialize", true},
                    {"isVirtualDisk", true},
                    {"isVMD", true}};
    const QString plain = diskChange(map);
    EXPECT_EQ(
        plain,
        "diskLabel=SATA, diskIndex=2, totalCapacity=4096, displayTotalCapacity=4.00 KB, usedSize=1024, "
        "displayUsedSize=1.00 KB, availableSpace=3072, displayAvailableSpace=3.00 KB, isUninitialized=1, "
        "isGpt=1, "
        "isMbr=0, isReadOnly=1, isVmd=1, isVirtualDisk=1, isSsd=1, existsBitLocker=1, emptyPartitionCount=1, "
        "serialNumber=S");
    for (const char* strange :
         {"", "A", "diskIndex2", "diskIndey", "isGPT ", "isgpt", "isZZZ", "si", "sizes", "zzz"})
        map[strange] = 77;
    EXPECT_EQ(diskChange(map), plain);
    map = {{"diskIndex", 1},      {"driveLetter", "E:"}, {"sectorSize", 512}, {"startSector", 2048},
           {"clusterSize", 8},    {"isPrimary", true},   {"bltState", 1},     {"dynamicVolumeType", 2},
           {"unallocated", true}, {"volumeSize", 1024},  {"gptEFI", true},    {"fsString", "exFAT"},
           {"label", "L"},        {"partGUID", "G"}};
    const QString partitionPlain = partitionChange(map);
    EXPECT_EQ(partitionPlain,
              "isUnallocated=1, diskIndex=1, dynamicVolumeSize=1024, displayDynamicVolumeSize=1.00 KB, "
              "startingOffset=1048576, sectorSize=512, clusterSize=4096, startSector=2048, isPrimary=1, "
              "isLogical=0, gptEfi=1, partitionGuid=G, bitlockerState=encrypted, driveLetter=E:, label=L, "
              "fileSystemType=exFAT, dynamicVolumeType=SIMPLE");
    for (const char* strange : {"", "A", "driveLetter2", "gptEFJ", "labels", "pa", "unalloc", "zzz"})
        map[strange] = 77;
    EXPECT_EQ(partitionChange(map), partitionPlain);
}

TEST(PartitionFields, TheBitLockerState_IsAWordForZeroToThreeAndElseEmpty)
{
    const std::pair<int, const char*> states[] = {{0, "unencrypted"},
                                                  {1, "encrypted"},
                                                  {2, "encryption unlocked"},
                                                  {3, "encryption not unlocked"},
                                                  {4, ""},
                                                  {9, ""},
                                                  {-1, ""},
                                                  {std::numeric_limits<int>::min(), ""}};
    for (const auto& [value, text] : states)
        EXPECT_EQ(partition(QVariantMap{{"bltState", value}}).bitlockerState, text) << value;
}

TEST(PartitionFields, TheVolumeType_IsAWordForZeroToSevenAndElseEmpty)
{
    const std::pair<int, const char*> types[] = {
        {0, "TYPE_UNKNOWN"}, {1, "BASIC"},     {2, "SIMPLE"}, {3, "SPAN"}, {4, "STRIPE"}, {5, "MIRROR"},
        {6, "RAID"},         {7, "SIMPLE_EX"}, {8, ""},       {-1, ""},    {1000000, ""}};
    for (const auto& [value, text] : types)
        EXPECT_EQ(partition(QVariantMap{{"dynamicVolumeType", value}}).dynamicVolumeType, text) << value;
}

TEST(PartitionFields, SectorsBecomeBytes_WhereTheFieldIsInBytes)
{
    const PartitionInfo record = partition(QVariantMap{{"startSector", 4294967296LL},
                                                       {"endSector", 4294967299LL},
                                                       {"sectorSize", 4096},
                                                       {"clusterSize", 16},
                                                       {"dbrStartSector", 5}});
    EXPECT_EQ(record.startingOffset, 17592186044416);
    EXPECT_EQ(record.clusterSize, 65536);
    EXPECT_EQ(record.startSector, 4294967296);
    EXPECT_EQ(record.endSector, 4294967299);
    EXPECT_EQ(record.dbrStartSector, 5);
}

TEST(PartitionFields, SizesAndSectorsBeyond32Bits_AreNotTruncated)
{
    const PartitionInfo record = partition(QVariantMap{{"size", 18000207937536LL},
                                                       {"volumeSize", 6442450945LL},
                                                       {"usedSize", 4294967297LL},
                                                       {"dbrStartSector", 4294967301LL}});
    EXPECT_EQ(record.rawCapacity, 18000207937536);
    EXPECT_EQ(record.dynamicVolumeSize, 6442450945);
    EXPECT_EQ(record.usedSize, 4294967297);
    EXPECT_EQ(record.freeSize, 17995912970239);
    EXPECT_EQ(record.dbrStartSector, 4294967301);
}

TEST(PartitionFields, TheSectorSizeOfTheOffset_IsUnsignedAndNotCutTo32Bits)
{
    const auto offset = [](qlonglong start, const QVariant& sectorSize) {
        return partition(QVariantMap{{"startSector", start}, {"sectorSize", sectorSize}}).startingOffset;
    };
    EXPECT_EQ(offset(3, 4294967295U), 12884901885);
    EXPECT_EQ(offset(2, 4294967296ULL), 8589934592);
    // A string above the signed range converts only to an unsigned number.
    EXPECT_EQ(offset(5, "18446744073709551615"), -5);
}

TEST(PartitionFields, ProductsAndDifferencesThatOverflow_WrapAround)
{
    EXPECT_EQ(
        partition(QVariantMap{{"startSector", 36028797018963968LL}, {"sectorSize", 512}}).startingOffset, 0);
    EXPECT_EQ(
        partition(QVariantMap{{"startSector", 36028797018963969LL}, {"sectorSize", 512}}).startingOffset,
        512);
    EXPECT_EQ(partition(QVariantMap{{"startSector", 5}, {"sectorSize", -1}}).startingOffset, -5);
    EXPECT_EQ(partition(QVariantMap{{"clusterSize", 65536}, {"sectorSize", 65537}}).clusterSize, 65536);
    EXPECT_EQ(partition(QVariantMap{{"size", kMin}, {"usedSize", 1}}).freeSize, kMax);
}

TEST(Conversions, NumericStringsAreRead_AndOtherStringsAreZero)
{
    EXPECT_EQ(diskChange({{"size", "1536"}}).section(',', 0, 0), "totalCapacity=1536");
    EXPECT_EQ(diskChange({{"diskIndex", "12"}}), "diskIndex=12");
    EXPECT_EQ(diskChange({{"diskIndex", "twelve"}}), "");
    EXPECT_EQ(partition(QVariantMap{{"startSector", "2048"}, {"sectorSize", "512"}}).startingOffset, 1048576);
    EXPECT_EQ(partition(QVariantMap{{"bltState", "3"}}).bitlockerState, "encryption not unlocked");
    EXPECT_EQ(diskChange({{"size", 8e12}}).section(',', 0, 0), "totalCapacity=8000000000000");
    EXPECT_EQ(diskChange({{"size", std::numeric_limits<qulonglong>::max()}}).section(',', 0, 0),
              "totalCapacity=-1");
}

TEST(Conversions, OtherTypesAreConverted)
{
    EXPECT_EQ(diskChange({{"isGPT", 2}}), "isGpt=1, isMbr=0");
    EXPECT_EQ(diskChange({{"isGPT", "true"}}), "isGpt=1, isMbr=0");
    EXPECT_EQ(diskChange({{"isGPT", "false"}}), "");
    EXPECT_EQ(diskChange({{"isGPT", "0"}}), "");
    EXPECT_EQ(diskChange({{"serialNO", 55}}), "serialNumber=55");
    EXPECT_EQ(diskChange({{"diskInterface", QVariantList{1}}}), "");
    EXPECT_EQ(diskChange({{"size", QVariantMap()}, {"isUSB", QVariantList{true}}, {"diskIndex", QVariant()}}),
              "");
    EXPECT_EQ(diskChange({{"partitions", 3}}), "");
    EXPECT_EQ(diskChange({{"partitions", QVariantMap{{"a", 1}}}}), "");
    EXPECT_EQ(diskChange({{"partitions", QStringList{"a", "b"}}}), "partitionCount=2");
    EXPECT_EQ(disk(QVariantMap{{"serialNO", QString::fromUtf8("Z\xC3\xBC\xE2\x82\xAC")}}).serialNumber,
              "Z\xC3\xBC\xE2\x82\xAC");
}

TEST(Conversions, AnEntryThatIsNotAMap_IsReadAsAnEmptyMap)
{
    for (const QVariant& entry : {QVariant(), QVariant(5), QVariant("text"), QVariant(QVariantList{1, 2})}) {
        EXPECT_EQ(changed(disk(entry), disk(QVariantMap())), "");
        EXPECT_EQ(changed(partition(entry), partition(QVariantMap())), "");
    }
}

TEST(CurrentBootPartition, IsTheOneWithTheSystemDirectorysLetterInEitherCase)
{
    FakePlatform platform;
    const Platform::Scope scope(platform);
    const auto isBoot = [](const char* letter) {
        return partition(QVariantMap{{"driveLetter", QString::fromUtf8(letter)}}).isCurrentBootPartition;
    };
    platform.directory = "d:\\windows";
    for (const char* letter : {"D", "d", "D:", "d:\\"})
        EXPECT_TRUE(isBoot(letter)) << letter;
    for (const char* letter : {"", "C", " D", "*", "ED"})
        EXPECT_FALSE(isBoot(letter)) << letter;
    platform.directory = "S:\\";
    // The letter is converted to upper case first, which makes two of this one.
    EXPECT_TRUE(isBoot("\xC3\x9F"));
    platform.directory = "";
    EXPECT_FALSE(isBoot("C"));
    EXPECT_FALSE(isBoot(""));
}

} // namespace
