// Boot media and the pre-OS environment: behaviour that their table rows do not cover.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

namespace {

QString answerOf(ToolBench& bench, const std::function<QString(CZorHandle&)>& call)
{
    QString answer;
    bench.onConnectionThread([&] { answer = call(bench.tools()); });
    return answer;
}

class OpenParams : public CZorHandle
{
public:
    using CZorHandle::paramsCopy;
    using CZorHandle::setParam;
};

TEST(CreateBootableUsbByDriveLetter, SendsOneUpperCaseLetterForAnyText)
{
    const std::pair<const char*, const char*> letters[] = {{"k:", "K"}, {"K", "K"}, {"", ""}, {"7x", "7"}};
    for (const auto& [given, sent] : letters) {
        ToolBench bench;
        bench.build();
        EXPECT_EQ(answerOf(bench, tool(&CZorHandle::CreateBootableUsbByDriveLetter, given)), answers::queued);
        EXPECT_EQ(
            bench.calls().last(),
            QString("__zormain.dobmfunction@app list[map{isBurn=bool:false,usbDriveLetter=QString:\"%1\"}]")
                .arg(sent));
    }
}

TEST(InstallAndEnablePreOS, WithTheEnvironmentEnabled_ChangesNeitherParametersNorGuide)
{
    ToolBench bench;
    bench.host().spec("bootablemedia").answer("isAlreadyEnable", true);
    bench.build();
    OpenParams tools;
    tools.setBridge(bench.host().toolBridge());
    tools.setParam("kept", QVariant(1));
    bench.onConnectionThread(
        [&] { EXPECT_EQ(tool(&CZorHandle::InstallAndEnablePreOS)(tools), answers::notValid); });
    EXPECT_EQ(typed(tools.paramsCopy()), "map{kept=int:1}");
    EXPECT_EQ(bench.host().recorder().sequence(), QStringList({"bootablemedia.isAlreadyEnable"}));
}

TEST(DisablePreOS, WithTheEnvironmentEnabled_RunsAndIsQueued)
{
    ToolBench bench;
    bench.host().spec("bootablemedia").answer("isAlreadyEnable", true);
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DisablePreOS)), answers::queued);
    EXPECT_EQ(bench.calls(), QStringList({"bootablemedia.isAlreadyEnable@app? list[]",
                                          "window.closeGuide@app? list[invalid]",
                                          "__zormain.dobmfunction@app list[map{isDisablePreOs=bool:true}]"}));
}

TEST(DisablePreOS, SetsItsAnswerBeforeTheTaskIsRun)
{
    ToolBench bench;
    std::string answer = "left as it was";
    std::string atTheTask;
    bench.host().spec("bootablemedia").answer("isAlreadyEnable", true);
    bench.host().spec("window").answer("closeGuide", [&](const QVariantList&) {
        atTheTask = answer;
        return QVariant();
    });
    bench.build();
    bench.tools().DisablePreOS(answer);
    EXPECT_EQ(atTheTask, answers::queued);
    EXPECT_EQ(answer, answers::queued);
}

TEST(ThePreOsState, IsReadAnewAtEachCall)
{
    ToolBench bench;
    bool enabled = false;
    bench.host().spec("bootablemedia").answer("isAlreadyEnable", [&](const QVariantList&) {
        return QVariant(enabled);
    });
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DisablePreOS)), answers::notValid);
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::InstallAndEnablePreOS)), answers::queued);
    enabled = true;
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DisablePreOS)), answers::queued);
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::InstallAndEnablePreOS)), answers::notValid);
}

TEST(IsBmFunValid, CallsTheHostOnlyWithTheKeySetToFalse)
{
    ToolBench bench;
    bench.host().spec("__zormain").answer("createBootMediaEnabled", false);
    bench.build();
    AIBridge& bridge = *bench.host().bridge();
    EXPECT_TRUE(bridge.isBmFunValid({}));
    EXPECT_TRUE(bridge.isBmFunValid({{"isBurn", true}}));
    EXPECT_TRUE(bench.calls().isEmpty());
    EXPECT_FALSE(bridge.isBmFunValid({{"isBurn", false}, {"diskIndex", 3}}));
    EXPECT_FALSE(bridge.isBmFunValid({{"isBurn", QVariant()}}));
    EXPECT_EQ(bench.calls().first(),
              "__zormain.createBootMediaEnabled@app? list[map{diskIndex=int:3,isBurn=bool:false}]");
    EXPECT_EQ(bench.calls().size(), 2);
}

TEST(DoBmFunForAI, RefusedByTheHost_ClosesTheGuideFirstAndRunsNothing)
{
    ToolBench bench;
    bench.host().spec("__zormain").answer("createBootMediaEnabled", false);
    bench.build();
    EXPECT_FALSE(bench.host().bridge()->doBmFunForAI({{"isBurn", false}}));
    EXPECT_EQ(bench.host().recorder().sequence(),
              QStringList({"window.closeGuide", "__zormain.createBootMediaEnabled"}));
}

} // namespace
