// The host's connection to the component: inventory, guides and recommendations. The component is real,
// without its service.
#include "bridge/AIBridge.h"
#include "host/objects/Scene.h"
#include "tests/host/MachineText.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <gtest/gtest.h>

namespace {

class Linked : public testing::Test
{
protected:
    void SetUp() override
    {
        bridge.setEngine(&scene.engine());
        tools.setBridge(AIBridgeAccess::toolBridge(&bridge));
        scene.link().attach(&bridge);
    }

    std::string call(void (CZorHandle::*tool)(std::string&, int32_t, int32_t), int first, int second)
    {
        std::string answer;
        runOnOtherThread([&] { (tools.*tool)(answer, first, second); });
        return answer;
    }

    host::Scene scene{simulated(testMachine()), -1};
    AIBridge bridge;
    CZorHandle tools;
};

using BridgeLinkTest = Linked;

TEST_F(BridgeLinkTest, Attach_PushesTheInventory)
{
    std::vector<DiskInfo> disks;
    bridge.getDiskInfo(disks);
    ASSERT_EQ(disks.size(), 6u);
    EXPECT_EQ(disks[2].totalCapacity, 64023257088);
    EXPECT_TRUE(disks[2].not4kAligned);
    EXPECT_FALSE(disks[0].not4kAligned);
}

TEST_F(BridgeLinkTest, CreatePartition_OfAnAgent_ShowsInTheInventory)
{
    std::string answer;
    runOnOtherThread([&] { tools.CreatePartition(answer, 0, 2 * kGiB, "NTFS", "Fresh", -1); });
    EXPECT_EQ(answer, answers::queued);
    ASSERT_TRUE(pumpUntil([&] { return bridge.getPartitionSize("G") == 2 * kGiB; }));
    PartitionInfo created;
    bridge.getPartitionInfo(created, "G");
    EXPECT_EQ(created.label, "Fresh");
}

TEST_F(BridgeLinkTest, RejectedQuestion_LeavesTheMachineUnchanged)
{
    std::string answer;
    runOnOtherThread([&] { tools.DeletePartition(answer, "C"); });
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_NE(scene.core().machine()->partition("C"), nullptr);
    EXPECT_FALSE(scene.core().status().isBusy());
}

TEST_F(BridgeLinkTest, CloneDiskToDisk_OpensTheGuideAtItsLastStep)
{
    EXPECT_EQ(call(&CZorHandle::CloneDiskToDisk, 1, 0), answers::queued);
    ASSERT_TRUE(pumpUntil([&] { return scene.core().guides().current() != nullptr; }));
    ASSERT_NE(scene.core().guides().current(), nullptr);
    EXPECT_EQ(scene.core().guides().current()->title, "Clone: disk 1 to disk 0");
    EXPECT_EQ(scene.core().guides().current()->summary, "step 2: The destination holds the running system.");
    EXPECT_EQ(call(&CZorHandle::CloneDiskToDisk, 0, 1), answers::queued);
    ASSERT_TRUE(pumpUntil([&] {
        return scene.core().guides().current() != nullptr &&
               scene.core().guides().current()->summary == "step 3";
    }));
}

TEST_F(BridgeLinkTest, CloneDiskToDisk_OfAMissingDisk_IsAnsweredToTheAgent)
{
    EXPECT_EQ(call(&CZorHandle::CloneDiskToDisk, 0, 7), "It seems that disk7 is not exist");
    EXPECT_EQ(scene.core().guides().current(), nullptr);
}

TEST_F(BridgeLinkTest, ConvertDiskToGpt_OpensTheGuide)
{
    std::string answer;
    runOnOtherThread([&] { tools.ConvertDiskToGpt(answer, 1); });
    EXPECT_EQ(answer, answers::queued);
    ASSERT_TRUE(pumpUntil([&] { return scene.core().guides().current() != nullptr; }));
    ASSERT_NE(scene.core().guides().current(), nullptr);
    EXPECT_EQ(scene.core().guides().current()->title, "Convert: disk 1 to GPT");
}

TEST_F(BridgeLinkTest, InstallAndEnablePreOS_IsAcceptedOnceUntilItIsDisabled)
{
    const auto install = [&] {
        std::string answer;
        runOnOtherThread([&] { tools.InstallAndEnablePreOS(answer); });
        return answer;
    };
    EXPECT_EQ(install(), answers::queued);
    EXPECT_EQ(install(), answers::notValid);
    std::string answer;
    runOnOtherThread([&] { tools.DisablePreOS(answer); });
    EXPECT_EQ(answer, answers::queued);
    EXPECT_EQ(install(), answers::queued);
}

TEST_F(BridgeLinkTest, Recommendation_ShowsOnTheCardUntilItIsAnswered)
{
    const QVariantMap record{
        {"msg", "Something."}, {"buttons", QVariantList{"Accept", "Cancel"}}, {"default", 0}};
    Q_EMIT bridge.sigRecScanResult(record);
    EXPECT_EQ(scene.link().message(), "Something.");
    EXPECT_EQ(scene.link().buttons(), QStringList({"Accept", "Cancel"}));
    scene.link().answer(1);
    EXPECT_EQ(scene.link().message(), "");
}

} // namespace
