// The candidates for the last word of a command line, without a service.
#include "agent/Completion.h"

#include "agent/Failure.h"

#include <gtest/gtest.h>

namespace {

using zorcall::Candidate;
using zorcall::Catalogue;
using zorcall::Interface;

using Words = std::vector<std::string>;

std::vector<Candidate> candidates(const std::string& line, const zorcall::InventoryReader& read)
{
    return zorcall::completeLine(Catalogue::builtIn(), Interface::builtIn(), line, read);
}

Words complete(const std::string& line)
{
    Words words;
    const auto noHost = [](const zorcall::LineAddress&) { return std::nullopt; };
    for (const Candidate& candidate : candidates(line, noHost))
        words.push_back(candidate.word);
    return words;
}

TEST(Completion, Methods_AreCompletedOnceWithTheCommands)
{
    EXPECT_EQ(complete("zorcall GetP"), Words{"GetPartitionInfo"});
    EXPECT_EQ(complete("zorcall --gated --port 1 GetP"), Words{"GetPartitionInfo"});
    EXPECT_EQ(complete("zorcall w"), Words{"watch"});
    EXPECT_EQ(complete("zorcall completion "), (Words{"bash", "zsh"}));
    EXPECT_EQ(complete("zorcall Init GetP"), Words{});
    EXPECT_EQ(complete("zorcall ").size(), Interface::builtIn().methods().size() + 2);
    EXPECT_EQ(complete("zorcall --list ").size(), Interface::builtIn().methods().size());
}

TEST(Completion, Options_AreThoseOfTheTable)
{
    EXPECT_EQ(complete("zorcall --ti"), Words{"--timeout"});
    EXPECT_EQ(complete("zorcall WipeDisk --allow"), Words{"--allow-missing"});
    EXPECT_EQ(complete("zorcall --port "), Words{});
}

TEST(Completion, Arguments_AreThoseThatAreStillMissing)
{
    EXPECT_EQ(complete("zorcall WipeDisk "), (Words{"diskIndex=", "eraseCount="}));
    EXPECT_EQ(complete("zorcall WipeDisk diskIndex=1 "), Words{"eraseCount="});
    EXPECT_EQ(complete("zorcall WipeDisk disk"), Words{"diskIndex="});
    EXPECT_EQ(complete("zorcall Unknown "), Words{});
}

TEST(Completion, Values_AreTheDocumentedOnes)
{
    EXPECT_EQ(complete("zorcall FormatPartition quickFormat="),
              (Words{"quickFormat=true", "quickFormat=false"}));
    EXPECT_EQ(complete("zorcall FormatPartition fileSystem=E"),
              (Words{"fileSystem=EXT2", "fileSystem=EXT3", "fileSystem=EXT4"}));
    EXPECT_EQ(complete("zorcall AutoCreatePartitions GptOrMbr="), (Words{"GptOrMbr=GPT", "GptOrMbr=MBR"}));
    EXPECT_EQ(complete("zorcall EjectUsb driveLetter="), Words{});
    EXPECT_EQ(complete("zorcall EjectUsb other="), Words{});
}

TEST(Completion, Inventory_IsReadOnlyForADriveOrADiskAndWithTheAddressOfTheLine)
{
    std::vector<std::string> reads;
    const auto read = [&](const zorcall::LineAddress& address) {
        reads.push_back(address.host + ':' + address.port);
        return std::nullopt;
    };
    candidates("zorcall EjectUsb ", read);
    candidates("zorcall ChangePartitionLabel newLabel=", read);
    EXPECT_EQ(reads, Words{});
    candidates("zorcall --host h --port 7 EjectUsb driveLetter=", read);
    candidates("zorcall WipeDisk diskIndex=", read);
    EXPECT_EQ(reads, (Words{"h:7", ":"}));
}

TEST(Completion, UnclosedQuote_IsAUsageError)
{
    EXPECT_THROW(complete("zorcall EjectUsb 'driveLetter="), zorcall::Failure);
}

} // namespace
