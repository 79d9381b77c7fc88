// METHOD name=value ...: accepted calls, and the messages of rejected ones.
#include "agent/Call.h"
#include "agent/Failure.h"

#include <gtest/gtest.h>

namespace {

using zorcall::Call;
using zorcall::Interface;
using Words = std::vector<std::string>;

Call parse(const Words& words, bool allowMissing = false)
{
    return zorcall::parseCall(Interface::builtIn(), words, allowMissing);
}

std::string rejection(const Words& words, bool allowMissing = false)
{
    try {
        parse(words, allowMissing);
        return "accepted";
    } catch (const zorcall::Failure& failure) {
        EXPECT_EQ(failure.code(), zorcall::Usage);
        return failure.what();
    }
}

TEST(CallWords, ArgumentsInAnyOrder_AreAssignedByName)
{
    const Call call = parse({"CreatePartition", "label=Data 1", "unallocatedIndex=-1", "diskIndex=2",
                             "fileSystem=NTFS", "capacity=107374182400"});
    ASSERT_EQ(call.arguments.size(), 5u);
    EXPECT_EQ(call.arguments[0].integer(), 2);
    EXPECT_EQ(call.arguments[1].integer(), 107374182400);
    EXPECT_EQ(call.arguments[2].text(), "NTFS");
    EXPECT_EQ(call.arguments[3].text(), "Data 1");
    EXPECT_EQ(call.arguments[4].integer(), -1);
    EXPECT_FALSE(call.gated);
}

TEST(CallWords, TextOfACall_IsALineOfAScript)
{
    EXPECT_EQ(parse({"ChangePartitionLabel", "driveLetter=C", "newLabel=a b"}).text,
              "ChangePartitionLabel driveLetter=C 'newLabel=a b'");
}

TEST(CallWords, EmptyValueOrOneWithAnEqualsSign_IsKept)
{
    const Call call = parse({"ChangePartitionLabel", "driveLetter=", "newLabel=a=b"});
    EXPECT_FALSE(call.arguments[0].absent());
    EXPECT_EQ(call.arguments[0].text(), "");
    EXPECT_EQ(call.arguments[1].text(), "a=b");
}

TEST(CallWords, UnknownMethod_SuggestsTheNearestNames)
{
    EXPECT_EQ(rejection({"ListAllDisk"}), "unknown method 'ListAllDisk'; nearest: ListAllDisks");
    EXPECT_EQ(rejection({"convertdisktogpt"}),
              "unknown method 'convertdisktogpt'; nearest: ConvertDiskToGpt");
    EXPECT_EQ(
        rejection({"ConvertDiskTo"}),
        "unknown method 'ConvertDiskTo'; nearest: ConvertDiskToGpt, ConvertDiskToMbr, ConvertDiskToBasic");
}

TEST(CallWords, UnknownMethodWithoutASimilarName_RefersToTheList)
{
    EXPECT_EQ(rejection({"GetDiskInf"}), "unknown method 'GetDiskInf'; 'zorcall --list' lists the methods");
}

TEST(CallWords, UnknownArgumentWithoutASimilarName_ListsTheArguments)
{
    EXPECT_EQ(rejection({"WipeDisk", "passes=1"}),
              "WipeDisk has no argument 'passes'; its arguments: diskIndex, eraseCount");
}

TEST(CallWords, UnknownArgument_SuggestsTheNearestNames)
{
    EXPECT_EQ(rejection({"WipeDisk", "disk=1"}), "WipeDisk has no argument 'disk'; nearest: diskIndex");
    EXPECT_EQ(rejection({"ListAllDisks", "disk=1"}), "ListAllDisks takes no arguments, but 'disk' is given");
}

TEST(CallWords, WordWithoutEqualsSign_IsRejected)
{
    EXPECT_EQ(rejection({"WipeDisk", "1"}), "'1' is not of the form name=value");
}

TEST(CallWords, RepeatedArgument_IsRejected)
{
    EXPECT_EQ(rejection({"WipeDisk", "diskIndex=1", "diskIndex=1"}), "argument 'diskIndex' is given twice");
}

TEST(CallWords, MissingArguments_AreListed)
{
    EXPECT_EQ(rejection({"FormatPartition", "label=x", "driveLetter=D"}),
              "FormatPartition requires fileSystem, clusterSize, quickFormat (--allow-missing omits missing "
              "arguments)");
}

TEST(CallWords, AllowedMissingArguments_AreAbsent)
{
    const Call call = parse({"WipeDisk", "eraseCount=3"}, true);
    EXPECT_TRUE(call.arguments[0].absent());
    EXPECT_EQ(call.arguments[1].integer(), 3);
}

TEST(CallWords, Integer32_OutsideItsRange_IsRejected)
{
    EXPECT_EQ(parse({"RebuildMbr", "diskIndex=2147483647"}).arguments[0].integer(), 2147483647);
    EXPECT_EQ(parse({"RebuildMbr", "diskIndex=-2147483648"}).arguments[0].integer(), -2147483648LL);
    const std::string range = " is out of the range of i32, -2147483648 to 2147483647";
    EXPECT_EQ(rejection({"RebuildMbr", "diskIndex=2147483648"}),
              "argument 'diskIndex': '2147483648'" + range);
    EXPECT_EQ(rejection({"RebuildMbr", "diskIndex=-2147483649"}),
              "argument 'diskIndex': '-2147483649'" + range);
}

TEST(CallWords, Integer64_OutsideItsRange_IsRejected)
{
    const auto value = [](const std::string& text) {
        return parse({"ResizePartitionRelative", "driveLetter=C", "sizeAdjustment=" + text})
            .arguments[1]
            .integer();
    };
    EXPECT_EQ(value("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(value("-9223372036854775808"), INT64_MIN);
    EXPECT_EQ(rejection({"ResizePartition", "driveLetter=C", "newPartitionCapacity=9223372036854775808"}),
              "argument 'newPartitionCapacity': '9223372036854775808' is out of the range of i64, "
              "-9223372036854775808 to 9223372036854775807");
}

TEST(CallWords, InvalidInteger_IsRejected)
{
    for (const char* text : {"", "x", "1x", " 1", "1 ", "+1", "0x10", "1.5", "1e3", "-", "99999999999x"})
        EXPECT_EQ(rejection({"RebuildMbr", std::string("diskIndex=") + text}),
                  "argument 'diskIndex': '" + std::string(text) + "' is not a whole number");
}

TEST(CallWords, Bool_OtherThanTrueOrFalse_IsRejected)
{
    const Words rest = {"FormatPartition", "driveLetter=D", "fileSystem=NTFS", "label=x", "clusterSize=4096"};
    const auto with = [&rest](const std::string& value) {
        Words words = rest;
        words.push_back("quickFormat=" + value);
        return words;
    };
    EXPECT_TRUE(parse(with("true")).arguments[4].boolean());
    EXPECT_FALSE(parse(with("false")).arguments[4].boolean());
    for (const char* text : {"", "1", "yes", "True"})
        EXPECT_EQ(rejection(with(text)),
                  "argument 'quickFormat': '" + std::string(text) + "' is neither true nor false");
}

TEST(CallWords, InvalidUtf8_IsRejected)
{
    EXPECT_EQ(rejection({"EjectUsb", "driveLetter=\xFF"}), "argument 'driveLetter' is not UTF-8");
}

TEST(CallWords, MethodsOfTheGate_CannotBeGated)
{
    for (const Words& words :
         {Words{"Init"}, Words{"PreProcessing", "toolCalls=x"}, Words{"PostProcessing", "result=x"}}) {
        Call call = parse(words);
        EXPECT_THROW(zorcall::putThroughGate(&call), zorcall::Failure) << words[0];
    }
    Call call = parse({"ListAllDisks"});
    zorcall::putThroughGate(&call);
    EXPECT_TRUE(call.gated);
}

} // namespace
