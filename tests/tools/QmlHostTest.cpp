// The library with objects of a QML file, as in the real host: a window with functions and properties, and a
// named item inside.
#include "bridge/AIBridge.h"
#include "plugin/HostAccess.h"
#include "plugin/HostCall.h"
#include "telemetry/Telemetry.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlExpression>

#include <gtest/gtest.h>

namespace {

const char* const kHost = R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    property bool popuped: false
    property var seen: []
    property int answered: 0
    function note(text) { var list = seen; list.push(text); seen = list }
    function closeGuide(a) { note("closeGuide " + (a === undefined)); return 7 }
    function broken(a) { note("broken"); throw new Error("a guide that can't be closed") }
    function fill(list) { aibridge.setDiskInfo(list) }
    Connections {
        target: aibridge
        function onSigConvertResult(v) { note("convert " + v.funIdx + " " + v.info.diskIndex) }
    }
    Item {
        Item {
            objectName: "__zormain"
            property bool busy: false
            property bool locked: false
            function doToolBox(index, info) { note("toolbox " + index + " " + info.diskIndex); return true }
            function passwordResetEnabled() { return !locked }
            function bootrepairEnabled() { throw new Error("nobody knows") }
            function createBootMediaEnabled(info) { return info.isBurn === false }
            function dobmfunction(info) { note("media " + JSON.stringify(info)) }
            function doprfunction(info, more) { note("recovery") }
            function opendiskhealth(info) { note("health " + info.diskIndex); throw new Error("no page") }
        }
    }
    QtObject {
        id: executer
        objectName: "__qml_executer"
        function sendUserInfo(category, event, detail, extra) {
            note([category, event, detail.function, extra === undefined].join(" "))
        }
    }
    data: [executer]
}
)";

class QmlHost : public testing::Test
{
protected:
    // The pause of the gate has passed.
    class OpenGate : public CZorHandle
    {
        qint64 sinceLastCall() const override { return 2000; }
    };

    QmlHost()
    {
        bridge.setEngine(&engine);
        engine.loadData(kHost);
        tools.setBridge(AIBridgeAccess::toolBridge(&bridge));
    }

    void SetUp() override { ASSERT_EQ(engine.rootObjects().size(), 1); }

    QStringList seen() { return engine.rootObjects().first()->property("seen").toStringList(); }
    QObject* main() { return findRootChild(&engine, "__zormain"); }

    std::string run(const std::function<void(std::string&)>& tool)
    {
        std::string answer;
        runOnOtherThread([&] { tool(answer); });
        // Events queued earlier for the application thread are processed before this one.
        QCoreApplication::processEvents();
        return answer;
    }

    AIBridge bridge;
    QQmlApplicationEngine engine;
    OpenGate tools;
};

TEST_F(QmlHost, TheMainObjectAndTheWindow_AreFound)
{
    ASSERT_NE(main(), nullptr);
    EXPECT_EQ(firstTopLevelWindow(), engine.rootObjects().first());
}

TEST_F(QmlHost, AFunctionOfTheWindow_ReceivesUndefinedForAnInvalidValueAndReturnsItsResult)
{
    EXPECT_EQ(callWindowMethod("closeGuide", QVariant()).toInt(), 7);
    QVariant answer;
    runOnOtherThread([&] { answer = callWindowMethod("closeGuide", QVariant(1)); });
    EXPECT_EQ(answer.toInt(), 7);
    EXPECT_EQ(seen(), QStringList({"closeGuide true", "closeGuide false"}));
}

TEST_F(QmlHost, AFunctionThatThrows_RunsAndReturnsAnInvalidValue)
{
    EXPECT_EQ(callWindowMethod("broken", QVariant()), QVariant());
    runOnOtherThread([] { EXPECT_EQ(callWindowMethod("broken", QVariant()), QVariant()); });
    EXPECT_EQ(seen(), QStringList({"broken", "broken"}));
}

TEST_F(QmlHost, TheGate_ReadsThePropertiesAndSendsTheEvent)
{
    const auto ask = [this] {
        TaskInfo answer;
        runOnOtherThread([&] { tools.PreProcessing(answer, "text"); });
        return answer;
    };
    EXPECT_TRUE(ask().allow);
    EXPECT_EQ(seen(), QStringList({"AIPixie Info_SpriteCalling text true"}));
    main()->setProperty("busy", true);
    EXPECT_EQ(ask().reasons.substr(0, 17), "One or more tasks");
    engine.rootObjects().first()->setProperty("popuped", true);
    EXPECT_EQ(ask().reasons.substr(0, 12), "An operation");
}

TEST_F(QmlHost, AToolBoxTool_ClosesTheGuideAndReceivesTheAnswerOfTheFunction)
{
    EXPECT_EQ(run([this](std::string& answer) { tools.RebuildMbr(answer, 4); }), answers::queued);
    EXPECT_EQ(seen(), QStringList({"closeGuide true", "toolbox 4 4"}));
}

TEST_F(QmlHost, AGateOfTheToolBoxThatRefusesOrThrows_RejectsTheTask)
{
    EXPECT_EQ(run([this](std::string& answer) { tools.PasswordReset(answer); }), answers::queued);
    main()->setProperty("locked", true);
    EXPECT_EQ(run([this](std::string& answer) { tools.PasswordReset(answer); }), answers::notValid);
    EXPECT_EQ(run([this](std::string& answer) { tools.RepairWindowsBoot(answer); }), answers::notValid);
}

TEST_F(QmlHost, AMediaTool_PassesTheMapAsAnObject)
{
    EXPECT_EQ(run([this](std::string& answer) { tools.CreateBootableUsbByDisk(answer, 3); }),
              answers::queued);
    EXPECT_EQ(seen(), QStringList({"closeGuide true", "media {\"diskIndex\":3,\"isBurn\":false}"}));
}

TEST_F(QmlHost, AHealthPageThatThrows_WasStillCalledAndTheTaskIsQueued)
{
    QMetaObject::invokeMethod(
        engine.rootObjects().first(), "fill",
        Q_ARG(QVariant, QVariant(QVariantList{
                            QVariantMap{{"partitions", QVariantList{QVariantMap{{"diskIndex", 6}}}}}})));
    EXPECT_EQ(run([this](std::string& answer) { tools.DiskHealthCheck(answer, 6); }), answers::queued);
    EXPECT_EQ(seen(), QStringList({"closeGuide true", "health 6"}));
}

TEST_F(QmlHost, AConversionsSignal_ArrivesInAQmlHandlerAsAnObject)
{
    EXPECT_EQ(run([this](std::string& answer) { tools.ConvertDiskToBasic(answer, 5); }), answers::queued);
    EXPECT_EQ(seen(), QStringList({"closeGuide true", "convert 2 5"}));
}

TEST_F(QmlHost, AnInventoryOfScriptObjects_IsReadLikeMaps)
{
    QQmlExpression push(
        engine.rootContext(), engine.rootObjects().first(),
        "fill([{diskIndex: 2, size: 8e12, usedSize: 1.5, isGPT: true, serialNO: 'S1', partitions: ["
        "{diskIndex: 2, driveLetter: 'e:', size: 3000000000000, sectorSize: 512, startSector: 2048,"
        " clusterSize: 8, bltState: 2}, {diskIndex: 2, unallocated: true}]}, 5])");
    push.evaluate();
    ASSERT_FALSE(push.hasError()) << push.error().toString().toStdString();
    std::vector<DiskInfo> disks;
    tools.ListAllDisks(disks);
    ASSERT_EQ(disks.size(), 2u);
    EXPECT_EQ(disks[0].totalCapacity, 8000000000000);
    EXPECT_EQ(disks[0].partitionCount, 2);
    EXPECT_TRUE(disks[0].isGpt);
    EXPECT_EQ(disks[0].serialNumber, "S1");
    EXPECT_EQ(disks[1].partitionCount, 0);
    PartitionInfo partition;
    tools.GetPartitionInfo(partition, "E");
    EXPECT_EQ(partition.rawCapacity, 3000000000000);
    EXPECT_EQ(partition.startingOffset, 1048576);
    EXPECT_EQ(partition.clusterSize, 4096);
    EXPECT_EQ(partition.bitlockerState, "encryption unlocked");
}

} // namespace
