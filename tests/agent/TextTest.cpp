// UTF-8 validation, output for a terminal, and suggestions of names.
#include "agent/Text.h"
#include "agent/TextTable.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Names = std::vector<std::string>;

TEST(Text, IsUtf8_CharactersOfEveryLength_AreAccepted)
{
    EXPECT_TRUE(zorcall::isUtf8(""));
    EXPECT_TRUE(zorcall::isUtf8("C"));
    EXPECT_TRUE(zorcall::isUtf8("Gr\xC3\xB6\xC3\x9F\x65 \xE6\x95\xB0 \xF0\x9F\x92\xBE"));
    EXPECT_TRUE(zorcall::isUtf8(std::string("\0", 1)));
}

TEST(Text, IsUtf8_InvalidForms_AreRejected)
{
    EXPECT_FALSE(zorcall::isUtf8("\xFF"));
    EXPECT_FALSE(zorcall::isUtf8("\x80"));
    EXPECT_FALSE(zorcall::isUtf8("\xC3"));             // cut off
    EXPECT_FALSE(zorcall::isUtf8("\xC3\x41"));         // no continuation
    EXPECT_FALSE(zorcall::isUtf8("\xE6\x95"));         // cut off
    EXPECT_FALSE(zorcall::isUtf8("\xE6\x95\x41"));     // third byte no continuation
    EXPECT_FALSE(zorcall::isUtf8("\xC0\xAF"));         // overlong
    EXPECT_FALSE(zorcall::isUtf8("\xE0\x80\xAF"));     // overlong
    EXPECT_FALSE(zorcall::isUtf8("\xED\xA0\x80"));     // surrogate
    EXPECT_FALSE(zorcall::isUtf8("\xF4\x90\x80\x80")); // above the last character
}

TEST(Text, OneLine_ControlCharactersAndInvalidBytes_BecomeQuestionMarks)
{
    EXPECT_EQ(zorcall::oneLine("a\nb\r\x1B[31m\x7F\xFF"), "a?b??[31m??");
    EXPECT_EQ(zorcall::oneLine("x\xC2\x9Bz"), "x?z");
    EXPECT_EQ(zorcall::oneLine("caf\xC3\xA9 \xC2\xA0"), "caf\xC3\xA9 \xC2\xA0");
}

TEST(Text, OneLine_ReplacementCharacter_IsKept)
{
    EXPECT_EQ(zorcall::oneLine("\xEF\xBF\xBD\xFF\xEF\xBF\xBD"), "\xEF\xBF\xBD?\xEF\xBF\xBD");
    EXPECT_EQ(zorcall::oneLine("\xEF\xBB\xBFx"), "\xEF\xBB\xBFx");
    EXPECT_EQ(zorcall::oneLine("x\xE6\x95"), "x??");
}

TEST(Text, OneLine_LongText_IsCutBetweenCharacters)
{
    EXPECT_EQ(zorcall::oneLine(std::string(1000, 'a')), std::string(1000, 'a'));
    EXPECT_EQ(zorcall::oneLine(std::string(1001, 'a')), std::string(1000, 'a') + "...");
    EXPECT_EQ(zorcall::oneLine(std::string(999, 'a') + "\xC3\xA9"), std::string(999, 'a') + "...");
}

TEST(Text, EditDistance_CountsSingleChanges)
{
    EXPECT_EQ(zorcall::editDistance("", ""), 0u);
    EXPECT_EQ(zorcall::editDistance("", "abc"), 3u);
    EXPECT_EQ(zorcall::editDistance("abc", ""), 3u);
    EXPECT_EQ(zorcall::editDistance("kitten", "sitting"), 3u);
    EXPECT_EQ(zorcall::editDistance("ab", "ba"), 2u);
}

TEST(Text, Nearest_MoreThanThree_GivesTheThreeNearestInOrder)
{
    const Names all = {"WipeDisk", "ListAllDisks", "WipeDisc", "WipePartition", "WipeDish"};
    EXPECT_EQ(zorcall::nearest("WipeDish", all), (Names{"WipeDish", "WipeDisk", "WipeDisc"}));
}

TEST(Text, Nearest_IgnoresCase)
{
    EXPECT_EQ(zorcall::nearest("WIPEDISK", {"WipeDish", "WipeDisk"}), (Names{"WipeDisk", "WipeDish"}));
}

TEST(Text, Nearest_OmitsNamesFarBehindTheFirst)
{
    EXPECT_EQ(zorcall::nearest("WipePartition", {"WipePartitionTab", "WipePartitions"}),
              (Names{"WipePartitions", "WipePartitionTab"}));
    EXPECT_EQ(zorcall::nearest("WipePartition", {"WipePartitionTabs", "WipePartitions"}),
              Names{"WipePartitions"});
}

TEST(Text, Nearest_NamesThatDifferInMoreThanAThird_AreOmitted)
{
    EXPECT_EQ(zorcall::nearest("GetDiskInf", {"WipeDisk", "ListAllDisks"}), Names{});
    EXPECT_EQ(zorcall::nearest("qqqqqqqqqqqqqqqq", {"Init"}), Names{});
    EXPECT_EQ(zorcall::nearest("abcdef", {"abcdxy"}), Names{"abcdxy"});
    EXPECT_EQ(zorcall::nearest("abcdef", {"abcxyz"}), Names{});
    EXPECT_EQ(zorcall::nearest("lable", {"label"}), Names{"label"});
}

TEST(Text, Nearest_PartOfAName_SuggestsTheName)
{
    EXPECT_EQ(zorcall::nearest("disk", {"eraseCount", "diskIndex"}), Names{"diskIndex"});
    EXPECT_EQ(zorcall::nearest("PARTITIONINFO", {"GetPartitionInfo"}), Names{"GetPartitionInfo"});
    // Two letters are part of too many names.
    EXPECT_EQ(zorcall::nearest("di", {"diskIndex"}), Names{});
    EXPECT_EQ(zorcall::nearest("", {"diskIndex"}), Names{});
}

TEST(Text, Join_PutsTheSeparatorBetween)
{
    EXPECT_EQ(zorcall::join({}, ", "), "");
    EXPECT_EQ(zorcall::join({"a", "b", "c"}, ", "), "a, b, c");
}

TEST(TextTable, ControlCharacters_AreReplacedAndTrailingBlanksLeftOut)
{
    zorcall::TextTable table({{"NAME"}, {"SIZE", true}, {"STATE"}});
    table.add({"\033[2J", "5", "ready"});
    table.add({"a\nb", "10", ""});
    std::ostringstream out;
    table.write(out, {});
    EXPECT_EQ(out.str(), "NAME  SIZE  STATE\n?[2J     5  ready\na?b     10\n");
}

} // namespace
