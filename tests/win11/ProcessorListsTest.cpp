// Whether a name is on a list: the words, the files, and the order in which they are read.
#include "win11/ProcessorLists.h"

#include "tests/support/ScratchApplication.h"
#include "tests/win11/OpenedFiles.h"

#include <gtest/gtest.h>

namespace {

class ProcessorLists : public testing::Test
{
protected:
    QString lists() const { return application.root() + QLatin1String("/Win11Checker/"); }
    void intel(const QByteArray& text) { application.write(lists() + "SupportedProcessorsIntel.txt", text); }
    void amd(const QByteArray& text) { application.write(lists() + "SupportedProcessorsAMD.txt", text); }
    void qualcomm(const QByteArray& text)
    {
        application.write(lists() + "SupportedProcessorsQualcomm.txt", text);
    }
    void whitelist(const QByteArray& text) { application.write(lists() + "win11_cpu_whitelist.txt", text); }

    ScratchApplication application;
};

const QString kIntelName = QStringLiteral("Intel(R) Core(TM) i5-8400 CPU");

TEST_F(ProcessorLists, Lookup_LineOfTwoWordsOfTheName_Matches)
{
    intel("Core i5-8400\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_LineThatIsPartOfAWord_DoesNotMatch)
{
    intel("i5-840\n");
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_LineWithCarriageReturnAndDoubleBlanks_Matches)
{
    intel("  Intel(R)  Core(TM)   i5-8400 \r\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_LaterLine_Matches)
{
    intel("Core i3-8100\nCore i5-8400\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_EmptyName_IsFalseAndOpensNoFile)
{
    whitelist("\n");
    const OpenedFiles opened;
    EXPECT_FALSE(isProcessorSupported(QString()));
    EXPECT_EQ(opened.count(".txt"), 0);
    // A name of no known manufacturer opens the whitelist.
    EXPECT_FALSE(isProcessorSupported("VIA Nano"));
    EXPECT_EQ(opened.count("/win11_cpu_whitelist.txt"), 1);
}

TEST_F(ProcessorLists, Lookup_NoFileAtAll_IsFalse)
{
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_AmdInEitherCase_UsesTheSameList)
{
    amd("Ryzen 5 3600\n");
    EXPECT_TRUE(isProcessorSupported(QStringLiteral("AMD Ryzen 5 3600 6-Core Processor")));
    EXPECT_TRUE(isProcessorSupported(QStringLiteral("amd Ryzen 5 3600 6-Core Processor")));
}

TEST_F(ProcessorLists, Lookup_Qualcomm_UsesItsList)
{
    qualcomm("Snapdragon 8cx\n");
    EXPECT_TRUE(isProcessorSupported(QStringLiteral("Qualcomm Snapdragon 8cx")));
}

TEST_F(ProcessorLists, VendorListPath_NameWithTwoMakers_TakesAmdBeforeIntelBeforeQualcomm)
{
    const QString folder = application.folder() + QLatin1String("/../Win11Checker//");
    EXPECT_EQ(vendorListPath("qualcomm intel amd"), folder + "SupportedProcessorsAMD.txt");
    EXPECT_EQ(vendorListPath("Qualcomm INTEL"), folder + "SupportedProcessorsIntel.txt");
    EXPECT_EQ(vendorListPath("QUALCOMM"), folder + "SupportedProcessorsQualcomm.txt");
    EXPECT_EQ(vendorListPath("VIA Nano"), QString());
}

TEST_F(ProcessorLists, Lookup_MarkInLowerCase_IsKept)
{
    intel("core i5-8400\n");
    EXPECT_FALSE(isProcessorSupported(QStringLiteral("Intel Core(tm) i5-8400")));
    intel("core(tm) i5-8400\n");
    // The line's own mark is made small only after the marks are taken out, as the name's is.
    EXPECT_TRUE(isProcessorSupported(QStringLiteral("Intel Core(tm) i5-8400")));
}

TEST_F(ProcessorLists, Lookup_MarkOfCopyright_IsTakenOut)
{
    intel("Core(C) i5-8400\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_LineOfOnlyAMark_BehavesAsAnEmptyLine)
{
    intel("Core i5-8400\n");
    whitelist("(R)\n");
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_WhitelistBeginsWithEmptyLine_CancelsTheMatch)
{
    intel("Core i5-8400\n");
    whitelist("\nCore i9-9999\n");
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_WhitelistCancelsAndMatchesLater_IsTrue)
{
    intel("Core i5-8400\n");
    whitelist("\nCore i5-8400\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_WhitelistFirstLineNotContained_KeepsTheMatchAndEnds)
{
    intel("Core i5-8400\n");
    whitelist("Core i9-9999\n\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_WhitelistFirstLineIsPartOfAWord_CancelsTheMatch)
{
    intel("Core i5-8400\n");
    whitelist("i5-840\n");
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_WholeNameInTheWhitelist_MatchesAnyMaker)
{
    whitelist("VIA Nano X2 L4350\n");
    EXPECT_TRUE(isProcessorSupported(QStringLiteral("VIA Nano X2 L4350")));
    whitelist("Intel(R) Core(TM) i5-8400 CPU\n");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_ListWithoutLineFeedAtItsEnd_IsReadToTheEnd)
{
    intel("Core i3-8100\nCore i5-8400");
    EXPECT_TRUE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_ListOfGarbage_IsFalse)
{
    QByteArray garbage;
    for (int i = 0; i < 5000; ++i)
        garbage.append(static_cast<char>(i * 37));
    intel(garbage);
    EXPECT_FALSE(isProcessorSupported(kIntelName));
}

TEST_F(ProcessorLists, Lookup_NameOfMarksOnly_IsFalse)
{
    whitelist("\n(R)\n");
    EXPECT_FALSE(isProcessorSupported(QStringLiteral("(R)")));
}

TEST(ProcessorWords, TokensMatch_OnlyTheFirstPlaceOfTheFirstWordIsTried)
{
    EXPECT_FALSE(tokensMatch({"core", "x", "core", "i5"}, {"core", "i5"}));
    EXPECT_TRUE(tokensMatch({"a", "core", "i5", "b"}, {"core", "i5"}));
}

TEST(ProcessorWords, TokensMatch_LineLongerThanTheRest_IsADifference)
{
    EXPECT_FALSE(tokensMatch({"core", "i5"}, {"core", "i5", "8400"}));
    EXPECT_FALSE(tokensMatch({"x", "core"}, {"core", "i5"}));
}

TEST(ProcessorWords, TokensMatch_EmptyLists_AreNoMatch)
{
    EXPECT_FALSE(tokensMatch({}, {"core"}));
    EXPECT_FALSE(tokensMatch({"core"}, {}));
}

TEST(ProcessorWords, Normalise_JoinsTrimmedPieces)
{
    EXPECT_EQ(normaliseProcessorText(QStringLiteral("  a \t b\r\n  c ")), QStringLiteral("a b c"));
    EXPECT_EQ(normaliseProcessorText(QString()), QString());
}

} // namespace
