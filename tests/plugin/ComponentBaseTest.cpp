// The members that a component inherits, and the order of its virtual operations.
#include "plugin/ComponentBase.h"
#include "tests/plugin/HostView.h"
#include "tests/plugin/ScriptReach.h"
#include "tests/support/Printing.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

namespace {

class BareComponent : public CComponentBase
{
public:
    QString name() const override { return QStringLiteral("RccProbe"); }
};

// Answers each operation so that it can be told from the others.
class LoudComponent : public CComponentBase
{
public:
    QString displayName() const override { return QStringLiteral("displayName"); }
    QString icon() const override { return QStringLiteral("icon"); }
    QString name() const override { return QStringLiteral("Loud"); }
    QString reservedText() const override { return QStringLiteral("reservedText"); }
    QString source() const override { return QStringLiteral("source"); }
    void init() override { calls.append(QStringLiteral("init")); }
    bool canLayout() const override { return false; }
    QVariantList reservedList() const override { return {QStringLiteral("reservedList")}; }
    void loadResource(QString resourceName) override { calls.append(QStringLiteral("load ") + resourceName); }
    void setEngine(QQmlApplicationEngine*) override { calls.append(QStringLiteral("setEngine")); }
    QVariantMap resProperty() const override { return {{QStringLiteral("resProperty"), 1}}; }
    QStringList calls;

protected:
    void Release() override { calls.append(QStringLiteral("Release")); }
    void retranslate() override { calls.append(QStringLiteral("retranslate")); }
};

TEST(ComponentBase, VirtualOperations_LieInTheOrderOfTheContract)
{
    LoudComponent component;
    HostView* view = hostView(&component);
    const HostAnswers answers = callGetters(view);
    EXPECT_EQ(answers.displayName, QStringLiteral("displayName"));
    EXPECT_EQ(answers.icon, QStringLiteral("icon"));
    EXPECT_EQ(answers.name, QStringLiteral("Loud"));
    EXPECT_EQ(answers.reservedText, QStringLiteral("reservedText"));
    EXPECT_EQ(answers.source, QStringLiteral("source"));
    EXPECT_FALSE(answers.canLayout);
    EXPECT_EQ(answers.reservedList, QVariantList{QStringLiteral("reservedList")});
    EXPECT_EQ(answers.engine, nullptr);
    EXPECT_EQ(answers.resProperty.size(), 1);
    callInit(view);
    callLoadResource(view, QStringLiteral("x"));
    callSetEngine(view, nullptr);
    callRelease(view);
    callRetranslate(view);
    EXPECT_EQ(component.calls,
              (QStringList{QStringLiteral("init"), QStringLiteral("load x"), QStringLiteral("setEngine"),
                           QStringLiteral("Release"), QStringLiteral("retranslate")}));
}

TEST(ComponentBase, Defaults_FollowTheName)
{
    BareComponent component;
    EXPECT_EQ(component.displayName(), QStringLiteral("RccProbe"));
    EXPECT_EQ(component.icon(), QStringLiteral("qrc:/res/rccprobe_icon.svg"));
    EXPECT_EQ(component.source(), QStringLiteral("qrc:/qml/RccProbe.qml"));
    EXPECT_EQ(component.reservedText(), QString());
    EXPECT_TRUE(component.reservedList().isEmpty());
    EXPECT_TRUE(component.resProperty().isEmpty());
    EXPECT_TRUE(component.canLayout());
    EXPECT_EQ(component.engine(), nullptr);
}

TEST(ComponentBase, Init_RegistersTheResourceFileBesideTheApplication)
{
    BareComponent component;
    ASSERT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/RccProbe.rcc")));
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/RccProbe.txt")));
    component.init();
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/probe/RccProbe.txt")));
}

QStringList messages;

TEST(ComponentBase, LoadResourceOfAMissingFile_IsIgnoredWithoutAMessage)
{
    messages.clear();
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { messages.append(text); });
    const QStringList before = QDir(QStringLiteral(":/")).entryList();
    BareComponent component;
    component.loadResource(QStringLiteral("NotThere"));
    EXPECT_EQ(QDir(QStringLiteral(":/")).entryList(), before);
    // A later file is registered all the same, and only the named one.
    component.loadResource(QStringLiteral("RccProbe"));
    qInstallMessageHandler(previous);
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/probe/RccProbe.txt")));
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/Loud.txt")));
    EXPECT_EQ(messages, QStringList());
}

TEST(ComponentBase, OwnInitWithoutTheBase_RegistersNothing)
{
    LoudComponent component;
    ASSERT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/Loud.rcc")));
    component.init();
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/Loud.txt")));
}

TEST(ComponentBase, SetEngine_PublishesTheObject)
{
    QQmlApplicationEngine engine;
    BareComponent component;
    component.setEngine(&engine);
    EXPECT_EQ(engine.rootContext()->contextProperty(QStringLiteral("rccprobe")).value<QObject*>(),
              &component);
    EXPECT_EQ(component.engine(), &engine);
    component.setEngine(nullptr);
    EXPECT_EQ(component.engine(), nullptr);
}

TEST(ComponentBase, SetEngine_KeepsTheObjectFromTheScriptsGarbageCollection)
{
    QQmlApplicationEngine engine;
    auto* component = new BareComponent;
    component->setEngine(&engine);
    const bool survived = survivesScript(engine, component);
    EXPECT_TRUE(survived);
    if (survived)
        delete component;
}

TEST(ComponentBase, WithoutSetEngine_TheScriptsGarbageCollectionDeletesTheObject)
{
    // Shows that the collection reaches an object whose ownership is not set.
    QQmlApplicationEngine engine;
    EXPECT_FALSE(survivesScript(engine, new BareComponent));
    auto* withoutEngine = new BareComponent;
    withoutEngine->setEngine(nullptr);
    EXPECT_FALSE(survivesScript(engine, withoutEngine));
}

TEST(ComponentBase, OnTranslate_TellsTheNameBeforeItTranslates)
{
    LoudComponent component;
    QObject::connect(&component, &CComponentBase::sigDisplayNameChanged,
                     [&] { component.calls.append(QStringLiteral("sigDisplayNameChanged")); });
    ASSERT_TRUE(QMetaObject::invokeMethod(&component, "onTranslate", Qt::DirectConnection));
    EXPECT_EQ(component.calls,
              (QStringList{QStringLiteral("sigDisplayNameChanged"), QStringLiteral("retranslate")}));
}

} // namespace
