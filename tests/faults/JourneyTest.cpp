// Recommendation scans and accepted answers on every faulty host, and further uses of the host. Together with
// the tools, they compare at least one outcome for each broken member.
#include "tests/faults/Calls.h"
#include "tests/faults/Journeys.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <map>

namespace {

const QString kWholeCheck =
    "isFunValid isMBR2GPTValid isFunValid isGPT2MBRValid isFunValid | false false true";
const QString kWholePageCalls =
    "closeGuide disks cloneType disks invalidInfo closeGuide doprfunction | 1:no good | true";
const QString kWholeLanguage = "onTranslate 1";

// The journeys that use the broken member, and one for every other host. The mood does not affect a scan, so
// one journey suffices outside the first mood.
std::vector<const Journey*> journeysFor(const FaultCase& row)
{
    std::vector<const Journey*> chosen;
    for (const Journey& journey : scanJourneys()) {
        if (row.fault == Whole || reaches(journey.name, journey.whole, row))
            chosen.push_back(&journey);
    }
    if (chosen.empty())
        chosen.push_back(&scanJourneys()[2]);
    if (row.mood != Free)
        chosen.resize(1);
    return chosen;
}

class Journeys : public testing::TestWithParam<FaultCase>
{
};

TEST_P(Journeys, ScansAndAcceptedAnswers_HaveTheirDocumentedOutcome)
{
    for (const Journey* journey : journeysFor(GetParam()))
        EXPECT_EQ(outcomeOf(*journey, GetParam()), expectedOutcome(journey->name, journey->whole, GetParam()))
            << journey->name;
}

TEST_P(Journeys, CheckOfAConversion_HasItsDocumentedOutcome)
{
    EXPECT_EQ(conversionCheckOutcome(GetParam()), expectedOutcome(kConversionCheck, kWholeCheck, GetParam()));
}

TEST_P(Journeys, RejectedCloneAndRecovery_HaveTheirDocumentedOutcome)
{
    EXPECT_EQ(pageCallsOutcome(GetParam()), expectedOutcome(kPageCalls, kWholePageCalls, GetParam()));
}

TEST_P(Journeys, ChangeOfTheLanguage_ReachesAComponentThatIsConnected)
{
    if (GetParam().member.object == "multilanguage" || GetParam().fault == Whole) {
        EXPECT_EQ(languageOutcome(GetParam()), expectedOutcome(kLanguage, kWholeLanguage, GetParam()));
    }
}

INSTANTIATE_TEST_SUITE_P(Host, Journeys, testing::ValuesIn(sampled(allFaultCases())),
                         [](const auto& row) { return row.param.name(); });

bool toolsReach(const FaultCase& row)
{
    const FaultCase whole{Member(), Whole, row.mood};
    for (const std::string& method : calls::methods()) {
        if (expectedAnswer(method, row) != expectedAnswer(method, whole))
            return true;
    }
    return false;
}

bool journeysReach(const FaultCase& row)
{
    for (const Journey& journey : scanJourneys()) {
        if (reaches(journey.name, journey.whole, row))
            return true;
    }
    return reaches(kConversionCheck, kWholeCheck, row) || reaches(kPageCalls, kWholePageCalls, row) ||
           reaches(kLanguage, kWholeLanguage, row);
}

// The moods of one fault count together: the gate's members matter in one of them only.
TEST(JourneyRows, EveryFault_IsReachedByAnOperationWhoseOutcomeIsCompared)
{
    std::map<std::string, bool> reached;
    int hosts = 0;
    for (FaultCase row : allFaultCases()) {
        if (row.fault == Whole)
            continue;
        ++hosts;
        const bool now = toolsReach(row) || journeysReach(row);
        row.mood = Free;
        reached[row.name()] = reached[row.name()] || now;
    }
    for (const auto& [name, is] : reached)
        EXPECT_TRUE(is) << name;
    EXPECT_EQ(hosts, int(reached.size()) * 3);
    RecordProperty("hosts", hosts);
}

} // namespace
