// The tools of the partition page: conversion and validation of their arguments.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr qlonglong kGiga = 1073741824;

class PageTools : public testing::Test
{
protected:
    void SetUp() override { bench.build(); }

    // The map of the order that a tool gives, empty without an order.
    QVariantMap order(const std::function<QString(CZorHandle&)>& call)
    {
        bench.host().recorder().clear();
        bench.onConnectionThread([&] { answer = call(bench.tools()); });
        const auto calls = bench.host().recorder().calls();
        if (calls.size() != 3)
            return {};
        function = calls.back().arguments.value(0).toInt();
        return calls.back().arguments.value(1).toMap();
    }

    QString regionFor(int disk, int64_t capacity, int index)
    {
        return typed(order(tool(&CZorHandle::CreatePartition, disk, capacity, "NTFS", "", index))
                         .value("unallocatedIndex"));
    }

    void push(const QVariantList& sizes)
    {
        QVariantList regions;
        for (const QVariant& size : sizes)
            regions << QVariantMap{{"diskIndex", 3}, {"unallocated", true}, {"size", size}};
        bench.host().bridge()->setDiskInfo({QVariantMap{{"diskIndex", 3}, {"partitions", regions}}});
    }

    ToolBench bench;
    QString answer;
    int function = -1;
};

TEST_F(PageTools, CreatePartition_WithIndexMinusOne_SendsFirstRegionThatFits)
{
    push({kGiga, 5 * kGiga});
    EXPECT_EQ(regionFor(3, 2 * kGiga, -1), "int:1");
    EXPECT_EQ(regionFor(3, 5 * kGiga, -1), "int:1");
    EXPECT_EQ(regionFor(3, kGiga, -1), "int:0");
}

TEST_F(PageTools, CreatePartition_WithIndexMinusOneAndACapacityThatDoesNotFit_SendsZero)
{
    push({kGiga, 5 * kGiga});
    EXPECT_EQ(regionFor(3, 6 * kGiga, -1), "int:0");
    EXPECT_EQ(regionFor(99, 1, -1), "int:0");
}

TEST_F(PageTools, CreatePartition_WithAnyOtherIndex_SendsItUnchanged)
{
    push({kGiga, 5 * kGiga});
    EXPECT_EQ(regionFor(3, 2 * kGiga, 0), "int:0");
    EXPECT_EQ(regionFor(3, 2 * kGiga, 7), "int:7");
    EXPECT_EQ(regionFor(3, 2 * kGiga, -2), "int:-2");
}

TEST_F(PageTools, CreatePartition_AlwaysPassesTheLetterTest)
{
    for (const int disk : {0, -1, 1000}) {
        EXPECT_EQ(typed(order(tool(&CZorHandle::CreatePartition, disk, -5, "", "", 0)).value("driveLetter")),
                  "QString:\"dummy\"");
        EXPECT_EQ(answer, answers::queued);
    }
}

TEST_F(PageTools, CreatePartition_WithIndexMinusOneAndWithoutABridge_IsRejected)
{
    CZorHandle lone;
    EXPECT_EQ(tool(&CZorHandle::CreatePartition, 1, 5, "NTFS", "", -1)(lone), answers::notValid);
}

TEST_F(PageTools, FormatPartition_WithAnEmptyLetter_IsRejectedWithoutAHostCall)
{
    order(tool(&CZorHandle::FormatPartition, "", "NTFS", "", 0, false));
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST_F(PageTools, FormatPartition_PassesItsArgumentsUnchanged)
{
    EXPECT_EQ(typed(order(tool(&CZorHandle::FormatPartition, "e", "", "", -1, false))),
              "map{clusterSize=int:-1,driveLetter=QString:\"e\",fileSystem=QString:\"\",label=QString:\"\","
              "quickFormat=bool:false}");
}

TEST_F(PageTools, MergePartitions_NormalisesOnlyTheSecondLetter)
{
    EXPECT_EQ(typed(order(tool(&CZorHandle::MergePartitions, "c:", "d:"))),
              "map{driveLetter=QString:\"c:\",driveLetter2=QString:\"D\"}");
    EXPECT_EQ(typed(order(tool(&CZorHandle::MergePartitions, "c:", ""))),
              "map{driveLetter=QString:\"c:\",driveLetter2=QString:\"\"}");
    // The whole string is converted to upper case before it is cut, which makes two of this letter.
    EXPECT_EQ(typed(order(tool(&CZorHandle::MergePartitions, "c:", "\xC3\x9F"))),
              "map{driveLetter=QString:\"c:\",driveLetter2=QString:\"S\"}");
}

TEST_F(PageTools, ChangePartitionDriveLetter_SendsOneUpperCaseLetterAndAColon)
{
    const std::pair<const char*, const char*> letters[] = {
        {"g", "G:"}, {"E:", "E:"}, {"", ":"}, {"1x", "1:"}};
    for (const auto& [given, sent] : letters)
        EXPECT_EQ(order(tool(&CZorHandle::ChangePartitionDriveLetter, "d", given)).value("newDriveLetter"),
                  QVariant(sent))
            << given;
}

TEST_F(PageTools, BothAllocateTools_AreFunction22AndOnlyTheSecondHasAFileSystem)
{
    const QVariantMap existing =
        order(tool(&CZorHandle::AllocateSpaceFromPartitionToPartition, "d:", "e:", kGiga));
    EXPECT_EQ(function, 22);
    EXPECT_EQ(existing.keys(), QStringList({"driveLetter", "partitionCapacity", "targetDriveLetter"}));
    const QVariantMap fresh =
        order(tool(&CZorHandle::AllocateSpaceFromPartitionToNewPartition, "d:", kGiga, "NTFS", "x"));
    EXPECT_EQ(function, 22);
    EXPECT_EQ(fresh.keys(),
              QStringList({"driveLetter", "fileSystem", "label", "partitionCapacity", "targetDriveLetter"}));
    EXPECT_EQ(fresh.value("targetDriveLetter"), QVariant("CreateNew"));
}

TEST_F(PageTools, AllocateToPartition_ReducesBothLettersAndSendsAnEmptyTargetEmpty)
{
    EXPECT_EQ(
        typed(order(tool(&CZorHandle::AllocateSpaceFromPartitionToPartition, "d:\\x", "e:", kGiga))),
        "map{driveLetter=QString:\"D\",partitionCapacity=qlonglong:1073741824,targetDriveLetter=QString:"
        "\"E\"}");
    EXPECT_EQ(
        typed(order(tool(&CZorHandle::AllocateSpaceFromPartitionToPartition, "d:", "", kGiga))),
        "map{driveLetter=QString:\"D\",partitionCapacity=qlonglong:1073741824,targetDriveLetter=QString:"
        "\"\"}");
    EXPECT_EQ(answer, answers::queued);
}

TEST_F(PageTools, BothAllocateTools_WithAnEmptySource_AreRejectedWithoutAHostCall)
{
    order(tool(&CZorHandle::AllocateSpaceFromPartitionToPartition, "", "e:", kGiga));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::AllocateSpaceFromPartitionToNewPartition, "5", kGiga, "NTFS", "x"));
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST_F(PageTools, ResizePartitionRelative_AddsToTheCapacityOfTheInventory)
{
    const auto size = [this](const char* letter, int64_t adjustment) {
        const QVariantMap map = order(tool(&CZorHandle::ResizePartitionRelative, letter, adjustment));
        EXPECT_EQ(function, 14);
        EXPECT_EQ(map.value("driveLetter"), QVariant(letter));
        return typed(map.value("size"));
    };
    // In the inventory, E has 100 bytes and X is missing.
    EXPECT_EQ(size("E", -30), "qlonglong:70");
    EXPECT_EQ(size("e:", 5 * kGiga), "qlonglong:5368709220");
    EXPECT_EQ(size("E", -101), "qlonglong:-1");
    EXPECT_EQ(size("X", 55), "qlonglong:55");
    EXPECT_EQ(size("X", -55), "qlonglong:-55");
    EXPECT_EQ(size("E", std::numeric_limits<int64_t>::max()), "qlonglong:-9223372036854775709");
}

TEST_F(PageTools, ResizePartitionRelative_WithoutABridgeOrALetter_IsRejected)
{
    CZorHandle lone;
    EXPECT_EQ(tool(&CZorHandle::ResizePartitionRelative, "E", 5)(lone), answers::notValid);
    order(tool(&CZorHandle::ResizePartitionRelative, "", 5));
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST_F(PageTools, ResizePartitionRelative_CallsTheServicesOwnResizePartition)
{
    class Overridden : public CZorHandle
    {
    public:
        void ResizePartition(std::string& answer, const std::string& driveLetter, int64_t size) override
        {
            answer = driveLetter + ' ' + std::to_string(size);
        }
    };
    Overridden tools;
    tools.setBridge(bench.host().toolBridge());
    EXPECT_EQ(tool(&CZorHandle::ResizePartitionRelative, "E", 5)(tools), "E 105");
}

TEST_F(PageTools, AnyLetter_IsPassedToTheHost_WhetherADriveHasItOrNot)
{
    EXPECT_EQ(order(tool(&CZorHandle::DeletePartition, "Q")).value("driveLetter"), QVariant("Q"));
    EXPECT_EQ(answer, answers::queued);
}

TEST_F(PageTools, ByLetter_WithoutALeadingLetter_AreAllRejectedWithoutAHostCall)
{
    void (CZorHandle::*const tools[])(std::string&, const std::string&) = {
        &CZorHandle::SmartSpaceAdjustment,      &CZorHandle::ShowBitLockerStatus,
        &CZorHandle::OpenPartitionLayoutEditor, &CZorHandle::EjectUsb,
        &CZorHandle::DeletePartition,           &CZorHandle::ConvertPartitionToPrimary,
        &CZorHandle::ConvertPartitionToLogical, &CZorHandle::SetPartitionActive,
        &CZorHandle::SetPartitionHidden};
    for (const auto member : tools) {
        for (const char* letter : {"", "1", " C"}) {
            order(tool(member, letter));
            EXPECT_EQ(answer, answers::notValid);
        }
    }
    order(tool(&CZorHandle::ResizePartition, "", 5));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::SplitPartition, "1", 5, "NTFS", ""));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::WipePartition, "", 5));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::ChangePartitionClusterSize, "1", 5));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::ChangePartitionDriveLetter, "", "E"));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::ChangePartitionLabel, "1", "E"));
    EXPECT_EQ(answer, answers::notValid);
    order(tool(&CZorHandle::MergePartitions, "", "E"));
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST_F(PageTools, ByDisk_AreValidatedForNeitherTheirNumberNorALetter)
{
    for (const int disk : {-1, -2147483647, 0, 99}) {
        EXPECT_EQ(typed(order(tool(&CZorHandle::DeleteAllPartitions, disk))),
                  QString("map{diskIndex=int:%1}").arg(disk));
        EXPECT_EQ(answer, answers::queued);
        EXPECT_EQ(order(tool(&CZorHandle::WipeDisk, disk, 0)).value("diskIndex"), QVariant(disk));
        EXPECT_EQ(answer, answers::queued);
    }
}

TEST_F(PageTools, TheQuestion_HasTheKeysOfTheOrderAndOneMore)
{
    order(tool(&CZorHandle::SplitPartition, "d", 5, "NTFS", "x"));
    const auto calls = bench.host().recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    QVariantMap question = calls[0].arguments.at(1).toMap();
    EXPECT_EQ(typed(question.take("TestFunValid")), "bool:true");
    EXPECT_EQ(typed(question), typed(calls[2].arguments.at(1)));
}

} // namespace
