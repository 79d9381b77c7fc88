// The tools that take a disk number: behaviour that their table rows do not cover, and calls of the page.
#include "tests/support/Answers.h"
#include "tests/support/FakePlatform.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

namespace {

TEST(MigrateSystemDriveData, SendsTheWholeSystemDirectoryInUpperCase)
{
    FakePlatform platform;
    platform.directory = "d:\\Some\\system32";
    const Platform::Scope scope(platform);
    ToolBench bench;
    bench.build();
    bench.onConnectionThread(
        [&] { EXPECT_EQ(toolRow("MigrateSystemDriveData").call(bench.tools()), answers::queued); });
    EXPECT_EQ(
        bench.calls().last(),
        "partitionmanager.doFunFromAI@app list[int:39,map{driveLetter=QString:\"D:\\SOME\\SYSTEM32\"}]");
}

TEST(MigrateSystemDriveData, WithoutASystemDirectory_IsRejectedWithoutAHostCall)
{
    FakePlatform platform;
    platform.directory.clear();
    const Platform::Scope scope(platform);
    ToolBench bench;
    bench.build();
    bench.onConnectionThread(
        [&] { EXPECT_EQ(toolRow("MigrateSystemDriveData").call(bench.tools()), answers::notValid); });
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST(AutoCreatePartitions, PassesAnyStyleAndCountUnchanged)
{
    ToolBench bench;
    bench.build();
    bench.onConnectionThread([&] { tool(&CZorHandle::AutoCreatePartitions, 0, 0, "")(bench.tools()); });
    EXPECT_EQ(bench.calls().last(),
              "partitionmanager.doFunFromAI@app "
              "list[int:43,map{GptOrMbr=QString:\"\",diskIndex=int:0,partitionCount=int:0}]");
}

// An order closes the guide even if it cannot be delivered. A question never closes it.
TEST(PartitionPage, AnOrderThatCannotBeDelivered_StillClosesTheGuide)
{
    ToolBench bench;
    bench.host().without("partitionmanager");
    bench.build();
    bench.host().bridge()->doFunFromAI(7, {{"diskIndex", 1}});
    EXPECT_EQ(bench.calls(), QStringList({"window.closeGuide@app? list[invalid]"}));
}

TEST(PartitionPage, AQuestion_ChangesNeitherTheGuideNorTheCallersMap)
{
    ToolBench bench;
    bench.build();
    // Not const, so that a parameter passed by reference would modify it.
    QVariantMap params{{"diskIndex", 1}};
    EXPECT_TRUE(bench.host().bridge()->isFunValidForAI(7, params));
    EXPECT_EQ(
        bench.calls(),
        QStringList(
            {"partitionmanager.doFunFromAI@app? list[int:7,map{TestFunValid=bool:true,diskIndex=int:1}]"}));
    EXPECT_EQ(typed(params), "map{diskIndex=int:1}");
}

TEST(PartitionPage, OfTwoMethodsOfTheName_TheFirstIsCalled)
{
    ToolBench bench;
    bench.host()
        .spec("partitionmanager")
        .remove("doFunFromAI")
        .method("doFunFromAI(QString)", "bool")
        .method("doFunFromAI(int,QVariantMap)", "bool", [](const QVariantList&) { return QVariant(true); });
    bench.build();
    EXPECT_FALSE(bench.host().bridge()->isFunValidForAI(7, {}));
    EXPECT_TRUE(bench.calls().isEmpty());
}

} // namespace
