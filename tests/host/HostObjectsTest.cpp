// Every object, method, property and signal that the library looks for exists with its name and types.
#include "host/objects/Scene.h"
#include "host/objects/WindowObjects.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"

#include <QtGui/QGuiApplication>

#include <gtest/gtest.h>

namespace {

struct MemberRow
{
    const char* object;
    const char* method;
    const char* result;
};

// "window" means the first top-level window.
QObject* hostObject(host::Scene& scene, const QString& name)
{
    if (name == "window")
        return firstTopLevelWindow();
    if (name == "__zormain")
        return findRootChild(&scene.engine(), name);
    if (name == "__qml_executer")
        return firstTopLevelWindow()->findChild<QObject*>(name, Qt::FindChildrenRecursively);
    return contextObject(&scene.engine(), name);
}

class HostMethods : public testing::TestWithParam<MemberRow>
{
};

TEST_P(HostMethods, Method_HasTheExactSignature)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* object = hostObject(scene, GetParam().object);
    ASSERT_NE(object, nullptr);
    const QByteArray signature = GetParam().method;
    const QMetaMethod method = findHostMethod(object, signature.left(signature.indexOf('(')));
    ASSERT_TRUE(method.isValid());
    EXPECT_EQ(method.methodSignature(), signature);
    EXPECT_STREQ(method.typeName(), GetParam().result);
}

const MemberRow kMethods[] = {
    {"partitionmanager", "doFunFromAI(int,QVariantMap)", "bool"},
    {"partitionmanager", "isWin11CheckerEnable()", "bool"},
    {"partitionmanager", "hasDiskSmartInfoError(int)", "bool"},
    {"toolbox", "check4kAlign(QVariant)", "bool"},
    {"partitionrecovery", "isDiskIndexValid(QVariant)", "bool"},
    {"partitionrecovery", "isRawPart(QVariant)", "bool"},
    {"bootablemedia", "isAlreadyEnable()", "bool"},
    {"deviceMgr", "disks(int,bool)", "QVariantList"},
    {"deviceMgr", "bootDisks(int,bool)", "QVariantList"},
    {"clone", "invalidInfo(QVariantMap,QVariantMap,int,QVariantMap)", "QString"},
    {"diskconverter", "isFunValid(int,QVariantMap)", "bool"},
    {"diskconverter", "isGPT2MBRValid(QVariantMap)", "QString"},
    {"diskconverter", "isMBR2GPTValid(QVariantMap)", "QString"},
    {"multilanguage", "sigCurrentLanguageChanged()", "void"},
    {"__zormain", "doprfunction(QVariant)", "void"},
    {"__zormain", "createBootMediaEnabled(QVariant)", "QVariant"},
    {"__zormain", "dobmfunction(QVariant)", "void"},
    {"__zormain", "opendiskhealth(QVariant)", "void"},
    {"__zormain", "passwordResetEnabled()", "QVariant"},
    {"__zormain", "bootrepairEnabled()", "QVariant"},
    {"__zormain", "doToolBox(QVariant,QVariant)", "QVariant"},
    {"__qml_executer", "sendUserInfo(QVariant,QVariant,QVariant,QVariant)", "QVariant"},
    {"window", "closeGuide(QVariant)", "QVariant"},
    {"window", "openUrl(QVariant)", "QVariant"},
};

INSTANTIATE_TEST_SUITE_P(All, HostMethods, testing::ValuesIn(kMethods), [](const auto& row) {
    const std::string method = row.param.method;
    return std::string(row.param.object) + "_" + method.substr(0, method.find('('));
});

TEST(HostProperties, All_HaveTheirTypes)
{
    host::Scene scene(simulated(testMachine()), -1);
    const QMetaProperty busy = findHostProperty(hostObject(scene, "__zormain"), "busy");
    EXPECT_STREQ(busy.typeName(), "bool");
    const QMetaProperty popuped = findHostProperty(hostObject(scene, "window"), "popuped");
    EXPECT_STREQ(popuped.typeName(), "bool");
    QObject* clone = hostObject(scene, "clone");
    const QMetaProperty cloneType = findHostProperty(clone, "cloneType");
    EXPECT_STREQ(cloneType.typeName(), "int");
    EXPECT_TRUE(cloneType.write(clone, 3));
    EXPECT_EQ(cloneType.read(clone), QVariant(3));
}

TEST(HostProperties, LanguageSignal_IsASignal)
{
    host::Scene scene(simulated(testMachine()), -1);
    EXPECT_EQ(findHostMethod(hostObject(scene, "multilanguage"), "sigCurrentLanguageChanged").methodType(),
              QMetaMethod::Signal);
}

TEST(HostScene, Window_IsTheOnlyRootAndExistsBeforeTheComponent)
{
    host::Scene scene(simulated(testMachine()), -1);
    ASSERT_NE(scene.window(), nullptr);
    EXPECT_EQ(QGuiApplication::topLevelWindows().size(), 1);
    EXPECT_EQ(firstTopLevelWindow(), scene.window());
    EXPECT_EQ(scene.engine().rootObjects().first(), scene.window());
}

// A lookup from another thread must not enter the parts of the tree that the pages change.
TEST(HostScene, ItemsFoundByName_AreChildrenOfTheWindow)
{
    host::Scene scene(simulated(testMachine()), -1);
    EXPECT_EQ(hostObject(scene, "__zormain")->parent(), scene.window());
    EXPECT_EQ(hostObject(scene, "__qml_executer")->parent(), scene.window());
}

// A member declared in QML would be read through the script engine, which is not thread-safe.
TEST(HostScene, ObjectsReadFromOtherThreads_HaveTheMetaObjectsOfTheirClasses)
{
    host::Scene scene(simulated(testMachine()), -1);
    EXPECT_EQ(scene.window()->metaObject(), &host::HostWindow::staticMetaObject);
    EXPECT_EQ(hostObject(scene, "__zormain")->metaObject(), &host::MainPage::staticMetaObject);
    EXPECT_EQ(hostObject(scene, "__qml_executer")->metaObject(), &host::QmlExecuter::staticMetaObject);
}

QVariant toolBox(host::Scene& scene, int index, const QVariantMap& record)
{
    return callHost<QVariant>(hostObject(scene, "__zormain"), "doToolBox", ConnectionRule::Call,
                              QVariant(index), QVariant(record))
        .value_or(QVariant());
}

TEST(HostAnswers, PreOsState_ChangesWithInstallAndDisable)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* media = hostObject(scene, "bootablemedia");
    QObject* main = hostObject(scene, "__zormain");
    const auto enabled = [&] {
        return callHost<bool>(media, "isAlreadyEnable", ConnectionRule::Call).value();
    };
    EXPECT_FALSE(enabled());
    orderHost(main, "dobmfunction", ConnectionRule::Call, QVariant(QVariantMap{{"isInstallPreOs", true}}));
    EXPECT_TRUE(enabled());
    orderHost(main, "dobmfunction", ConnectionRule::Call, QVariant(QVariantMap{{"isDisablePreOs", true}}));
    EXPECT_FALSE(enabled());
}

TEST(HostAnswers, ToolboxFunctions_FollowTheMachinesSettings)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* main = hostObject(scene, "__zormain");
    const auto ask = [&](const char* gate) {
        return callHost<QVariant>(main, gate, ConnectionRule::Call).value().toBool();
    };
    EXPECT_FALSE(ask("passwordResetEnabled"));
    EXPECT_TRUE(ask("bootrepairEnabled"));
    EXPECT_FALSE(toolBox(scene, 1, {}).toBool());
    EXPECT_TRUE(toolBox(scene, 2, {}).toBool());
    ASSERT_NE(scene.core().guides().current(), nullptr);
    EXPECT_EQ(scene.core().guides().current()->title, "Toolbox: bootRepair");
}

TEST(HostAnswers, CloseGuide_ClosesTheOpenGuideOnce)
{
    host::Scene scene(simulated(testMachine()), -1);
    toolBox(scene, 2, {});
    EXPECT_TRUE(callWindowMethod("closeGuide", QVariant()).toBool());
    EXPECT_EQ(scene.core().guides().current(), nullptr);
    EXPECT_FALSE(callWindowMethod("closeGuide", QVariant()).toBool());
}

TEST(HostAnswers, OpenUrl_ShowsTheAddress)
{
    host::Scene scene(simulated(testMachine()), -1);
    EXPECT_TRUE(callWindowMethod("openUrl", QVariant("http://localhost/page")).toBool());
    EXPECT_EQ(scene.core().address(), "http://localhost/page");
}

TEST(HostAnswers, RecoveryAndHealth_KnowTheDisks)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* recovery = hostObject(scene, "partitionrecovery");
    const auto valid = [&](int disk) {
        return callHost<bool>(recovery, "isDiskIndexValid", ConnectionRule::Call,
                              QVariant(QVariantMap{{"diskIndex", disk}, {"isPartRecov", true}}))
            .value();
    };
    EXPECT_TRUE(valid(1));
    EXPECT_FALSE(valid(4));
    EXPECT_FALSE(valid(9));
    const auto sick = [&](int disk) {
        return callHost<bool>(hostObject(scene, "partitionmanager"), "hasDiskSmartInfoError",
                              ConnectionRule::Direct, disk)
            .value();
    };
    EXPECT_TRUE(sick(1));
    EXPECT_FALSE(sick(0));
}

TEST(HostAnswers, BusyAndPopuped_FollowTheMachinesSettings)
{
    host::Machine machine = testMachine();
    machine.busy = true;
    machine.popuped = true;
    host::Scene scene(simulated(machine), -1);
    EXPECT_TRUE(readWindowProperty("popuped").toBool());
    EXPECT_TRUE(hostObject(scene, "__zormain")->property("busy").toBool());
}

TEST(HostAnswers, OpenDialog_IsPopuped)
{
    host::Scene scene(simulated(testMachine()), -1);
    EXPECT_FALSE(readWindowProperty("popuped").toBool());
    scene.core().setDialogOpen(true);
    EXPECT_TRUE(readWindowProperty("popuped").toBool());
}

TEST(HostAnswers, ClosingHost_IsBusyAndRejectsQuestions)
{
    host::Scene scene(simulated(testMachine()), -1);
    scene.core().status().setClosing();
    EXPECT_TRUE(readWindowProperty("popuped").toBool());
    EXPECT_TRUE(hostObject(scene, "__zormain")->property("busy").toBool());
    EXPECT_FALSE(toolBox(scene, 2, {}).toBool());
    const QVariantMap question{{"driveLetter", "D"}, {"TestFunValid", true}};
    EXPECT_FALSE(callHost<bool>(hostObject(scene, "partitionmanager"), "doFunFromAI", ConnectionRule::Call,
                                16, question)
                     .value());
}

} // namespace
