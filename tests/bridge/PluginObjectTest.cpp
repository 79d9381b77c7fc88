// The component loaded from the library file: meta-object, virtual functions, and lifetime from the factory
// to Release.
#include "tests/plugin/GarbageCollection.h"
#include "tests/plugin/HostView.h"
#include "tests/support/FakeNetstat.h"
#include "tests/support/Printing.h"
#include "tests/support/RawClient.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QLibrary>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace {

QString libraryFile()
{
    return QStringLiteral(AIBRIDGE_LIBRARY);
}

QObject* newComponent()
{
    using Factory = QObject* (*)();
    static QLibrary library(libraryFile());
    const auto factory = reinterpret_cast<Factory>(library.resolve("getInstance"));
    return factory == nullptr ? nullptr : factory();
}

bool isServerRunning(QObject* component)
{
    bool running = true;
    EXPECT_TRUE(QMetaObject::invokeMethod(component, "isServerRunning", Qt::DirectConnection,
                                          Q_RETURN_ARG(bool, running)));
    return running;
}

class PluginObject : public testing::Test
{
protected:
    PluginObject() : component_(newComponent())
    {
        if (component_ == nullptr)
            throw std::runtime_error("cannot create a component from the library");
    }

    QObject* component() const { return component_.get(); }
    HostView* view() const { return hostView(component_.get()); }
    const QMetaObject* meta() const { return component_->metaObject(); }

    // Starts the service on an unused port and waits until it listens.
    static int start(QObject* component)
    {
        const int port = unusedPort();
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port)));
        callInit(hostView(component));
        EXPECT_TRUE(pumpUntil([&] { return RawClient::isListening(port); }));
        return port;
    }

    std::unique_ptr<QObject> component_;
};

struct Method
{
    QMetaMethod::MethodType type;
    QByteArray signature;
    QByteArray returnType;
    QList<QByteArray> names;
};

void expectMethods(const QMetaObject* meta, const std::vector<Method>& methods)
{
    ASSERT_EQ(meta->methodCount() - meta->methodOffset(), int(methods.size()));
    for (std::size_t i = 0; i < methods.size(); ++i) {
        const QMetaMethod method = meta->method(meta->methodOffset() + int(i));
        EXPECT_EQ(method.methodType(), methods[i].type) << i;
        EXPECT_EQ(method.methodSignature(), methods[i].signature) << i;
        EXPECT_EQ(QByteArray(method.typeName()), methods[i].returnType) << i;
        EXPECT_EQ(method.parameterNames(), methods[i].names) << i;
    }
}

TEST_F(PluginObject, MetaObject_HasElevenMethodsInOrder)
{
    EXPECT_STREQ(meta()->className(), "AIBridge");
    EXPECT_EQ(meta()->propertyCount(), meta()->propertyOffset());
    EXPECT_EQ(meta()->enumeratorCount(), meta()->enumeratorOffset());
    EXPECT_EQ(meta()->classInfoCount(), meta()->classInfoOffset());
    const auto signal = QMetaMethod::Signal;
    const auto invokable = QMetaMethod::Method;
    expectMethods(meta(), {
                              {signal, "sigRecScanResult(QVariant)", "void", {"v"}},
                              {signal, "sigCloneResult(QVariant)", "void", {"v"}},
                              {signal, "sigConvertResult(QVariant)", "void", {"v"}},
                              {signal, "sigAbout2CallFun(QString)", "void", {"toolCalls"}},
                              {signal, "sigAfterCallFun(QString,bool)", "void", {"result", "b"}},
                              {signal, "sigClearRecScan()", "void", {}},
                              {invokable, "setDiskInfo(QVariantList)", "void", {"info"}},
                              {invokable, "isServerRunning()", "bool", {}},
                              {invokable, "beginRecScan()", "void", {}},
                              {invokable, "stopRecScan()", "void", {}},
                              {invokable, "doRecOperation(QVariant)", "void", {"info"}},
                          });
}

TEST_F(PluginObject, Invokables_ArePublic)
{
    for (int i = meta()->methodOffset(); i < meta()->methodCount(); ++i)
        EXPECT_EQ(meta()->method(i).access(), QMetaMethod::Public) << i;
}

TEST_F(PluginObject, BaseMetaObject_HasItsMethodsInOrder)
{
    const QMetaObject* base = meta()->superClass();
    EXPECT_STREQ(base->className(), "CComponentBase");
    EXPECT_EQ(base->superClass(), &QObject::staticMetaObject);
    const auto signal = QMetaMethod::Signal;
    expectMethods(base, {
                            {signal, "sigNameChanged()", "void", {}},
                            {signal, "sigDisplayNameChanged()", "void", {}},
                            {signal, "sigCurrentLanguageChanged()", "void", {}},
                            {signal, "sigIconChanged()", "void", {}},
                            {signal, "sigCanLayoutChanged()", "void", {}},
                            {QMetaMethod::Slot, "onTranslate()", "void", {}},
                        });
    EXPECT_EQ(base->method(base->indexOfMethod("onTranslate()")).access(), QMetaMethod::Protected);
}

TEST_F(PluginObject, BaseProperties_AreReadOnlyAndHaveNotifySignals)
{
    const QMetaObject* base = meta()->superClass();
    const std::vector<std::array<const char*, 3>> expected{
        {{"name", "QString", "sigNameChanged"}},
        {{"displayName", "QString", "sigDisplayNameChanged"}},
        {{"icon", "QString", "sigIconChanged"}},
        {{"canLayout", "bool", "sigCanLayoutChanged"}}};
    ASSERT_EQ(base->propertyCount() - base->propertyOffset(), int(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const QMetaProperty property = base->property(base->propertyOffset() + int(i));
        EXPECT_STREQ(property.name(), expected[i][0]);
        EXPECT_STREQ(property.typeName(), expected[i][1]);
        EXPECT_EQ(property.notifySignal().name(), QByteArray(expected[i][2]));
        EXPECT_TRUE(property.isReadable());
        EXPECT_FALSE(property.isWritable());
    }
}

TEST_F(PluginObject, VirtualFunctions_HaveFixedPositions)
{
    const GetterResults results = callGetters(view());
    EXPECT_EQ(results.displayName, QStringLiteral("AIBridge"));
    EXPECT_EQ(results.icon, QStringLiteral("qrc:/res/aibridge_icon.svg"));
    EXPECT_EQ(results.name, QStringLiteral("AIBridge"));
    EXPECT_EQ(results.reservedText, QString());
    EXPECT_EQ(results.source, QStringLiteral("qrc:/qml/AIBridge.qml"));
    EXPECT_FALSE(results.canLayout);
    EXPECT_TRUE(results.reservedList.isEmpty());
    EXPECT_EQ(results.engine, nullptr);
    EXPECT_TRUE(results.resProperty.isEmpty());
}

TEST_F(PluginObject, Properties_AreReadableThroughTheMetaObject)
{
    EXPECT_EQ(component()->property("name"), QVariant(QStringLiteral("AIBridge")));
    EXPECT_EQ(component()->property("displayName"), QVariant(QStringLiteral("AIBridge")));
    EXPECT_EQ(component()->property("icon"), QVariant(QStringLiteral("qrc:/res/aibridge_icon.svg")));
    EXPECT_EQ(component()->property("canLayout"), QVariant(false));
}

TEST_F(PluginObject, SetEngine_PublishesTheObjectUnderItsLowercaseName)
{
    QQmlApplicationEngine engine;
    callSetEngine(view(), &engine);
    EXPECT_EQ(engine.rootContext()->contextProperty(QStringLiteral("aibridge")).value<QObject*>(),
              component());
    EXPECT_EQ(callGetters(view()).engine, &engine);
    callSetEngine(view(), nullptr);
}

TEST_F(PluginObject, SetEngine_ProtectsTheObjectFromGarbageCollection)
{
    QQmlApplicationEngine engine;
    callSetEngine(view(), &engine);
    const bool survived = survivesGarbageCollection(engine, component());
    EXPECT_TRUE(survived);
    if (survived)
        callSetEngine(view(), nullptr);
    else
        component_.release();
}

TEST_F(PluginObject, SetEngineWithNull_StoresNullAndPublishesNothing)
{
    QQmlApplicationEngine engine;
    callSetEngine(view(), &engine);
    // The component must not use the previous engine again.
    engine.rootContext()->setContextProperty(QStringLiteral("aibridge"), QVariant(5));
    callSetEngine(view(), nullptr);
    EXPECT_EQ(callGetters(view()).engine, nullptr);
    EXPECT_EQ(engine.rootContext()->contextProperty(QStringLiteral("aibridge")), QVariant(5));
    // The ownership is not set either.
    QObject* fresh = newComponent();
    callSetEngine(hostView(fresh), nullptr);
    EXPECT_FALSE(survivesGarbageCollection(engine, fresh));
}

TEST_F(PluginObject, Qml_CallsTheInvokablesThroughTheContextProperty)
{
    QQmlApplicationEngine engine;
    callSetEngine(view(), &engine);
    engine.loadData(
        "import QtQml 2.15\nQtObject { property bool running: true\n"
        "Component.onCompleted: { aibridge.stopRecScan(); aibridge.setDiskInfo([{diskIndex: 3}]);\n"
        "running = aibridge.isServerRunning() } }\n");
    ASSERT_FALSE(engine.rootObjects().isEmpty());
    EXPECT_EQ(engine.rootObjects().first()->property("running"), QVariant(false));
    callSetEngine(view(), nullptr);
}

TEST_F(PluginObject, BeforeInit_NoServiceRunsAndReleaseReturns)
{
    EXPECT_FALSE(isServerRunning(component()));
    // A Release that waited would exceed the test's timeout.
    callRelease(view());
    callRelease(view());
    EXPECT_FALSE(isServerRunning(component()));
    EXPECT_EQ(component()->parent(), nullptr);
    EXPECT_TRUE(component()->children().isEmpty());
}

TEST_F(PluginObject, StopRecScan_HasNoEffect)
{
    EXPECT_TRUE(QMetaObject::invokeMethod(component(), "stopRecScan", Qt::DirectConnection));
    EXPECT_TRUE(component()->children().isEmpty());
}

TEST_F(PluginObject, GetInstance_ReturnsANewObjectOnEachCall)
{
    const std::unique_ptr<QObject> other(newComponent());
    ASSERT_NE(other, nullptr);
    EXPECT_NE(other.get(), component());
    EXPECT_EQ(other->metaObject(), meta());
}

TEST_F(PluginObject, TwoInitialisedObjects_ServeOnTwoPortsUntilEachIsReleased)
{
    const std::unique_ptr<QObject> other(newComponent());
    const int firstPort = start(component());
    const int secondPort = start(other.get());
    EXPECT_NE(firstPort, secondPort);
    EXPECT_TRUE(isServerRunning(component()));
    callRelease(view());
    EXPECT_FALSE(isServerRunning(component()));
    EXPECT_TRUE(isServerRunning(other.get()));
    EXPECT_EQ(RawClient(secondPort).ask(wire::call("Init", 4)).sequence, 4);
    callRelease(hostView(other.get()));
    EXPECT_FALSE(isServerRunning(other.get()));
}

TEST_F(PluginObject, Init_StartsOneChildThreadAndRegistersNoResource)
{
    ASSERT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/AIBridge.rcc")));
    start(component());
    ASSERT_EQ(component()->children().size(), 1);
    EXPECT_NE(qobject_cast<QThread*>(component()->children().first()), nullptr);
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/probe/AIBridge.txt")));
    callRelease(view());
    EXPECT_EQ(component()->children().size(), 1);
}

TEST_F(PluginObject, SecondReleaseAfterAService_ReturnsAndKeepsTheThread)
{
    start(component());
    callRelease(view());
    const QPointer<QObject> thread(component()->children().first());
    callRelease(view());
    EXPECT_FALSE(isServerRunning(component()));
    EXPECT_EQ(component()->children(), QObjectList{thread.data()});
}

TEST_F(PluginObject, DeleteLaterAfterRelease_DestroysTheThread)
{
    start(component());
    callRelease(view());
    const QPointer<QObject> thread(component()->children().first());
    const QPointer<QObject> deleted(component_.release());
    deleted->deleteLater();
    EXPECT_TRUE(pumpUntil([&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return deleted.isNull();
    }));
    EXPECT_TRUE(thread.isNull());
}

} // namespace
