// The transcript: lines, threads, and the events of calls, tasks and guides.
#include "host/objects/Transcript.h"
#include "bridge/AIBridge.h"
#include "host/objects/Scene.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace {

std::vector<QJsonObject> linesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<QJsonObject> lines;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.isEmpty())
            continue;
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << line.constData();
        lines.push_back(document.object());
    }
    return lines;
}

std::vector<QJsonObject> ofKind(const std::vector<QJsonObject>& lines, const QString& kind)
{
    std::vector<QJsonObject> found;
    for (const QJsonObject& line : lines) {
        if (line.value("kind") == kind)
            found.push_back(line);
    }
    return found;
}

TEST(Transcript, Line_HasTimeClockThreadAndKindAtOnce)
{
    const QTemporaryDir folder;
    host::Transcript transcript;
    ASSERT_EQ(transcript.open(folder.filePath("t")), "");
    transcript.add("begin", {{"machine", "test"}});
    // The file is still open: the line must already be flushed.
    const auto lines = linesOf(folder.filePath("t"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].value("kind"), "begin");
    EXPECT_EQ(lines[0].value("machine"), "test");
    EXPECT_EQ(lines[0].value("thread"), "application");
    EXPECT_TRUE(lines[0].value("ms").isDouble());
    const QString time = lines[0].value("time").toString();
    EXPECT_EQ(time.size(), 24) << time.toStdString();
    EXPECT_TRUE(QDateTime::fromString(time, Qt::ISODateWithMs).isValid()) << time.toStdString();
}

TEST(Transcript, UnwritableFile_IsAnError)
{
    const QTemporaryDir folder;
    host::Transcript transcript;
    EXPECT_NE(transcript.open(folder.filePath("none/t")), "");
    EXPECT_FALSE(transcript.isOpen());
    transcript.add("begin", {});
}

TEST(Transcript, Threads_WriteWholeLinesWithTheirNames)
{
    const QTemporaryDir folder;
    host::Transcript transcript;
    ASSERT_EQ(transcript.open(folder.filePath("t")), "");
    constexpr int kRounds = 200;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round)
                transcript.hostCall("deviceMgr", "disks", {1, false}, QVariantList{1, 2});
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const auto lines = linesOf(folder.filePath("t"));
    EXPECT_EQ(lines.size(), 3u * kRounds);
    std::set<QString> names;
    qint64 last = 0;
    for (const QJsonObject& line : lines) {
        names.insert(line.value("thread").toString());
        EXPECT_GE(line.value("ms").toVariant().toLongLong(), last);
        last = line.value("ms").toVariant().toLongLong();
        EXPECT_EQ(line.value("result").toInt(), 2);
    }
    EXPECT_EQ(names.size(), 3u);
    for (const QString& name : names)
        EXPECT_TRUE(name.startsWith("connection ")) << name.toStdString();
}

class TranscriptOfAScene : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(scene.core().transcript().open(folder.filePath("t")), "");
        bridge.setEngine(&scene.engine());
        tools.setBridge(AIBridgeAccess::toolBridge(&bridge));
        scene.link().attach(&bridge);
    }

    std::vector<QJsonObject> lines(const QString& kind)
    {
        return ofKind(linesOf(folder.filePath("t")), kind);
    }

    const QTemporaryDir folder;
    host::Scene scene{simulated(testMachine()), -1};
    AIBridge bridge;
    CZorHandle tools;
};

TEST_F(TranscriptOfAScene, OrderedTool_IsQuestionOrderTaskAndPush)
{
    std::string answer;
    runOnOtherThread([&] { tools.ChangePartitionLabel(answer, "D", "Later"); });
    ASSERT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
    const auto calls = lines("hostCall");
    QJsonArray question;
    for (const QJsonObject& call : calls) {
        if (call.value("member") == "doFunFromAI" && call.contains("result"))
            question = call.value("arguments").toArray();
    }
    EXPECT_EQ(question.at(0).toInt(), 31);
    EXPECT_TRUE(question.at(1).toObject().value("TestFunValid").toBool());
    ASSERT_EQ(lines("order").size(), 1u);
    EXPECT_EQ(lines("order")[0].value("function"), "ChangePartitionLabel");
    EXPECT_EQ(lines("order")[0].value("params").toObject().value("newLabel"), "Later");
    ASSERT_EQ(lines("taskStart").size(), 1u);
    EXPECT_EQ(lines("taskStart")[0].value("task").toInt(), 1);
    ASSERT_EQ(lines("taskEnd").size(), 1u);
    EXPECT_EQ(lines("taskEnd")[0].value("state"), "done");
    // One at the attachment of the component, and one for the new label.
    EXPECT_EQ(lines("inventoryPush").size(), 2u);
}

TEST_F(TranscriptOfAScene, RejectedQuestion_HasTheReason)
{
    std::string answer;
    runOnOtherThread([&] { tools.DeletePartition(answer, "C"); });
    const auto calls = lines("hostCall");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back().value("reason"), "The drive holds the running system.");
    EXPECT_EQ(calls.back().value("result"), false);
    EXPECT_TRUE(lines("order").empty());
}

TEST_F(TranscriptOfAScene, DirectCall_IsRecordedWithItsConnection)
{
    std::string answer;
    runOnOtherThread([&] { tools.CloneDiskToDisk(answer, 0, 1); });
    ASSERT_TRUE(pumpUntil([&] { return !lines("guide").empty(); }));
    bool seen = false;
    for (const QJsonObject& call : lines("hostCall")) {
        if (call.value("member") == "disks") {
            seen = true;
            EXPECT_TRUE(call.value("thread").toString().startsWith("connection "));
            EXPECT_EQ(call.value("result").toInt(), 6);
        }
        if (call.value("member") == "invalidInfo") {
            EXPECT_EQ(call.value("thread"), "application");
            EXPECT_EQ(call.value("arguments").toArray().at(0), "disk 0");
        }
    }
    EXPECT_TRUE(seen);
    EXPECT_EQ(lines("guide")[0].value("action"), "opened");
    EXPECT_EQ(lines("guide")[0].value("canStart"), true);
}

TEST_F(TranscriptOfAScene, AnnouncedCall_IsAGateCallAndItsReportAToolCall)
{
    runOnOtherThread([&] {
        Q_EMIT bridge.sigAbout2CallFun("label D");
        Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    });
    ASSERT_EQ(lines("gateCall").size(), 1u);
    EXPECT_EQ(lines("gateCall")[0].value("toolCalls"), "label D");
    EXPECT_TRUE(lines("gateCall")[0].value("thread").toString().startsWith("connection "));
    ASSERT_EQ(lines("toolCall").size(), 1u);
    EXPECT_EQ(lines("toolCall")[0].value("toolCalls"), "label D");
    EXPECT_EQ(lines("toolCall")[0].value("answer"), answers::queued.text());
    EXPECT_EQ(lines("toolCall")[0].value("queued"), true);
}

TEST_F(TranscriptOfAScene, PropertyReads_AreRecordedForOtherThreadsOnly)
{
    readWindowProperty("popuped");
    EXPECT_TRUE(lines("hostCall").empty() || lines("hostCall").back().value("member") != "popuped");
    runOnOtherThread([] { readWindowProperty("popuped"); });
    ASSERT_FALSE(lines("hostCall").empty());
    EXPECT_EQ(lines("hostCall").back().value("member"), "popuped");
}

} // namespace
