// QML pages in which every function and every binding of a property throws.
#include "bridge/AIBridge.h"
#include "tests/faults/Calls.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"
#include "tests/tools/ToolRow.h"
#include "tools/ZorHandle.h"

#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

namespace {

const char* const kHost = R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    id: host
    property var thrown: []
    property bool popuped: fail("popuped")
    function fail(name) { var list = thrown; list.push(name); thrown = list; throw new Error(name) }
    function closeGuide(a) { fail("closeGuide") }
    function openUrl(a) { fail("openUrl") }
    Item {
        objectName: "__zormain"
        property bool busy: host.fail("busy")
        function doToolBox(index, info) { host.fail("doToolBox") }
        function passwordResetEnabled() { host.fail("passwordResetEnabled") }
        function bootrepairEnabled() { host.fail("bootrepairEnabled") }
        function createBootMediaEnabled(info) { host.fail("createBootMediaEnabled") }
        function dobmfunction(info) { host.fail("dobmfunction") }
        function doprfunction(info) { host.fail("doprfunction") }
        function opendiskhealth(info) { host.fail("opendiskhealth") }
    }
    QtObject {
        id: executer
        objectName: "__qml_executer"
        function sendUserInfo(category, event, detail, extra) { host.fail("sendUserInfo") }
    }
    QtObject {
        id: manager
        objectName: "partitionmanager"
        function isWin11CheckerEnable() : bool { host.fail("isWin11CheckerEnable") }
        function doFunFromAI(index, info) { host.fail("doFunFromAI") }
    }
    QtObject {
        id: recovery
        objectName: "partitionrecovery"
        function isDiskIndexValid(info) : bool { host.fail("isDiskIndexValid") }
        function isRawPart(info) : bool { host.fail("isRawPart") }
    }
    QtObject {
        id: box
        objectName: "toolbox"
        function check4kAlign(info) : bool { host.fail("check4kAlign") }
    }
    QtObject {
        id: media
        objectName: "bootablemedia"
        function isAlreadyEnable() : bool { host.fail("isAlreadyEnable") }
    }
    data: [executer, manager, recovery, box, media]
}
)";

// The answers other than not valid. An order counts as given, whatever the page does with it.
QString expectedAnswer(const std::string& method)
{
    static const std::map<std::string, QString> others = {
        {"Init", "true"},
        {"PreProcessing", "true "},
        {"PostProcessing", "true"},
        // A question whose function throws is answered with no.
        {"ListAllDisks", "0/1/unaligned 1/3/unaligned"},
        {"ListPartitionsOnDisk", "1/E:/100 1//1000 1//9000"},
        {"GetPartitionInfo", "1/E:/100"},
        {"GetAllPartitionInfo", "0/C:/5000 1/E:/100 1//1000 1//9000"},
        {"CreateWindowsInstallerMedia", answers::queued},
        {"InstallAndEnablePreOS", answers::queued},
        {"DiskHealthCheck", answers::queued},
        {"CloneOSDataFromDisk", "It seems that disk0 is not os disk"},
    };
    const auto other = others.find(method);
    if (other != others.end())
        return other->second;
    const QString tool = QString::fromStdString(method);
    if (toolsThatCall("aibridge.sigConvertResult").contains(tool))
        return answers::queued;
    // This host has no clone page.
    return toolsThatCall("clone.cloneType").contains(tool) ? QString("") : QString(answers::notValid);
}

class OpenGate : public CZorHandle
{
    qint64 sinceLastCall() const override { return 2000; }
};

TEST(ThrowingPages, AllTools_AnswerAsIfTheHostHadRefused)
{
    AIBridge bridge;
    QQmlApplicationEngine engine;
    bridge.setEngine(&engine);
    engine.loadData(kHost);
    ASSERT_EQ(engine.rootObjects().size(), 1);
    QObject* window = engine.rootObjects().first();
    for (const char* name : {"partitionmanager", "partitionrecovery", "toolbox", "bootablemedia"})
        engine.rootContext()->setContextProperty(name, window->findChild<QObject*>(name));
    bridge.setDiskInfo(machine::inventory());
    const auto tools = std::make_shared<OpenGate>();
    tools->setBridge(AIBridgeAccess::toolBridge(&bridge));
    {
        HandlerServer server(tools);
        runOnOtherThread([&] {
            RawClient client(server.port());
            for (const std::string& method : calls::methods())
                EXPECT_EQ(calls::answerOf(client.ask(calls::encode(method, 1))), expectedAnswer(method))
                    << method;
        });
    }
    // Each was run, except orders after a rejected question and functions of other types.
    const QStringList thrown = window->property("thrown").toStringList();
    for (const char* name :
         {"popuped", "busy", "closeGuide", "doToolBox", "passwordResetEnabled", "bootrepairEnabled",
          "createBootMediaEnabled", "dobmfunction", "opendiskhealth", "sendUserInfo", "isWin11CheckerEnable",
          "isDiskIndexValid", "isRawPart", "check4kAlign", "isAlreadyEnable"})
        EXPECT_TRUE(thrown.contains(name)) << name;
    EXPECT_FALSE(thrown.contains("doFunFromAI"));
    EXPECT_FALSE(thrown.contains("doprfunction"));
}

} // namespace
