// Splitting a line of a script into words.
#include "agent/Words.h"
#include "agent/Failure.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;
using zorcall::splitWords;

TEST(Words, BlanksTabsAndCarriageReturn_Separate)
{
    EXPECT_EQ(splitWords("  WipeDisk\tdiskIndex=1  eraseCount=2 \r"),
              (Words{"WipeDisk", "diskIndex=1", "eraseCount=2"}));
    EXPECT_EQ(splitWords(""), Words{});
    EXPECT_EQ(splitWords(" \t "), Words{});
}

TEST(Words, HashAtTheStartOfAWord_BeginsAComment)
{
    EXPECT_EQ(splitWords("# all of it"), Words{});
    EXPECT_EQ(splitWords("Init # the rest 'open"), Words{"Init"});
    EXPECT_EQ(splitWords("label=a#b"), Words{"label=a#b"});
    EXPECT_EQ(splitWords("'#a'"), Words{"#a"});
}

TEST(Words, SingleQuotes_KeepEveryCharacter)
{
    EXPECT_EQ(splitWords(R"(label='my "big" \disk ')"), Words{R"(label=my "big" \disk )"});
    EXPECT_EQ(splitWords("''"), Words{""});
}

TEST(Words, DoubleQuotes_HaveOnlyTwoEscapes)
{
    EXPECT_EQ(splitWords(R"(label="a 'b' \"c\" \\ \n")"), Words{R"(label=a 'b' "c" \ \n)"});
}

TEST(Words, BackslashOutsideQuotes_KeepsTheNextCharacter)
{
    EXPECT_EQ(splitWords(R"(label=a\ b\\c\')"), Words{R"(label=a b\c')"});
}

TEST(Words, OpenQuoteOrBackslashAtTheEnd_IsAUsageError)
{
    for (const char* line : {"label='a", "label=\"a", "label=\"a\\", "label=a\\"}) {
        try {
            splitWords(line);
            FAIL() << line;
        } catch (const zorcall::Failure& failure) {
            EXPECT_EQ(failure.code(), zorcall::Usage) << line;
        }
    }
}

TEST(Words, JoinedWords_AreSplitIntoTheSameWords)
{
    const Words words = {"A", "b=", "c=x y", "", "d='", "e=\"\\", "#f", "g=\t"};
    EXPECT_EQ(splitWords(zorcall::joinWords(words)), words);
    EXPECT_EQ(zorcall::joinWords({"WipeDisk", "diskIndex=1"}), "WipeDisk diskIndex=1");
    EXPECT_EQ(zorcall::joinWords({"label=x y"}), "'label=x y'");
}

} // namespace
