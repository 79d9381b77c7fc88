// Each argument of each method and each field of each record from raw bytes: its id, its type code, its
// place, and what becomes of it under any other type code.
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"

#include <thrift/transport/TBufferTransports.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <mutex>
#include <sstream>

namespace {

using wire::Fields;
using wire::Type;
using Text = const std::string&;

struct Argument
{
    int id;
    Type type;
};

struct Method
{
    const char* name;
    std::vector<Argument> arguments;
};

const std::vector<Method> kMethods{
    {"Init", {}},
    {"PostProcessing", {{1, wire::String}}},
    {"PreProcessing", {{1, wire::String}}},
    {"ShowBitLockerStatus", {{1, wire::String}}},
    {"RetrieveBitLockerRecoveryKey", {{1, wire::String}}},
    {"CreateBootableISO", {}},
    {"CreateBootableUsbByDisk", {{1, wire::I32}}},
    {"CreateBootableUsbByDriveLetter", {{1, wire::String}}},
    {"InstallAndEnablePreOS", {}},
    {"DisablePreOS", {}},
    {"CreateWindowsInstallerMedia", {}},
    {"CloneOSDataFromCurrent", {{1, wire::I32}}},
    {"CloneOSDataFromDisk", {{1, wire::I32}, {2, wire::I32}}},
    {"CloneOSDataFromPartition", {{1, wire::I32}, {2, wire::String}}},
    {"CloneDiskToDisk", {{1, wire::I32}, {2, wire::I32}}},
    {"ClonePartitionToPartition", {{1, wire::String}, {2, wire::String}}},
    {"ClonePartitionToDisk", {{1, wire::String}, {2, wire::I32}}},
    {"ConvertDiskToGpt", {{1, wire::I32}}},
    {"ConvertDiskToMbr", {{1, wire::I32}}},
    {"ConvertDiskToDynamic", {{1, wire::I32}}},
    {"ConvertDiskToBasic", {{1, wire::I32}}},
    {"ConvertPartitionToPrimary", {{1, wire::String}}},
    {"ConvertPartitionToLogical", {{1, wire::String}}},
    {"ConvertPartitionToFat", {{1, wire::String}}},
    {"ConvertPartitionToExfat", {{1, wire::String}}},
    {"ConvertPartitionToNtfs", {{1, wire::String}}},
    {"ListAllDisks", {}},
    {"ListPartitionsOnDisk", {{1, wire::I32}}},
    {"GetPartitionInfo", {{1, wire::String}}},
    {"GetAllPartitionInfo", {}},
    {"SmartSpaceAdjustment", {{1, wire::String}}},
    {"OpenPartitionLayoutEditor", {{1, wire::String}}},
    {"OpenDiskLayoutEditor", {{1, wire::I32}}},
    {"DeleteAllPartitions", {{1, wire::I32}}},
    {"InitializeDiskToGpt", {{1, wire::I32}}},
    {"InitializeDiskToMbr", {{1, wire::I32}}},
    {"WipeDisk", {{1, wire::I32}, {2, wire::I32}}},
    {"FormatPartition",
     {{1, wire::String}, {2, wire::String}, {3, wire::String}, {4, wire::I32}, {5, wire::Bool}}},
    {"DeletePartition", {{1, wire::String}}},
    {"SplitPartition", {{1, wire::String}, {2, wire::I64}, {3, wire::String}, {4, wire::String}}},
    {"CreatePartition",
     {{1, wire::I32}, {2, wire::I64}, {3, wire::String}, {4, wire::String}, {5, wire::I32}}},
    {"MergePartitions", {{1, wire::String}, {2, wire::String}}},
    {"ResizePartition", {{1, wire::String}, {2, wire::I64}}},
    {"ResizePartitionRelative", {{1, wire::String}, {2, wire::I64}}},
    {"AllocateSpaceFromPartitionToNewPartition",
     {{1, wire::String}, {2, wire::I64}, {3, wire::String}, {4, wire::String}}},
    {"AllocateSpaceFromPartitionToPartition", {{1, wire::String}, {2, wire::String}, {3, wire::I64}}},
    {"WipePartition", {{1, wire::String}, {2, wire::I32}}},
    {"ChangePartitionClusterSize", {{1, wire::String}, {2, wire::I32}}},
    {"ChangePartitionDriveLetter", {{1, wire::String}, {2, wire::String}}},
    {"ChangePartitionLabel", {{1, wire::String}, {2, wire::String}}},
    {"SetPartitionHidden", {{1, wire::String}}},
    {"SetPartitionActive", {{1, wire::String}}},
    {"CheckPartitionFileSystem", {{1, wire::String}}},
    {"AutoCreatePartitions", {{1, wire::I32}, {2, wire::I32}, {3, wire::String}}},
    {"DiskBringOnline", {{1, wire::I32}}},
    {"EjectUsb", {{1, wire::String}}},
    {"DiskHealthCheck", {{1, wire::I32}}},
    {"MigrateSystemDriveData", {}},
    {"LowLevelFormat", {{1, wire::I32}}},
    {"RecoverLostPartition", {{1, wire::I32}}},
    {"RepairRawOrDamagedPartition", {{1, wire::String}}},
    {"ScanDiskBadSectors", {{1, wire::I32}}},
    {"ScanPartitionBadSectors", {{1, wire::String}}},
    {"RebuildMbr", {{1, wire::I32}}},
    {"ToggleWriteProtection", {{1, wire::String}}},
    {"AlignDiskTo4k", {{1, wire::I32}}},
    {"RepairWindowsBoot", {}},
    {"PasswordReset", {}},
    {"Windows11UpgradeCheck", {}},
};

// The value of every 64-bit field and argument is this base plus the id.
const std::vector<std::int64_t> kBigBases{
    std::int64_t(1) << 31,
    std::int64_t(1) << 32,
    std::int64_t(5) << 40,
    std::numeric_limits<std::int64_t>::max() - 100,
    std::numeric_limits<std::int64_t>::min() + 100,
    -(std::int64_t(1) << 31) - 200,
};

std::int32_t numberOf(int id)
{
    return 70000 + id;
}

std::string textOf(int id)
{
    return "text " + std::to_string(id);
}

// The bytes of a value under each type code of the protocol.
std::string valueBytes(int type, int id, std::int64_t bigBase)
{
    constexpr int byte = 3;
    constexpr int real = 4;
    constexpr int i16 = 6;
    constexpr int map = 13;
    switch (type) {
    case wire::Bool:
    case byte:
        return "\1";
    case i16:
        return "\1\1";
    case wire::I32:
        return wire::i32(numberOf(id));
    case wire::I64:
    case real:
        return wire::i64(bigBase + id);
    case wire::String:
        return wire::text(textOf(id));
    case wire::Struct:
        return Fields().number(id, 5).end();
    case map:
        return std::string{char(wire::I32), char(wire::I32)} + wire::i32(1) + wire::i32(7) + wire::i32(7);
    default: // list and set
        return std::string(1, char(wire::I32)) + wire::i32(2) + wire::i32(7) + wire::i32(7);
    }
}

const std::vector<int> kTypeCodes{2, 3, 4, 6, 8, 10, 11, 12, 13, 14, 15};

// The value, or the default of its type, as the handler below prints it.
std::string printedValue(const Argument& argument, std::int64_t bigBase)
{
    switch (argument.type) {
    case wire::Bool:
        return "1";
    case wire::I32:
        return std::to_string(numberOf(argument.id));
    case wire::I64:
        return std::to_string(bigBase + argument.id);
    default:
        return textOf(argument.id);
    }
}

std::string printedDefault(const Argument& argument)
{
    return argument.type == wire::String ? "" : "0";
}

// Prints the method and its arguments in the order of the operation's parameters.
class EchoHandler : public ZORNativePluginNull
{
public:
    bool Init() override
    {
        note("Init");
        return true;
    }
    bool PostProcessing(Text a) override
    {
        note("PostProcessing", a);
        return true;
    }
    void PreProcessing(TaskInfo& out, Text a) override
    {
        note("PreProcessing", a);
        out = task;
    }
    void ListAllDisks(std::vector<DiskInfo>& out) override
    {
        note("ListAllDisks");
        out = {disk, DiskInfo()};
    }
    void ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t a) override
    {
        note("ListPartitionsOnDisk", a);
        out = {partition};
    }
    void GetPartitionInfo(PartitionInfo& out, Text a) override
    {
        note("GetPartitionInfo", a);
        out = partition;
    }
    void GetAllPartitionInfo(std::vector<PartitionInfo>& out) override
    {
        note("GetAllPartitionInfo");
        out = {PartitionInfo(), partition};
    }
    void ShowBitLockerStatus(std::string& out, Text a) override { out = note("ShowBitLockerStatus", a); }
    void RetrieveBitLockerRecoveryKey(std::string& out, Text a) override
    {
        out = note("RetrieveBitLockerRecoveryKey", a);
    }
    void CreateBootableUsbByDriveLetter(std::string& out, Text a) override
    {
        out = note("CreateBootableUsbByDriveLetter", a);
    }
    void ConvertPartitionToPrimary(std::string& out, Text a) override
    {
        out = note("ConvertPartitionToPrimary", a);
    }
    void ConvertPartitionToLogical(std::string& out, Text a) override
    {
        out = note("ConvertPartitionToLogical", a);
    }
    void ConvertPartitionToFat(std::string& out, Text a) override { out = note("ConvertPartitionToFat", a); }
    void ConvertPartitionToExfat(std::string& out, Text a) override
    {
        out = note("ConvertPartitionToExfat", a);
    }
    void ConvertPartitionToNtfs(std::string& out, Text a) override
    {
        out = note("ConvertPartitionToNtfs", a);
    }
    void SmartSpaceAdjustment(std::string& out, Text a) override { out = note("SmartSpaceAdjustment", a); }
    void OpenPartitionLayoutEditor(std::string& out, Text a) override
    {
        out = note("OpenPartitionLayoutEditor", a);
    }
    void DeletePartition(std::string& out, Text a) override { out = note("DeletePartition", a); }
    void SetPartitionHidden(std::string& out, Text a) override { out = note("SetPartitionHidden", a); }
    void SetPartitionActive(std::string& out, Text a) override { out = note("SetPartitionActive", a); }
    void CheckPartitionFileSystem(std::string& out, Text a) override
    {
        out = note("CheckPartitionFileSystem", a);
    }
    void EjectUsb(std::string& out, Text a) override { out = note("EjectUsb", a); }
    void RepairRawOrDamagedPartition(std::string& out, Text a) override
    {
        out = note("RepairRawOrDamagedPartition", a);
    }
    void ScanPartitionBadSectors(std::string& out, Text a) override
    {
        out = note("ScanPartitionBadSectors", a);
    }
    void ToggleWriteProtection(std::string& out, Text a) override { out = note("ToggleWriteProtection", a); }
    void CreateBootableISO(std::string& out) override { out = note("CreateBootableISO"); }
    void InstallAndEnablePreOS(std::string& out) override { out = note("InstallAndEnablePreOS"); }
    void DisablePreOS(std::string& out) override { out = note("DisablePreOS"); }
    void CreateWindowsInstallerMedia(std::string& out) override { out = note("CreateWindowsInstallerMedia"); }
    void MigrateSystemDriveData(std::string& out) override { out = note("MigrateSystemDriveData"); }
    void RepairWindowsBoot(std::string& out) override { out = note("RepairWindowsBoot"); }
    void PasswordReset(std::string& out) override { out = note("PasswordReset"); }
    void Windows11UpgradeCheck(std::string& out) override { out = note("Windows11UpgradeCheck"); }
    void CreateBootableUsbByDisk(std::string& out, int32_t a) override
    {
        out = note("CreateBootableUsbByDisk", a);
    }
    void CloneOSDataFromCurrent(std::string& out, int32_t a) override
    {
        out = note("CloneOSDataFromCurrent", a);
    }
    void ConvertDiskToGpt(std::string& out, int32_t a) override { out = note("ConvertDiskToGpt", a); }
    void ConvertDiskToMbr(std::string& out, int32_t a) override { out = note("ConvertDiskToMbr", a); }
    void ConvertDiskToDynamic(std::string& out, int32_t a) override { out = note("ConvertDiskToDynamic", a); }
    void ConvertDiskToBasic(std::string& out, int32_t a) override { out = note("ConvertDiskToBasic", a); }
    void OpenDiskLayoutEditor(std::string& out, int32_t a) override { out = note("OpenDiskLayoutEditor", a); }
    void DeleteAllPartitions(std::string& out, int32_t a) override { out = note("DeleteAllPartitions", a); }
    void InitializeDiskToGpt(std::string& out, int32_t a) override { out = note("InitializeDiskToGpt", a); }
    void InitializeDiskToMbr(std::string& out, int32_t a) override { out = note("InitializeDiskToMbr", a); }
    void DiskBringOnline(std::string& out, int32_t a) override { out = note("DiskBringOnline", a); }
    void DiskHealthCheck(std::string& out, int32_t a) override { out = note("DiskHealthCheck", a); }
    void LowLevelFormat(std::string& out, int32_t a) override { out = note("LowLevelFormat", a); }
    void RecoverLostPartition(std::string& out, int32_t a) override { out = note("RecoverLostPartition", a); }
    void ScanDiskBadSectors(std::string& out, int32_t a) override { out = note("ScanDiskBadSectors", a); }
    void RebuildMbr(std::string& out, int32_t a) override { out = note("RebuildMbr", a); }
    void AlignDiskTo4k(std::string& out, int32_t a) override { out = note("AlignDiskTo4k", a); }
    void CloneOSDataFromDisk(std::string& out, int32_t a, int32_t b) override
    {
        out = note("CloneOSDataFromDisk", a, b);
    }
    void CloneDiskToDisk(std::string& out, int32_t a, int32_t b) override
    {
        out = note("CloneDiskToDisk", a, b);
    }
    void WipeDisk(std::string& out, int32_t a, int32_t b) override { out = note("WipeDisk", a, b); }
    void CloneOSDataFromPartition(std::string& out, int32_t a, Text b) override
    {
        out = note("CloneOSDataFromPartition", a, b);
    }
    void ClonePartitionToPartition(std::string& out, Text a, Text b) override
    {
        out = note("ClonePartitionToPartition", a, b);
    }
    void MergePartitions(std::string& out, Text a, Text b) override { out = note("MergePartitions", a, b); }
    void ChangePartitionDriveLetter(std::string& out, Text a, Text b) override
    {
        out = note("ChangePartitionDriveLetter", a, b);
    }
    void ChangePartitionLabel(std::string& out, Text a, Text b) override
    {
        out = note("ChangePartitionLabel", a, b);
    }
    void ClonePartitionToDisk(std::string& out, Text a, int32_t b) override
    {
        out = note("ClonePartitionToDisk", a, b);
    }
    void WipePartition(std::string& out, Text a, int32_t b) override { out = note("WipePartition", a, b); }
    void ChangePartitionClusterSize(std::string& out, Text a, int32_t b) override
    {
        out = note("ChangePartitionClusterSize", a, b);
    }
    void FormatPartition(std::string& out, Text a, Text b, Text c, int32_t d, bool e) override
    {
        out = note("FormatPartition", a, b, c, d, e);
    }
    void SplitPartition(std::string& out, Text a, int64_t b, Text c, Text d) override
    {
        out = note("SplitPartition", a, b, c, d);
    }
    void AllocateSpaceFromPartitionToNewPartition(std::string& out, Text a, int64_t b, Text c,
                                                  Text d) override
    {
        out = note("AllocateSpaceFromPartitionToNewPartition", a, b, c, d);
    }
    void CreatePartition(std::string& out, int32_t a, int64_t b, Text c, Text d, int32_t e) override
    {
        out = note("CreatePartition", a, b, c, d, e);
    }
    void ResizePartition(std::string& out, Text a, int64_t b) override
    {
        out = note("ResizePartition", a, b);
    }
    void ResizePartitionRelative(std::string& out, Text a, int64_t b) override
    {
        out = note("ResizePartitionRelative", a, b);
    }
    void AllocateSpaceFromPartitionToPartition(std::string& out, Text a, Text b, int64_t c) override
    {
        out = note("AllocateSpaceFromPartitionToPartition", a, b, c);
    }
    void AutoCreatePartitions(std::string& out, int32_t a, int32_t b, Text c) override
    {
        out = note("AutoCreatePartitions", a, b, c);
    }

    std::string lastCall() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return lastCall_;
    }

    // The answers; changed only between two calls.
    DiskInfo disk;
    PartitionInfo partition;
    TaskInfo task;

private:
    template <class... Arguments> std::string note(const char* method, const Arguments&... arguments)
    {
        std::ostringstream text;
        text << method;
        ((text << '|' << arguments), ...);
        const std::lock_guard<std::mutex> lock(mutex_);
        lastCall_ = text.str();
        return lastCall_;
    }

    mutable std::mutex mutex_;
    std::string lastCall_;
};

class WireFields : public testing::Test
{
protected:
    // The call as the handler has seen it.
    std::string echo(const Method& method, const Fields& fields)
    {
        const wire::Message reply = client.ask(wire::call(method.name, 4, fields));
        EXPECT_EQ(reply.type, wire::Reply) << method.name;
        EXPECT_EQ(reply.body.fieldIds(), std::vector<int>{0}) << method.name;
        return handler->lastCall();
    }

    std::shared_ptr<EchoHandler> handler = std::make_shared<EchoHandler>();
    HandlerServer server{handler};
    RawClient client{server.port()};
};

TEST_F(WireFields, EachArgument_IsReadUnderItsIdAndTypeIntoItsParameter)
{
    ASSERT_EQ(kMethods.size(), 69u);
    for (const std::int64_t base : kBigBases) {
        for (const Method& method : kMethods) {
            Fields fields;
            std::string expected = method.name;
            for (const Argument& argument : method.arguments) {
                fields.raw(argument.type, argument.id, valueBytes(argument.type, argument.id, base));
                expected += '|' + printedValue(argument, base);
            }
            EXPECT_EQ(echo(method, fields), expected);
        }
    }
}

TEST_F(WireFields, EachArgumentUnderAnyOtherType_IsSkippedAndTheOthersAreRead)
{
    const std::int64_t base = kBigBases.front();
    for (const Method& method : kMethods) {
        for (const Argument& wrong : method.arguments) {
            for (const int type : kTypeCodes) {
                if (type == wrong.type)
                    continue;
                Fields fields;
                std::string expected = method.name;
                for (const Argument& argument : method.arguments) {
                    const bool isWrong = argument.id == wrong.id;
                    const int sent = isWrong ? type : int(argument.type);
                    fields.raw(sent, argument.id, valueBytes(sent, argument.id, base));
                    expected += '|' + (isWrong ? printedDefault(argument) : printedValue(argument, base));
                }
                EXPECT_EQ(echo(method, fields), expected) << "type " << type << " for field " << wrong.id;
            }
        }
    }
}

TEST_F(WireFields, ArgumentsUnderIdsNextToTheirs_AreUnknown)
{
    for (const Method& method : kMethods) {
        Fields fields;
        std::string expected = method.name;
        for (const int type : {wire::Bool, wire::I32, wire::I64, wire::String}) {
            fields.raw(type, 0, valueBytes(type, 0, 0));
            fields.raw(type, int(method.arguments.size()) + 1, valueBytes(type, 1, 0));
        }
        for (const Argument& argument : method.arguments)
            expected += '|' + printedDefault(argument);
        EXPECT_EQ(echo(method, fields), expected);
    }
}

TEST_F(WireFields, EachResult_HasItsTypeCode)
{
    for (const Method& method : kMethods) {
        const std::string name = method.name;
        int type = wire::String;
        if (name == "Init" || name == "PostProcessing")
            type = wire::Bool;
        if (name == "PreProcessing" || name == "GetPartitionInfo")
            type = wire::Struct;
        if (name == "ListAllDisks" || name == "ListPartitionsOnDisk" || name == "GetAllPartitionInfo")
            type = wire::List;
        EXPECT_EQ(client.ask(wire::call(name, 4)).body.field(0).type, type) << name;
    }
}

// A field of a record: what it is on the wire, and how a test fills the member.
template <class Record> struct RecordField
{
    int id;
    Type type;
    std::function<void(Record&, std::int64_t bigBase)> fill;
};

void fillValue(std::string& member, int id, std::int64_t)
{
    member = textOf(id);
}
void fillValue(std::int32_t& member, int id, std::int64_t)
{
    member = numberOf(id);
}
void fillValue(std::int64_t& member, int id, std::int64_t bigBase)
{
    member = bigBase + id;
}
void fillValue(bool& member, int, std::int64_t)
{
    member = true;
}

template <class Record, class Member> RecordField<Record> field(int id, Type type, Member Record::*member)
{
    return {id, type, [=](Record& record, std::int64_t base) { fillValue(record.*member, id, base); }};
}

const std::vector<RecordField<DiskInfo>>& fieldsOf(const DiskInfo&)
{
    static const std::vector<RecordField<DiskInfo>> fields{
        field(1, wire::String, &DiskInfo::diskLabel),
        field(2, wire::I32, &DiskInfo::diskIndex),
        field(3, wire::I32, &DiskInfo::partitionCount),
        field(4, wire::I64, &DiskInfo::totalCapacity),
        field(5, wire::String, &DiskInfo::displayTotalCapacity),
        field(6, wire::I64, &DiskInfo::usedSize),
        field(7, wire::String, &DiskInfo::displayUsedSize),
        field(8, wire::I64, &DiskInfo::availableSpace),
        field(9, wire::String, &DiskInfo::displayAvailableSpace),
        field(10, wire::Bool, &DiskInfo::isUninitialized),
        field(11, wire::Bool, &DiskInfo::isGpt),
        field(12, wire::Bool, &DiskInfo::isMbr),
        field(13, wire::Bool, &DiskInfo::isStorageSpace),
        field(14, wire::Bool, &DiskInfo::isDynamic),
        field(15, wire::Bool, &DiskInfo::isReadOnly),
        field(16, wire::Bool, &DiskInfo::isOffline),
        field(17, wire::Bool, &DiskInfo::isBadDisk),
        field(18, wire::Bool, &DiskInfo::isWriteProtected),
        field(19, wire::Bool, &DiskInfo::isRemovable),
        field(20, wire::Bool, &DiskInfo::isVhd),
        field(21, wire::Bool, &DiskInfo::isVmd),
        field(22, wire::Bool, &DiskInfo::isVirtualDisk),
        field(23, wire::Bool, &DiskInfo::isUsb),
        field(24, wire::Bool, &DiskInfo::isSsd),
        field(25, wire::Bool, &DiskInfo::existsBitLocker),
        field(26, wire::Bool, &DiskInfo::isLowSpace),
        field(27, wire::Bool, &DiskInfo::not4kAligned),
        field(28, wire::I32, &DiskInfo::emptyPartitionCount),
        field(29, wire::String, &DiskInfo::serialNumber),
    };
    return fields;
}

const std::vector<RecordField<PartitionInfo>>& fieldsOf(const PartitionInfo&)
{
    static const std::vector<RecordField<PartitionInfo>> fields{
        field(1, wire::Bool, &PartitionInfo::isUnallocated),
        field(2, wire::I32, &PartitionInfo::diskIndex),
        field(3, wire::I32, &PartitionInfo::partitionIndex),
        field(4, wire::I64, &PartitionInfo::rawCapacity),
        field(5, wire::String, &PartitionInfo::displayRawCapacity),
        field(6, wire::I64, &PartitionInfo::dynamicVolumeSize),
        field(7, wire::String, &PartitionInfo::displayDynamicVolumeSize),
        field(8, wire::I64, &PartitionInfo::usedSize),
        field(9, wire::String, &PartitionInfo::displayUsedSize),
        field(10, wire::I64, &PartitionInfo::freeSize),
        field(11, wire::String, &PartitionInfo::displayFreeSize),
        field(12, wire::I64, &PartitionInfo::startingOffset),
        field(13, wire::I32, &PartitionInfo::sectorSize),
        field(14, wire::I32, &PartitionInfo::clusterSize),
        field(15, wire::I64, &PartitionInfo::dbrStartSector),
        field(16, wire::I64, &PartitionInfo::startSector),
        field(17, wire::I64, &PartitionInfo::endSector),
        field(18, wire::Bool, &PartitionInfo::isUnformatted),
        field(19, wire::Bool, &PartitionInfo::isRawPartition),
        field(20, wire::Bool, &PartitionInfo::isBitlockerEncrypted),
        field(21, wire::Bool, &PartitionInfo::isReadOnly),
        field(22, wire::Bool, &PartitionInfo::isHidden),
        field(23, wire::Bool, &PartitionInfo::isActive),
        field(24, wire::Bool, &PartitionInfo::isCurrentSystemPartition),
        field(25, wire::Bool, &PartitionInfo::isCurrentBootPartition),
        field(26, wire::Bool, &PartitionInfo::isBootPartitionContainer),
        field(27, wire::Bool, &PartitionInfo::isPrimary),
        field(28, wire::Bool, &PartitionInfo::isLogical),
        field(29, wire::Bool, &PartitionInfo::isGpt),
        field(30, wire::Bool, &PartitionInfo::isMbr),
        field(31, wire::Bool, &PartitionInfo::isStorageSpace),
        field(32, wire::Bool, &PartitionInfo::isDynamic),
        field(33, wire::Bool, &PartitionInfo::isRemovable),
        field(34, wire::Bool, &PartitionInfo::isBadPartition),
        field(35, wire::Bool, &PartitionInfo::requiresSectorBySector),
        field(36, wire::Bool, &PartitionInfo::isOfflineBootPartition),
        field(37, wire::Bool, &PartitionInfo::isLowSpace),
        field(38, wire::Bool, &PartitionInfo::gptReserved),
        field(39, wire::Bool, &PartitionInfo::gptEfi),
        field(40, wire::Bool, &PartitionInfo::gptRecovery),
        field(41, wire::String, &PartitionInfo::partitionGuid),
        field(42, wire::String, &PartitionInfo::bitlockerState),
        field(43, wire::String, &PartitionInfo::driveLetter),
        field(44, wire::String, &PartitionInfo::label),
        field(45, wire::String, &PartitionInfo::fileSystemType),
        field(46, wire::String, &PartitionInfo::dynamicVolumeType),
    };
    return fields;
}

const std::vector<RecordField<TaskInfo>>& fieldsOf(const TaskInfo&)
{
    static const std::vector<RecordField<TaskInfo>> fields{
        field(1, wire::Bool, &TaskInfo::allow),
        field(2, wire::String, &TaskInfo::reasons),
    };
    return fields;
}

template <class Record> Record filled(std::int64_t bigBase)
{
    Record record;
    for (const auto& entry : fieldsOf(record))
        entry.fill(record, bigBase);
    return record;
}

// The whole record byte for byte; a bool is true if its id is trueId, or trueId is 0.
template <class Record> std::string recordBytes(std::int64_t bigBase, int trueId = 0)
{
    Fields bytes;
    for (const auto& entry : fieldsOf(Record())) {
        if (entry.type == wire::Bool)
            bytes.boolean(entry.id, trueId == 0 || entry.id == trueId);
        else
            bytes.raw(entry.type, entry.id, valueBytes(entry.type, entry.id, bigBase));
    }
    return bytes.end();
}

std::string listBytes(const std::vector<std::string>& records)
{
    std::string bytes = std::string(1, char(wire::Struct)) + wire::i32(std::int32_t(records.size()));
    for (const std::string& record : records)
        bytes += record;
    return bytes;
}

template <class Record> std::string defaultBytes()
{
    Fields bytes;
    for (const auto& entry : fieldsOf(Record()))
        bytes.raw(entry.type, entry.id,
                  std::string(entry.type == wire::Bool  ? 1
                              : entry.type == wire::I64 ? 8
                                                        : 4,
                              '\0'));
    return bytes.end();
}

std::string reply(const std::string& method, int type, const std::string& bytes)
{
    return wire::strictHeader(method, 4, wire::Reply) + Fields().raw(type, 0, bytes).end();
}

TEST_F(WireFields, EachFieldOfARecordInAReply_HasItsIdTypeAndWholeValue)
{
    ASSERT_EQ(fieldsOf(DiskInfo()).size(), 29u);
    ASSERT_EQ(fieldsOf(PartitionInfo()).size(), 46u);
    ASSERT_EQ(fieldsOf(TaskInfo()).size(), 2u);
    for (const std::int64_t base : kBigBases) {
        handler->disk = filled<DiskInfo>(base);
        handler->partition = filled<PartitionInfo>(base);
        handler->task = filled<TaskInfo>(base);
        const std::string disk = recordBytes<DiskInfo>(base);
        const std::string partition = recordBytes<PartitionInfo>(base);
        EXPECT_EQ(client.ask(wire::call("ListAllDisks", 4)).raw,
                  reply("ListAllDisks", wire::List, listBytes({disk, defaultBytes<DiskInfo>()})));
        EXPECT_EQ(client.ask(wire::call("ListPartitionsOnDisk", 4)).raw,
                  reply("ListPartitionsOnDisk", wire::List, listBytes({partition})));
        EXPECT_EQ(client.ask(wire::call("GetPartitionInfo", 4)).raw,
                  reply("GetPartitionInfo", wire::Struct, partition));
        EXPECT_EQ(
            client.ask(wire::call("GetAllPartitionInfo", 4)).raw,
            reply("GetAllPartitionInfo", wire::List, listBytes({defaultBytes<PartitionInfo>(), partition})));
        EXPECT_EQ(client.ask(wire::call("PreProcessing", 4)).raw,
                  reply("PreProcessing", wire::Struct, recordBytes<TaskInfo>(base)));
    }
}

// One flag at a time, since two flags in each other's place look the same while both are true.
template <class Record, class Ask> void expectEachFlagAlone(Record& answer, Ask ask)
{
    const std::int64_t base = kBigBases.front();
    for (const auto& flag : fieldsOf(Record())) {
        if (flag.type != wire::Bool)
            continue;
        answer = Record();
        for (const auto& entry : fieldsOf(Record())) {
            if (entry.type != wire::Bool || entry.id == flag.id)
                entry.fill(answer, base);
        }
        EXPECT_EQ(ask(), recordBytes<Record>(base, flag.id)) << flag.id;
    }
}

TEST_F(WireFields, EachFlagOfARecordInAReply_IsTheOneOfItsId)
{
    const auto body = [&](const std::string& method, std::size_t prefix) {
        const std::string raw = client.ask(wire::call(method, 4)).raw;
        // Without the header of the message and of the result, and the result's stop.
        const std::size_t start = wire::strictHeader(method, 4).size() + 3 + prefix;
        return raw.substr(start, raw.size() - start - 1);
    };
    expectEachFlagAlone(handler->partition, [&] { return body("GetPartitionInfo", 0); });
    expectEachFlagAlone(handler->task, [&] { return body("PreProcessing", 0); });
    expectEachFlagAlone(handler->disk, [&] {
        const std::string list = body("ListAllDisks", 5);
        return list.substr(0, list.size() - defaultBytes<DiskInfo>().size());
    });
}

// The record that the bytes of one field give.
template <class Record> Record readRecord(const std::string& bytes)
{
    const auto memory = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    memory->write(reinterpret_cast<const std::uint8_t*>(bytes.data()), std::uint32_t(bytes.size()));
    apache::thrift::protocol::TBinaryProtocol protocol(memory);
    Record record;
    EXPECT_EQ(record.read(&protocol), bytes.size());
    return record;
}

template <class Record> void expectEachFieldReadUnderItsTypeOnly()
{
    for (const auto& entry : fieldsOf(Record())) {
        for (const std::int64_t base : kBigBases) {
            Record expected;
            entry.fill(expected, base);
            EXPECT_EQ(readRecord<Record>(
                          Fields().raw(entry.type, entry.id, valueBytes(entry.type, entry.id, base)).end()),
                      expected)
                << entry.id;
        }
        for (const int type : kTypeCodes) {
            if (type == entry.type)
                continue;
            EXPECT_EQ(readRecord<Record>(Fields().raw(type, entry.id, valueBytes(type, entry.id, 1)).end()),
                      Record())
                << "type " << type << " for field " << entry.id;
        }
    }
}

TEST_F(WireFields, EachFieldOfARecord_IsReadUnderItsTypeAndSkippedUnderAnyOther)
{
    expectEachFieldReadUnderItsTypeOnly<DiskInfo>();
    expectEachFieldReadUnderItsTypeOnly<PartitionInfo>();
    expectEachFieldReadUnderItsTypeOnly<TaskInfo>();
}

} // namespace
