// Whether a processor name is on a list: the comparison of words, the files, and the order in which they are
// read.
#include "win11/ProcessorLists.h"

#include "tests/support/ScratchApplication.h"
#include "tests/win11/OpenedFiles.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

class ProcessorLists : public testing::Test
{
protected:
    void writeList(const QString& name, const QByteArray& text)
    {
        application.write(application.root() + "/Win11Checker/" + name + ".txt", text);
    }

    ScratchApplication application;
};

const char* const kIntel = "SupportedProcessorsIntel";
const char* const kAmd = "SupportedProcessorsAMD";
const char* const kQualcomm = "SupportedProcessorsQualcomm";
const char* const kWhitelist = "win11_cpu_whitelist";

const char* const kIntelName = "Intel(R) Core(TM) i5-8400 CPU";

struct LookupRow
{
    const char* behaviour;
    std::map<const char*, QByteArray> lists;
    const char* processor;
    bool isSupported;
};

void PrintTo(const LookupRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

QByteArray garbage()
{
    QByteArray bytes;
    for (int i = 0; i < 5000; ++i)
        bytes.append(static_cast<char>(i * 37));
    return bytes;
}

const std::vector<LookupRow>& lookupRows()
{
    static const std::vector<LookupRow> rows{
        {"LineOfTwoWordsOfTheName_Matches", {{kIntel, "Core i5-8400\n"}}, kIntelName, true},
        {"LineThatIsPartOfAWord_DoesNotMatch", {{kIntel, "i5-840\n"}}, kIntelName, false},
        {"LineWithCarriageReturnAndDoubleBlanks_Matches",
         {{kIntel, "  Intel(R)  Core(TM)   i5-8400 \r\n"}},
         kIntelName,
         true},
        {"LaterLine_Matches", {{kIntel, "Core i3-8100\nCore i5-8400\n"}}, kIntelName, true},
        {"NoFileAtAll_IsFalse", {}, kIntelName, false},
        {"Amd_UsesItsList", {{kAmd, "Ryzen 5 3600\n"}}, "AMD Ryzen 5 3600 6-Core Processor", true},
        {"AmdInLowerCase_UsesItsList", {{kAmd, "Ryzen 5 3600\n"}}, "amd Ryzen 5 3600 6-Core Processor", true},
        {"Qualcomm_UsesItsList", {{kQualcomm, "Snapdragon 8cx\n"}}, "Qualcomm Snapdragon 8cx", true},
        // The marks are removed in upper case only, before both texts are converted to lower case.
        {"MarkInLowerCaseInTheName_IsKept", {{kIntel, "core i5-8400\n"}}, "Intel Core(tm) i5-8400", false},
        {"MarkInLowerCaseInBoth_Matches", {{kIntel, "core(tm) i5-8400\n"}}, "Intel Core(tm) i5-8400", true},
        {"MarkOfCopyright_IsRemoved", {{kIntel, "Core(C) i5-8400\n"}}, kIntelName, true},
        {"LineOfOnlyAMark_BehavesAsAnEmptyLine",
         {{kIntel, "Core i5-8400\n"}, {kWhitelist, "(R)\n"}},
         kIntelName,
         false},
        {"WhitelistBeginsWithEmptyLine_CancelsTheMatch",
         {{kIntel, "Core i5-8400\n"}, {kWhitelist, "\nCore i9-9999\n"}},
         kIntelName,
         false},
        {"WhitelistCancelsAndMatchesLater_IsTrue",
         {{kIntel, "Core i5-8400\n"}, {kWhitelist, "\nCore i5-8400\n"}},
         kIntelName,
         true},
        {"WhitelistFirstLineNotContained_KeepsTheMatchAndEnds",
         {{kIntel, "Core i5-8400\n"}, {kWhitelist, "Core i9-9999\n\n"}},
         kIntelName,
         true},
        {"WhitelistFirstLineIsPartOfAWord_CancelsTheMatch",
         {{kIntel, "Core i5-8400\n"}, {kWhitelist, "i5-840\n"}},
         kIntelName,
         false},
        {"WholeNameOfAnotherMakerInTheWhitelist_Matches",
         {{kWhitelist, "VIA Nano X2 L4350\n"}},
         "VIA Nano X2 L4350",
         true},
        {"WholeNameInTheWhitelist_Matches",
         {{kWhitelist, "Intel(R) Core(TM) i5-8400 CPU\n"}},
         kIntelName,
         true},
        {"ListWithoutLineFeedAtItsEnd_IsReadToTheEnd",
         {{kIntel, "Core i3-8100\nCore i5-8400"}},
         kIntelName,
         true},
        {"ListOfGarbage_IsFalse", {{kIntel, garbage()}}, kIntelName, false},
        {"NameOfMarksOnly_IsFalse", {{kWhitelist, "\n(R)\n"}}, "(R)", false},
    };
    return rows;
}

class ProcessorLookup : public ProcessorLists, public testing::WithParamInterface<LookupRow>
{
};

TEST_P(ProcessorLookup, Name_IsSupportedAsItsRowExpects)
{
    for (const auto& [name, text] : GetParam().lists)
        writeList(name, text);
    EXPECT_EQ(isProcessorSupported(GetParam().processor), GetParam().isSupported);
}

INSTANTIATE_TEST_SUITE_P(Lists, ProcessorLookup, testing::ValuesIn(lookupRows()),
                         [](const auto& row) { return row.param.behaviour; });

TEST_F(ProcessorLists, Lookup_EmptyName_IsFalseAndOpensNoFile)
{
    writeList(kWhitelist, "\n");
    const OpenedFiles opened;
    EXPECT_FALSE(isProcessorSupported(QString()));
    EXPECT_EQ(opened.count(".txt"), 0);
    // A name of an unknown manufacturer opens the whitelist.
    EXPECT_FALSE(isProcessorSupported("VIA Nano"));
    EXPECT_EQ(opened.count("/win11_cpu_whitelist.txt"), 1);
}

TEST_F(ProcessorLists, VendorListPath_NameWithTwoMakers_TakesAmdBeforeIntelBeforeQualcomm)
{
    const QString folder = application.folder() + QLatin1String("/../Win11Checker//");
    EXPECT_EQ(vendorListPath("qualcomm intel amd"), folder + "SupportedProcessorsAMD.txt");
    EXPECT_EQ(vendorListPath("Qualcomm INTEL"), folder + "SupportedProcessorsIntel.txt");
    EXPECT_EQ(vendorListPath("QUALCOMM"), folder + "SupportedProcessorsQualcomm.txt");
    EXPECT_EQ(vendorListPath("VIA Nano"), QString());
}

TEST(ProcessorWords, TokensMatch_TriesOnlyTheFirstOccurrenceOfTheFirstWord)
{
    EXPECT_FALSE(tokensMatch({"core", "x", "core", "i5"}, {"core", "i5"}));
    EXPECT_TRUE(tokensMatch({"a", "core", "i5", "b"}, {"core", "i5"}));
}

TEST(ProcessorWords, TokensMatch_LineLongerThanTheRest_DoesNotMatch)
{
    EXPECT_FALSE(tokensMatch({"core", "i5"}, {"core", "i5", "8400"}));
    EXPECT_FALSE(tokensMatch({"x", "core"}, {"core", "i5"}));
}

TEST(ProcessorWords, TokensMatch_EmptyLists_DoNotMatch)
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
