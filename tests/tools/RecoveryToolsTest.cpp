// Recovery, health and the toolbox: behaviour that their table rows do not cover.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"
#include "tools/ToolBox.h"

#include <gtest/gtest.h>

namespace {

const QString kCloseGuide = "window.closeGuide@app? list[invalid]";

QString answerOf(ToolBench& bench, const std::function<QString(CZorHandle&)>& call)
{
    QString answer;
    bench.onConnectionThread([&] { answer = call(bench.tools()); });
    return answer;
}

// Makes the parameters accessible, to check that a tool has not changed them.
class OpenParams : public CZorHandle
{
public:
    using CZorHandle::paramsCopy;
    using CZorHandle::setParam;
};

TEST(RepairRawOrDamagedPartition, IsDisabled_AndChangesNeitherTheParametersNorTheGuide)
{
    ToolBench bench;
    bench.build();
    OpenParams tools;
    tools.setBridge(bench.host().toolBridge());
    tools.setParam("kept", QVariant(1));
    for (const char* letter : {"E", "", "1", "C:"}) {
        bench.onConnectionThread([&] {
            EXPECT_EQ(tool(&CZorHandle::RepairRawOrDamagedPartition, letter)(tools), answers::notValid);
        });
        EXPECT_EQ(tool(&CZorHandle::RepairRawOrDamagedPartition, letter)(tools), answers::notValid);
    }
    EXPECT_EQ(typed(tools.paramsCopy()), "map{kept=int:1}");
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST(RecoverLostPartition, OnADiskThatTheHostRejects_IsRejectedWithTheGuideClosed)
{
    ToolBench bench;
    bench.host().spec("partitionrecovery").answer("isDiskIndexValid", [](const QVariantList& arguments) {
        return QVariant(arguments.first().toMap().value("diskIndex").toInt() == 1);
    });
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::RecoverLostPartition, 2)), answers::notValid);
    EXPECT_EQ(bench.calls(), QStringList({kCloseGuide, "partitionrecovery.isDiskIndexValid@app? "
                                                       "list[map{diskIndex=int:2,isPartRecov=bool:true}]"}));
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::RecoverLostPartition, 1)), answers::queued);
}

TEST(RecoverLostPartition, OnTheApplicationThread_DoesNotCheckTheDisk)
{
    ToolBench bench;
    bench.host().spec("partitionrecovery").answer("isDiskIndexValid", false);
    bench.build();
    EXPECT_EQ(tool(&CZorHandle::RecoverLostPartition, 2)(bench.tools()), answers::queued);
    EXPECT_EQ(bench.calls(),
              QStringList({kCloseGuide,
                           "__zormain.doprfunction@app list[map{diskIndex=int:2,isPartRecov=bool:true}]"}));
}

TEST(DoPrFunForAI, ForADamagedPartition_DoesNotCheckTheDiskEither)
{
    ToolBench bench;
    bench.host().without("partitionrecovery");
    bench.build();
    bench.onConnectionThread([&] {
        EXPECT_TRUE(
            bench.host().bridge()->doPrFunForAI(false, {{"driveLetter", "E"}, {"isPartRecov", true}}));
    });
    EXPECT_EQ(
        bench.calls(),
        QStringList(
            {kCloseGuide,
             "__zormain.doprfunction@app list[map{driveLetter=QString:\"E\",isPartRecov=bool:false}]"}));
}

TEST(DoPrFunForAI, WithAMethodOfMoreParameters_CountsAsStarted)
{
    ToolBench bench;
    bench.host().spec("__zormain").remove("doprfunction").method("doprfunction(QVariant,QVariant)");
    bench.build();
    EXPECT_TRUE(bench.host().bridge()->doPrFunForAI(false, {}));
    EXPECT_EQ(bench.calls(), QStringList({kCloseGuide}));
}

TEST(OpenDiskHealth, WithAMethodOfMoreParameters_CountsAsOpened)
{
    ToolBench bench;
    bench.host().spec("__zormain").remove("opendiskhealth").method("opendiskhealth(QVariant,QVariant)");
    bench.build();
    EXPECT_TRUE(bench.host().bridge()->openDiskHealth(1));
    EXPECT_EQ(bench.calls(), QStringList({kCloseGuide}));
}

TEST(DiskHealthCheck, OfADiskMissingInTheInventory_IsRejectedEachTimeWithTheGuideClosed)
{
    ToolBench bench;
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DiskHealthCheck, 5)), answers::notValid);
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DiskHealthCheck, 5)), answers::notValid);
    EXPECT_EQ(bench.host().recorder().sequence(), QStringList({"window.closeGuide", "window.closeGuide"}));
}

TEST(DiskHealthCheck, OfADiskWithoutPartitions_IsRejected)
{
    ToolBench bench;
    bench.build();
    bench.host().bridge()->setDiskInfo({QVariantMap{{"diskIndex", 5}}});
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::DiskHealthCheck, 5)), answers::notValid);
}

TEST(DiskHealthCheck, OnTheApplicationThread_DoesNotReadTheInventory)
{
    ToolBench bench;
    bench.build();
    EXPECT_EQ(tool(&CZorHandle::DiskHealthCheck, 5)(bench.tools()), answers::queued);
    EXPECT_EQ(bench.calls(),
              QStringList({kCloseGuide, "__zormain.opendiskhealth@app list[map{diskIndex=int:5}]"}));
}

TEST(DiskHealthCheck, DoesNotChangeTheParameters)
{
    ToolBench bench;
    bench.build();
    OpenParams tools;
    tools.setBridge(bench.host().toolBridge());
    tools.setParam("kept", QVariant(1));
    EXPECT_EQ(tool(&CZorHandle::DiskHealthCheck, 1)(tools), answers::queued);
    EXPECT_EQ(typed(tools.paramsCopy()), "map{kept=int:1}");
}

TEST(BadSectorScan, OfAVirtualDiskOrPartition_IsRejectedAndTheGuideStaysOpen)
{
    ToolBench bench;
    const QVariantMap partition{{"driveLetter", "V"}, {"isVirtualDisk", true}};
    const QVariantMap disk{
        {"diskIndex", 4}, {"isVirtualDisk", true}, {"partitions", QVariantList{partition}}};
    bench.host().spec("deviceMgr").answer("disks", QVariant(QVariantList{disk}));
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::ScanDiskBadSectors, 4)), answers::notValid);
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::ScanPartitionBadSectors, "v:")), answers::notValid);
    EXPECT_EQ(bench.host().recorder().sequence(), QStringList({"deviceMgr.disks", "deviceMgr.disks"}));
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::ScanDiskBadSectors, 5)), answers::queued);
}

TEST(PasswordReset, AllowedByAHostWithoutAToolBox_IsQueuedButNothingIsOpened)
{
    ToolBench bench;
    bench.host().spec("__zormain").remove("doToolBox");
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::PasswordReset)), answers::queued);
    EXPECT_EQ(bench.calls(), QStringList({kCloseGuide, "__zormain.passwordResetEnabled@app? list[]"}));
}

TEST(ToolBoxTools, WithAnUnknownTarget_SendTheBareRecord)
{
    ToolBench bench;
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::RebuildMbr, 77)), answers::queued);
    EXPECT_EQ(bench.calls().last(), "__zormain.doToolBox@app? list[int:4,map{diskIndex=int:77}]");
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::CheckPartitionFileSystem, "q:x")), answers::queued);
    EXPECT_EQ(bench.calls().last(),
              "__zormain.doToolBox@app? list[int:12,map{diskIndex=int:-1,driveLetter=QString:\"Q:X\"}]");
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::ToggleWriteProtection, "")), answers::queued);
    EXPECT_EQ(bench.calls().last(),
              "__zormain.doToolBox@app? list[int:3,map{diskIndex=int:-1,driveLetter=QString:\"\"}]");
}

TEST(ToolsWithRecords, DoNotChangeTheParameters)
{
    ToolBench bench;
    bench.build();
    OpenParams tools;
    tools.setBridge(bench.host().toolBridge());
    tools.setParam("kept", QVariant(1));
    const QStringList methods = toolsThatCall("__zormain.doToolBox") + toolsThatCall("clone.cloneType") +
                                toolsThatCall("aibridge.sigConvertResult");
    ASSERT_FALSE(methods.isEmpty());
    for (const QString& method : methods)
        EXPECT_EQ(toolRow(method.toStdString()).call(tools), answers::queued) << method.toStdString();
    EXPECT_EQ(typed(tools.paramsCopy()), "map{kept=int:1}");
}

TEST(RunToolBoxTask, ReadsTheHostsAnswerAsABool)
{
    ToolBench bench;
    QVariant hostAnswer;
    bench.host().spec("__zormain").answer("doToolBox", [&](const QVariantList&) { return hostAnswer; });
    bench.build();
    const std::pair<QVariant, bool> answers[] = {{true, true},     {1, true},  {"yes", true},
                                                 {"false", false}, {0, false}, {QVariant(), false}};
    for (const auto& [value, accepted] : answers) {
        hostAnswer = value;
        EXPECT_EQ(runToolBoxTask(bench.host().toolBridge(), 8, {}), accepted) << typed(value).toStdString();
    }
}

TEST(Windows11UpgradeCheck, WithTheCheckerDisabled_UsesNeitherTheGuideNorTheToolBox)
{
    ToolBench bench;
    bench.host().spec("partitionmanager").answer("isWin11CheckerEnable", false);
    bench.build();
    EXPECT_EQ(answerOf(bench, tool(&CZorHandle::Windows11UpgradeCheck)), answers::notValid);
    EXPECT_EQ(bench.calls(), QStringList({"partitionmanager.isWin11CheckerEnable@app? list[]"}));
}

} // namespace
