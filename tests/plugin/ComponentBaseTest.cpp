// Inherited members of a component, and the order of its virtual functions.
#include "plugin/ComponentBase.h"
#include "tests/plugin/GarbageCollection.h"
#include "tests/plugin/HostView.h"
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

// Returns a distinct value from each virtual function.
class OverridingComponent : public CComponentBase
{
public:
    QString displayName() const override { return QStringLiteral("displayName"); }
    QString icon() const override { return QStringLiteral("icon"); }
    QString name() const override { return QStringLiteral("Overriding"); }
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

TEST(ComponentBase, VirtualFunctions_HaveTheOrderOfTheContract)
{
    OverridingComponent component;
    HostView* view = hostView(&component);
    const GetterResults results = callGetters(view);
    EXPECT_EQ(results.displayName, QStringLiteral("displayName"));
    EXPECT_EQ(results.icon, QStringLiteral("icon"));
    EXPECT_EQ(results.name, QStringLiteral("Overriding"));
    EXPECT_EQ(results.reservedText, QStringLiteral("reservedText"));
    EXPECT_EQ(results.source, QStringLiteral("source"));
    EXPECT_FALSE(results.canLayout);
    EXPECT_EQ(results.reservedList, QVariantList{QStringLiteral("reservedList")});
    EXPECT_EQ(results.engine, nullptr);
    EXPECT_EQ(results.resProperty.size(), 1);
    callInit(view);
    callLoadResource(view, QStringLiteral("x"));
    callSetEngine(view, nullptr);
    callRelease(view);
    callRetranslate(view);
    EXPECT_EQ(component.calls,
              (QStringList{QStringLiteral("init"), QStringLiteral("load x"), QStringLiteral("setEngine"),
                           QStringLiteral("Release"), QStringLiteral("retranslate")}));
}

TEST(ComponentBase, Defaults_DeriveFromTheName)
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

TEST(ComponentBase, Init_RegistersTheResourceFileNextToTheApplication)
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
    // The failure does not affect a later call, which registers only the named file.
    component.loadResource(QStringLiteral("RccProbe"));
    qInstallMessageHandler(previous);
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/probe/RccProbe.txt")));
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/Overriding.txt")));
    EXPECT_EQ(messages, QStringList());
}

TEST(ComponentBase, InitOverrideWithoutTheBaseCall_RegistersNoResource)
{
    OverridingComponent component;
    ASSERT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/Overriding.rcc")));
    component.init();
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/Overriding.txt")));
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

TEST(ComponentBase, SetEngine_ProtectsTheObjectFromGarbageCollection)
{
    QQmlApplicationEngine engine;
    auto* component = new BareComponent;
    component->setEngine(&engine);
    const bool survived = survivesGarbageCollection(engine, component);
    EXPECT_TRUE(survived);
    if (survived)
        delete component;
}

TEST(ComponentBase, WithoutSetEngine_GarbageCollectionDeletesTheObject)
{
    // Shows that the collection can delete an object whose ownership is not set.
    QQmlApplicationEngine engine;
    EXPECT_FALSE(survivesGarbageCollection(engine, new BareComponent));
    auto* withoutEngine = new BareComponent;
    withoutEngine->setEngine(nullptr);
    EXPECT_FALSE(survivesGarbageCollection(engine, withoutEngine));
}

TEST(ComponentBase, OnTranslate_EmitsDisplayNameChangedBeforeRetranslate)
{
    OverridingComponent component;
    QObject::connect(&component, &CComponentBase::sigDisplayNameChanged,
                     [&] { component.calls.append(QStringLiteral("sigDisplayNameChanged")); });
    ASSERT_TRUE(QMetaObject::invokeMethod(&component, "onTranslate", Qt::DirectConnection));
    EXPECT_EQ(component.calls,
              (QStringList{QStringLiteral("sigDisplayNameChanged"), QStringLiteral("retranslate")}));
}

} // namespace
