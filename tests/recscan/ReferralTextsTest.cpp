// Both tables of functions: each key, its whole text, and the order.
#include "recscan/FunctionTexts.h"
#include "recscan/Referral.h"
#include "tests/recscan/ExpectedTexts.h"
#include "tests/recscan/TextTranslator.h"

#include <gtest/gtest.h>

namespace {

TEST(FunctionTexts, OwnFunctions_AreTheseInThisOrder)
{
    ASSERT_EQ(kOwnFunctions.size(), 15u);
    ASSERT_EQ(kExpectedOwn.size(), 15u);
    for (std::size_t i = 0; i < 15; ++i) {
        EXPECT_STREQ(kOwnFunctions[i].key, kExpectedOwn[i].key);
        EXPECT_STREQ(kOwnFunctions[i].text, kExpectedOwn[i].text);
    }
}

TEST(FunctionTexts, AgentFunctions_AreTheseInThisOrder)
{
    ASSERT_EQ(kAgentFunctions.size(), 27u);
    ASSERT_EQ(kExpectedAgent.size(), 27u);
    for (std::size_t i = 0; i < 27; ++i) {
        EXPECT_STREQ(kAgentFunctions[i].key, kExpectedAgent[i].key);
        EXPECT_STREQ(kAgentFunctions[i].text, kExpectedAgent[i].text);
    }
}

TEST(FunctionTexts, EveryOwnFunction_IsRecommendedWithItsActionKey)
{
    for (const ExpectedFunction& expected : kExpectedOwn) {
        const auto found = recommendFunction(expected.key);
        ASSERT_TRUE(found.has_value()) << expected.key;
        EXPECT_EQ(found->record.value("msg"), QVariant(QString(expected.text)));
        EXPECT_EQ(found->funKey, QString(expected.key));
        EXPECT_TRUE(found->fromReferral);
        EXPECT_EQ(found->actionIndex, -1);
        EXPECT_EQ(found->record.keys(), QStringList({"buttons", "default", "msg", "time"}));
    }
}

TEST(FunctionTexts, EveryAgentFunction_IsRecommendedWithoutAnActionKey)
{
    for (const ExpectedFunction& expected : kExpectedAgent) {
        const auto found = recommendFunction(expected.key);
        ASSERT_TRUE(found.has_value()) << expected.key;
        EXPECT_EQ(found->record.value("msg"), QVariant(QString(expected.text)));
        EXPECT_EQ(found->record.value("callAgent"), QVariant(1));
        const bool secureBoot = QString(expected.key) == "enable_secure_boot";
        EXPECT_EQ(found->record.value("fun"), QVariant(secureBoot ? "convert_disk_to_gpt" : expected.key));
        EXPECT_TRUE(found->funKey.isEmpty());
        EXPECT_TRUE(found->fromReferral);
    }
}

TEST(FunctionTexts, EveryTextAndButton_IsTranslatedInTheContextQObject)
{
    QStringList sources = {"Accept", "Cancel"};
    std::vector<ExpectedFunction> functions = kExpectedOwn;
    functions.insert(functions.end(), kExpectedAgent.begin(), kExpectedAgent.end());
    for (const ExpectedFunction& function : functions)
        sources << function.text;
    const InstalledTranslator translator(sources);
    for (const ExpectedFunction& function : functions) {
        const auto found = recommendFunction(function.key);
        ASSERT_TRUE(found.has_value()) << function.key;
        EXPECT_EQ(found->record.value("msg"), QVariant(translated(function.text)));
        EXPECT_EQ(found->record.value("buttons"),
                  QVariant(QVariantList({translated("Accept"), translated("Cancel")})));
    }
}

TEST(FunctionTexts, UnknownKeys_AreNotRecommended)
{
    for (const char* key : {"", "Disk_Health", "disk_health ", "convert"})
        EXPECT_FALSE(recommendFunction(key).has_value()) << key;
}

} // namespace
