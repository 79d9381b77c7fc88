// Calls of the partition page: the question, the order, and a missing page.
#include "tests/support/Answers.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

namespace {

TEST(Dispatch, FormatPartition_FromAnotherThread_AsksClosesGuideAndOrdersOnTheApplicationThread)
{
    RecordingHost host;
    host.build();
    CZorHandle tools;
    tools.setBridge(host.toolBridge());
    std::string answer;
    runOnOtherThread([&] { tools.FormatPartition(answer, "D", "NTFS", "data", 4096, true); });
    EXPECT_EQ(answer, answers::queued);
    EXPECT_EQ(host.recorder().sequence(), QStringList({"partitionmanager.doFunFromAI", "window.closeGuide",
                                                       "partitionmanager.doFunFromAI"}));
    const auto calls = host.recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    for (const HostCallRecord& call : calls)
        EXPECT_EQ(call.thread, QCoreApplication::instance()->thread());
    EXPECT_EQ(typed(calls[0].arguments),
              "list[int:15,map{TestFunValid=bool:true,clusterSize=int:4096,driveLetter=QString:\"D\","
              "fileSystem=QString:\"NTFS\",label=QString:\"data\",quickFormat=bool:true}]");
    EXPECT_TRUE(calls[0].withResult);
    EXPECT_EQ(typed(calls[1].arguments), "list[invalid]");
    EXPECT_EQ(typed(calls[2].arguments),
              "list[int:15,map{clusterSize=int:4096,driveLetter=QString:\"D\",fileSystem=QString:\"NTFS\","
              "label=QString:\"data\",quickFormat=bool:true}]");
    EXPECT_FALSE(calls[2].withResult);
}

TEST(Dispatch, AnyTool_HostWithoutThePage_IsRejectedAndNoGuideIsClosed)
{
    RecordingHost host;
    host.without("partitionmanager").build();
    CZorHandle tools;
    tools.setBridge(host.toolBridge());
    std::string answer;
    runOnOtherThread([&] { tools.FormatPartition(answer, "D", "NTFS", "data", 4096, true); });
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

} // namespace
