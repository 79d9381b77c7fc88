// The clone tools and their validation chain.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"
#include "tools/CloneTask.h"

#include <gtest/gtest.h>

namespace {

const QString kGuide = "window.closeGuide";
const QString kTold = "aibridge.sigCloneResult";

class Clone : public testing::Test
{
protected:
    QString run(const std::function<QString(CZorHandle&)>& call)
    {
        QString answer;
        bench.onConnectionThread([&] { answer = call(bench.tools()); });
        return answer;
    }

    // The map of the opened guide, empty if it was not opened.
    QVariantMap result()
    {
        const auto calls = bench.host().recorder().calls();
        if (calls.empty() || calls.back().where() != kTold)
            return {};
        return calls.back().arguments.first().toMap();
    }

    QString resultText(const char* key) { return typed(result().value(key)); }
    bool guideClosed() { return bench.host().recorder().sequence().contains(kGuide); }

    // The host's page objects to one step only.
    void complainAtStep(int step)
    {
        bench.host().spec("clone").answer("invalidInfo", [step](const QVariantList& arguments) {
            return QVariant(arguments.at(2).toInt() == step ? QStringLiteral("no good") : QString());
        });
    }

    ToolBench bench;
};

TEST_F(Clone, FromAnUnknownLetter_OpensTheGuideAtStepOneWithoutAnObjection)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ClonePartitionToPartition, "q:", "e")), answers::queued);
    EXPECT_EQ(
        typed(result()),
        QString(
            "map{cloneType=int:3,defBoot=map{diskIndex=int:-2},"
            "destination=map{cloneType=int:3,diskIndex=int:1,driveLetter=QString:\"E:\",isBoot=bool:false},"
            "errMsg=QString:\"\",goToPageIndex=int:1,source=map{diskIndex=int:-1,driveLetter=QString:\"Q:\"}"
            "}"));
    EXPECT_FALSE(bench.host().recorder().sequence().contains("clone.invalidInfo"));
}

TEST_F(Clone, FromAnUnknownDisk_IsAnsweredWithItsNumberAndNoSignal)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 7, 1)), "It seems that disk7 is not exist");
    EXPECT_TRUE(result().isEmpty());
    EXPECT_TRUE(guideClosed());
    EXPECT_FALSE(bench.host().recorder().sequence().contains("clone.invalidInfo"));
}

TEST_F(Clone, ToAnUnknownDisk_IsAnsweredWithItsNumberAfterTheSourcePassed)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 8)), "It seems that disk8 is not exist");
    EXPECT_TRUE(result().isEmpty());
    EXPECT_EQ(bench.host().recorder().sequence().count("clone.invalidInfo"), 1);
}

TEST_F(Clone, ToAnUnknownDisk_OfASourceThatTheHostRejects_IsQueuedWithTheObjection)
{
    complainAtStep(1);
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 8)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"no good\"int:1");
}

TEST_F(Clone, WithoutADiskIndexForSourceOrDestination_OpensTheGuideAtStepOne)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, -1, 1)), answers::queued);
    EXPECT_EQ(resultText("goToPageIndex"), "int:1");
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, -1)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"\"int:1");
    EXPECT_EQ(bench.host().recorder().sequence().count("clone.invalidInfo"), 1);
}

TEST_F(Clone, AnObjectionToTheSource_OpensTheGuideAtStepOneAndTheAgentReceivesQueued)
{
    complainAtStep(1);
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 1)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"no good\"int:1");
    EXPECT_EQ(bench.host().recorder().sequence().count("clone.invalidInfo"), 1);
}

TEST_F(Clone, AnObjectionToTheDestination_OpensTheGuideAtStepTwo)
{
    complainAtStep(2);
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 1)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"no good\"int:2");
}

TEST_F(Clone, WithoutAnObjection_OpensTheGuideAtStepThree)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 1)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"\"int:3");
}

TEST_F(Clone, FromADiskThatIsNotTheSystemDisk_IsAnsweredSoAndTheGuideStaysOpen)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromDisk, 0, 1)), "It seems that disk1 is not os disk");
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromDisk, 0, 7)), "It seems that disk7 is not os disk");
    EXPECT_FALSE(guideClosed());
    EXPECT_TRUE(result().isEmpty());
}

TEST_F(Clone, FromADiskThatIsNotTheSystemDisk_WithMinusOneInEitherIndex_Continues)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromDisk, 1, -1)), answers::queued);
    EXPECT_EQ(resultText("goToPageIndex"), "int:1");
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromDisk, -1, 1)), answers::queued);
    EXPECT_EQ(resultText("goToPageIndex"), "int:1");
    EXPECT_TRUE(guideClosed());
}

TEST_F(Clone, FromMinusOneWithoutABridge_IsNotValidWithTheGuideClosed)
{
    bench.build(ToolBench::Bridge::NoBridge);
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromDisk, 1, -1)), answers::notValid);
    EXPECT_TRUE(guideClosed());
}

TEST_F(Clone, FromAPartitionToADiskWithoutFreeSpace_TakesItsFirstRecord)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ClonePartitionToDisk, "E", 0)), answers::queued);
    EXPECT_EQ(resultText("destination"),
              "map{cloneType=int:3,diskIndex=int:0,driveLetter=QString:\"C:\",isBoot=bool:true}");
}

TEST_F(Clone, FromAPartitionToAnUnknownDisk_HasADestinationWithOnlyItsType)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ClonePartitionToDisk, "E", 9)), answers::queued);
    EXPECT_EQ(resultText("destination"), "map{cloneType=int:3}");
    EXPECT_EQ(resultText("goToPageIndex"), "int:1");
}

TEST_F(Clone, FromASystemPartitionToADisk_IsASystemCloneToTheWholeDisk)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ClonePartitionToDisk, "c:", 1)), answers::queued);
    EXPECT_EQ(bench.host().object("clone")->value("cloneType"), QVariant(0));
    EXPECT_EQ(resultText("cloneType"), "int:0");
    EXPECT_EQ(resultText("destination"),
              QString(machine::disk1)
                  .replace("map{diskIndex=int:1,isBoot", "map{cloneType=int:0,diskIndex=int:1,isBoot"));
}

TEST_F(Clone, TheTypeOfTheTool_IsKeptForAnyRecords)
{
    const QVariantMap disk{{"diskIndex", 3}, {"isBoot", true}, {"isDiskItem", true}};
    bench.host().spec("deviceMgr").answer("disks", QVariant(QVariantList{disk}));
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 3, 3)), answers::queued);
    EXPECT_EQ(bench.host().object("clone")->value("cloneType"), QVariant(2));
    EXPECT_EQ(resultText("cloneType"), "int:2");
}

TEST_F(Clone, LettersInEitherCase_FindTheSamePartition)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromPartition, 1, "c")), answers::queued);
    const QString lower = resultText("source");
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromPartition, 1, "C:\\")), answers::queued);
    EXPECT_EQ(resultText("source"), lower);
    EXPECT_EQ(lower, machine::partitionC);
}

TEST(DriveLetterOf, ARootPath_IsItsFirstCharacterInUpperCaseAndCWithoutOne)
{
    EXPECT_EQ(driveLetterOf("D:/"), "D");
    EXPECT_EQ(driveLetterOf("e:/"), "E");
    EXPECT_EQ(driveLetterOf("/"), "/");
    EXPECT_EQ(driveLetterOf(""), "C");
}

TEST_F(Clone, FromTheRunningSystem_TakesTheLetterOfTheSystemDrive)
{
    // Windows names its drive in the environment; on other systems there is only the root directory.
    const QString letter = qEnvironmentVariable("SystemDrive", "/").left(1).toUpper();
    const QVariantMap system{{"diskIndex", 0}, {"driveLetter", letter}, {"isBoot", true}};
    bench.host()
        .spec("deviceMgr")
        .answer("disks",
                QVariant(QVariantList{QVariantMap{{"diskIndex", 0}, {"partitions", QVariantList{system}}},
                                      QVariantMap{{"diskIndex", 1}}}));
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneOSDataFromCurrent, 1)), answers::queued);
    EXPECT_EQ(resultText("source"), typed(system));
    EXPECT_EQ(resultText("destination"), "map{cloneType=int:0,diskIndex=int:1}");
    EXPECT_EQ(resultText("goToPageIndex"), "int:3");
}

TEST_F(Clone, TheDefaultBootPartition_ComesFromADiskOfIndexMinusTwo)
{
    const QVariantMap boot{{"defBoot", true}, {"tag", 5}};
    QVariantList disks = machine::disks();
    disks << QVariantMap{{"diskIndex", -2}, {"partitions", QVariantList{boot}}};
    bench.host().spec("deviceMgr").answer("disks", QVariant(disks));
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 1)), answers::queued);
    EXPECT_EQ(resultText("defBoot"), typed(boot));
    // The host's check receives it as well.
    for (const HostCallRecord& call : bench.host().recorder().calls()) {
        if (call.member == "invalidInfo") {
            EXPECT_EQ(typed(call.arguments.at(3)), typed(boot));
        }
    }
}

TEST_F(Clone, FromADisk_SearchesTheDefaultBootPartitionWithTheDiskIndexAsSelector)
{
    const QVariantMap boot{{"defBoot", true}, {"tag", 6}};
    bench.host().spec("deviceMgr").answer("disks", [boot](const QVariantList& arguments) {
        if (arguments.at(0).toInt() == 6)
            return QVariant(QVariantList{QVariantMap{{"diskIndex", -2}, {"partitions", QVariantList{boot}}}});
        return QVariant(QVariantList{QVariantMap{{"diskIndex", 6}}, QVariantMap{{"diskIndex", 8}}});
    });
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 6, 8)), answers::queued);
    EXPECT_EQ(resultText("defBoot"), "map{defBoot=bool:true,tag=int:6}");
    QStringList selectors;
    for (const HostCallRecord& call : bench.host().recorder().calls()) {
        if (call.member == "disks")
            selectors << typed(call.arguments);
    }
    const QString lookup = "list[int:1,bool:false]";
    EXPECT_EQ(selectors, QStringList({lookup, lookup, "list[int:6,bool:false]", lookup, lookup}));
}

TEST_F(Clone, AnObjectionMethodOfAnotherSignature_CountsAsNoObjection)
{
    bench.host()
        .spec("clone")
        .remove("invalidInfo")
        .method("invalidInfo(QVariant)", "QString", [](const QVariantList&) { return QVariant("no good"); });
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::CloneDiskToDisk, 0, 1)), answers::queued);
    EXPECT_EQ(resultText("errMsg") + resultText("goToPageIndex"), "QString:\"\"int:3");
}

TEST_F(Clone, EachStepOfTheChain_AcceptsANullBridge)
{
    QVariantMap result;
    EXPECT_FALSE(applyCloneType(nullptr, {}, {{"cloneType", 2}}, result));
    EXPECT_FALSE(validateCloneTask(nullptr, {}, {}, result));
    EXPECT_EQ(runCloneTask(nullptr, {}, {}, -2), answers::notValid);
}

TEST_F(Clone, ARefusedValidation_StillFillsTheResult)
{
    bench.host().without("clone");
    bench.build();
    QVariantMap result{{"defBoot", QVariantMap()}};
    EXPECT_FALSE(
        validateCloneTask(bench.host().toolBridge(), {{"diskIndex", 0}}, {{"diskIndex", 1}}, result));
    EXPECT_EQ(typed(result),
              "map{defBoot=map{},destination=map{diskIndex=int:1},errMsg=QString:\"\",goToPageIndex=int:1,"
              "source=map{diskIndex=int:0}}");
}

TEST(DeduceCloneType, IsAlwaysMinusOne)
{
    for (int bits = 0; bits < 256; ++bits) {
        QVariantMap source, destination;
        const auto fill = [bits](QVariantMap& record, int from) {
            if (bits & (1 << from))
                record["diskIndex"] = 4;
            if (bits & (2 << from))
                record["isDiskItem"] = true;
            if (bits & (4 << from))
                record["isBoot"] = true;
            if (bits & (8 << from))
                record["cloneType"] = 3;
        };
        fill(source, 0);
        fill(destination, 4);
        EXPECT_EQ(deduceCloneType(source, destination), -1) << bits;
    }
    EXPECT_EQ(deduceCloneType({{"diskIndex", -1}}, {{"diskIndex", -1}}), -1);
}

} // namespace
