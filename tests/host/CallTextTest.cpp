// Announcements and arguments as a person reads them, and the drives that they name.
#include "host/objects/CallText.h"
#include "host/objects/TaskQueue.h"

#include <gtest/gtest.h>

namespace {

using host::namesDrive;
using host::readableArguments;
using host::splitCall;

TEST(CallText, Sizes_HaveUnits)
{
    EXPECT_EQ(readableArguments("driveLetter=D newPartitionCapacity=314572800"),
              "driveLetter=D newPartitionCapacity=300 MB");
    EXPECT_EQ(readableArguments("driveLetter=\"D\" size=107374182400"), "driveLetter=\"D\" size=100 GB");
    EXPECT_EQ(readableArguments("size=-1610612736"), "size=-1.5 GB");
    EXPECT_EQ(readableArguments("clusterSize=0 fileSystem=NTFS"), "clusterSize=0 fileSystem=NTFS");
}

TEST(CallText, NumbersOfOtherArguments_AreUnchanged)
{
    EXPECT_EQ(readableArguments("diskIndex=4096 startSector=1048576"), "diskIndex=4096 startSector=1048576");
}

TEST(CallText, Records_AreWords)
{
    EXPECT_EQ(readableArguments("destination={\"diskIndex\":1,\"isDiskItem\":true} source={\"diskIndex\":0,"
                                "\"driveLetter\":\"D\",\"startSector\":2048}"),
              "destination=disk 1 source=drive D");
}

TEST(CallText, ObjectOfArguments_IsKeysAndValues)
{
    EXPECT_EQ(readableArguments("{\"capacity\":1073741824,\"driveLetter\":\"D\",\"quick\":true}"),
              "capacity=1 GB driveLetter=\"D\" quick=true");
}

TEST(CallText, OtherText_IsUnchanged)
{
    EXPECT_EQ(readableArguments("label D: as Data {unfinished"), "label D: as Data {unfinished");
    EXPECT_EQ(readableArguments("newLabel=\"two words\""), "newLabel=\"two words\"");
    EXPECT_EQ(readableArguments(""), "");
}

TEST(CallText, Announcement_IsSplitIntoToolAndArguments)
{
    EXPECT_EQ(splitCall("FormatPartition  driveLetter=D").tool, "FormatPartition");
    EXPECT_EQ(splitCall("FormatPartition  driveLetter=D").arguments, "driveLetter=D");
    const host::AnnouncedCall json =
        splitCall("{\"name\": \"FormatPartition\", \"arguments\": {\"driveLetter\": \"D\"}}");
    EXPECT_EQ(json.tool, "FormatPartition");
    EXPECT_EQ(json.arguments, "{\"driveLetter\":\"D\"}");
    EXPECT_EQ(splitCall("[{\"function\": \"Eject\"}]").tool, "Eject");
    EXPECT_EQ(splitCall("\xe2\x80\x93 nothing").tool, "");
}

TEST(CallText, Drive_IsFoundInEveryForm)
{
    EXPECT_TRUE(namesDrive("driveLetter=D", "D"));
    EXPECT_TRUE(namesDrive("sourceDriveLetter=\"d:\" size=1", "D"));
    EXPECT_TRUE(namesDrive("source={\"driveLetter\":\"D\"}", "D"));
    EXPECT_TRUE(namesDrive("{\"driveLetter\":\"D\"}", "D"));
    EXPECT_FALSE(namesDrive("driveLetter=E newLabel=D", "D"));
    EXPECT_FALSE(namesDrive("driveLetter=Data", "D"));
    EXPECT_FALSE(namesDrive("", "D"));
}

TEST(RemainingText, Estimate_FollowsFromProgressAndTime)
{
    EXPECT_EQ(host::remainingText(0.5, 30000).english(), "about 30 s left");
    EXPECT_EQ(host::remainingText(0.1, 60000).english(), "about 9 min left");
    EXPECT_EQ(host::remainingText(0.1, 3600000).english(), "about 9 h left");
    EXPECT_EQ(host::remainingText(0.999, 1000).english(), "about 1 s left");
}

TEST(RemainingText, Beginning_HasNoEstimate)
{
    EXPECT_EQ(host::remainingText(0.5, 900).english(), "");
    EXPECT_EQ(host::remainingText(0.001, 60000).english(), "");
    EXPECT_EQ(host::remainingText(1.0, 60000).english(), "");
}

} // namespace
