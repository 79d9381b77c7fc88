// Finding host objects, and the thread on which their members run. The objects have configurable members.
#include "plugin/HostAccess.h"
#include "plugin/HostCall.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtGui/QWindow>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace {

QThread* applicationThread()
{
    return QCoreApplication::instance()->thread();
}

// Declares members in C++ for a class that inherits them.
class Base : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int inherited READ inherited CONSTANT)

public:
    int inherited() const { return 5; }
    Q_INVOKABLE int plain() { return 1; }
    Q_INVOKABLE int overloaded(int) { return 2; }
    Q_INVOKABLE int overloaded(const QString&) { return 3; }
};

class Derived : public Base
{
    Q_OBJECT

public:
    Q_INVOKABLE int own(int, const QVariantMap&) { return 4; }
    Q_INVOKABLE int plain(int) { return 6; }
};

TEST(FindHostMethod, OfANullObject_IsInvalid)
{
    EXPECT_FALSE(findHostMethod(nullptr, "plain").isValid());
}

TEST(FindHostMethod, ByFullSignature_FindsExactlyThatOverloadWithAnySpacing)
{
    Derived object;
    EXPECT_EQ(findHostMethod(&object, "overloaded(QString)").methodSignature(), "overloaded(QString)");
    EXPECT_EQ(findHostMethod(&object, " overloaded( const QString & ) ").methodSignature(),
              "overloaded(QString)");
    EXPECT_EQ(findHostMethod(&object, "own(int,QVariantMap)").methodSignature(), "own(int,QVariantMap)");
}

TEST(FindHostMethod, ByBareName_FindsAMethodThatHasArguments)
{
    Derived object;
    EXPECT_EQ(findHostMethod(&object, "own").methodSignature(), "own(int,QVariantMap)");
}

TEST(FindHostMethod, ByBareName_OfTwoOverloadsTheLowerIndexWins)
{
    Derived object;
    EXPECT_EQ(findHostMethod(&object, "overloaded").methodSignature(), "overloaded(int)");
    // An inherited method precedes a method of the class itself.
    EXPECT_EQ(findHostMethod(&object, "plain").methodSignature(), "plain()");
    RecordingHost host;
    host.spec("toolbox").method("two(QString)", "bool").method("two(int)", "bool");
    host.build();
    EXPECT_EQ(findHostMethod(host.object("toolbox"), "two").methodSignature(), "two(QString)");
}

TEST(FindHostMethod, Inherited_IsFoundBeforeTheMethodsOfTheClass)
{
    Derived object;
    EXPECT_EQ(findHostMethod(&object, "deleteLater").methodSignature(), "deleteLater()");
}

TEST(FindHostMethod, ByAnotherNameCaseOrSignature_IsInvalid)
{
    Derived object;
    for (const char* name : {"", "missing", "Own", "own(int)", "ow", "own("})
        EXPECT_FALSE(findHostMethod(&object, name).isValid()) << name;
}

TEST(FindHostProperty, FindsOwnAndInheritedByExactName)
{
    Derived object;
    EXPECT_EQ(findHostProperty(&object, "inherited").read(&object), QVariant(5));
    EXPECT_TRUE(findHostProperty(&object, "objectName").isValid());
    for (const char* name : {"", "Inherited", "inherited()", "missing"})
        EXPECT_FALSE(findHostProperty(&object, name).isValid()) << name;
    EXPECT_FALSE(findHostProperty(nullptr, "inherited").isValid());
}

TEST(ContextObject, KnownUnknownAndWithoutAnEngine)
{
    RecordingHost host;
    host.without("clone").build();
    EXPECT_EQ(contextObject(host.engine(), "toolbox"), host.object("toolbox"));
    EXPECT_EQ(contextObject(host.engine(), "aibridge"), host.bridge());
    EXPECT_EQ(contextObject(host.engine(), "clone"), nullptr);
    EXPECT_EQ(contextObject(nullptr, "toolbox"), nullptr);
    host.engine()->rootContext()->setContextProperty("clone", 5);
    EXPECT_EQ(contextObject(host.engine(), "clone"), nullptr);
}

TEST(FindRootChild, KnownUnknownWithoutRootObjectsAndWithoutAnEngine)
{
    RecordingHost host;
    host.build();
    EXPECT_EQ(findRootChild(host.engine(), "__zormain"), host.object("__zormain"));
    EXPECT_EQ(findRootChild(host.engine(), "__other"), nullptr);
    const QQmlApplicationEngine empty;
    EXPECT_EQ(findRootChild(&empty, "__zormain"), nullptr);
    EXPECT_EQ(findRootChild(nullptr, "__zormain"), nullptr);
}

TEST(FindRootChild, LooksInTheFirstRootOnlyAndAtAnyDepth)
{
    QQmlApplicationEngine engine;
    engine.loadData("import QtQml 2.15\nQtObject {}\n");
    engine.loadData(
        "import QtQml 2.15\nQtObject { property QtObject inner: QtObject { objectName: 'second' } }\n");
    ASSERT_EQ(engine.rootObjects().size(), 2);
    auto* middle = new QObject(engine.rootObjects().first());
    auto* deep = new QObject(middle);
    deep->setObjectName("deep");
    EXPECT_EQ(findRootChild(&engine, "deep"), deep);
    auto* elsewhere = new QObject(engine.rootObjects().last());
    elsewhere->setObjectName("elsewhere");
    EXPECT_EQ(findRootChild(&engine, "elsewhere"), nullptr);
}

TEST(Window, Missing_ReadsAndCallsReturnAnInvalidValue)
{
    ASSERT_EQ(firstTopLevelWindow(), nullptr);
    EXPECT_FALSE(readWindowProperty("popuped").isValid());
    EXPECT_FALSE(callWindowMethod("closeGuide", QVariant()).isValid());
    runOnOtherThread([] { EXPECT_FALSE(callWindowMethod("closeGuide", QVariant()).isValid()); });
}

TEST(Window, OfTwo_TheFirstIsUsed)
{
    RecordingHost host;
    host.build();
    const QWindow second;
    EXPECT_EQ(firstTopLevelWindow(), host.window());
}

TEST(Window, AMethod_ReceivesTheArgumentAndReturnsItsResultOnEitherThread)
{
    RecordingHost host;
    host.spec("window").answer(
        "closeGuide", [](const QVariantList& arguments) { return QVariant(arguments.first().toInt() + 1); });
    host.build();
    EXPECT_EQ(callWindowMethod("closeGuide", 4), QVariant(5));
    QVariant answer;
    runOnOtherThread([&] { answer = callWindowMethod("closeGuide", 5); });
    EXPECT_EQ(answer, QVariant(6));
    for (const HostCallRecord& call : host.recorder().calls())
        EXPECT_EQ(call.thread, applicationThread());
}

TEST(Window, AMissingMemberOrOneOfAnotherSignature_ReturnsAnInvalidValueAndIsNotRun)
{
    RecordingHost host;
    host.spec("window")
        .method("two(QVariant,QVariant)", "QVariant")
        .method("number(int)", "QVariant")
        .method("flag(QVariant)", "bool");
    host.build();
    for (const char* name : {"missing", "two", "number", "flag"}) {
        EXPECT_FALSE(callWindowMethod(name, 1).isValid()) << name;
        runOnOtherThread([&] { EXPECT_FALSE(callWindowMethod(name, 1).isValid()) << name; });
    }
    EXPECT_FALSE(readWindowProperty("missing").isValid());
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST(Window, AProperty_IsReadOnTheCallersThread)
{
    RecordingHost host;
    QThread* reader = nullptr;
    host.spec("window").reading("popuped", [&](const QVariantList&) {
        reader = QThread::currentThread();
        return QVariant(true);
    });
    host.build();
    QThread* caller = nullptr;
    runOnOtherThread([&] {
        caller = QThread::currentThread();
        EXPECT_EQ(readWindowProperty("popuped"), QVariant(true));
    });
    EXPECT_EQ(reader, caller);
}

// Records the thread that its method ran on.
class Callee : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void run() { ranOn = QThread::currentThread(); }
    Q_INVOKABLE void doNothing() {}

    std::atomic<QThread*> ranOn{nullptr};
};

// An object on its own thread. serve() starts the event loop of that thread.
class ForeignCallee
{
public:
    ForeignCallee() { callee.moveToThread(&thread); }
    ~ForeignCallee()
    {
        thread.quit();
        thread.wait();
    }
    void serve()
    {
        thread.start();
        // Returns after all earlier events have been processed.
        EXPECT_TRUE(orderHost(&callee, "doNothing", ConnectionRule::Blocking));
    }

    QThread thread;
    Callee callee;
};

bool order(QObject* object, ConnectionRule rule)
{
    return orderHost(object, "run", rule);
}

TEST(Connection, OnTheApplicationThread_AnObjectOfThatThreadRunsThereAtOnce)
{
    for (const ConnectionRule rule : {ConnectionRule::Call, ConnectionRule::Window, ConnectionRule::Direct}) {
        Callee callee;
        EXPECT_TRUE(order(&callee, rule));
        EXPECT_EQ(callee.ranOn, applicationThread()) << int(rule);
    }
}

TEST(Connection, CallRuleOnTheApplicationThread_QueuesToTheObjectsOwnThread)
{
    ForeignCallee foreign;
    EXPECT_TRUE(order(&foreign.callee, ConnectionRule::Call));
    EXPECT_EQ(foreign.callee.ranOn, nullptr);
    foreign.serve();
    EXPECT_EQ(foreign.callee.ranOn, &foreign.thread);
}

TEST(Connection, WindowAndDirectRuleOnTheApplicationThread_RunThereWhateverTheObjectsThread)
{
    for (const ConnectionRule rule : {ConnectionRule::Window, ConnectionRule::Direct}) {
        ForeignCallee foreign;
        EXPECT_TRUE(order(&foreign.callee, rule));
        EXPECT_EQ(foreign.callee.ranOn, applicationThread()) << int(rule);
    }
}

TEST(Connection, BlockingRuleOnTheApplicationThread_WaitsForTheObjectsThread)
{
    ForeignCallee foreign;
    foreign.serve();
    EXPECT_TRUE(order(&foreign.callee, ConnectionRule::Blocking));
    EXPECT_EQ(foreign.callee.ranOn, &foreign.thread);
}

TEST(Connection, OnAnyOtherThread_AllRulesButDirectWaitForTheApplicationThread)
{
    for (const ConnectionRule rule :
         {ConnectionRule::Call, ConnectionRule::Window, ConnectionRule::Blocking}) {
        Callee callee;
        runOnOtherThread([&] {
            EXPECT_TRUE(order(&callee, rule));
            EXPECT_EQ(callee.ranOn, applicationThread()) << int(rule);
        });
    }
}

TEST(Connection, CallRuleOnAnyOtherThread_WaitsForTheThreadOfTheObject)
{
    ForeignCallee foreign;
    foreign.serve();
    runOnOtherThread([&] {
        EXPECT_TRUE(order(&foreign.callee, ConnectionRule::Call));
        EXPECT_EQ(foreign.callee.ranOn, &foreign.thread);
    });
}

TEST(Connection, DirectRuleOnAnyOtherThread_RunsThere)
{
    Callee callee;
    runOnOtherThread([&] {
        EXPECT_TRUE(order(&callee, ConnectionRule::Direct));
        EXPECT_EQ(callee.ranOn, QThread::currentThread());
    });
}

TEST(Connection, ACallFromAnotherThread_ReturnsOnlyAfterTheMethodRan)
{
    RecordingHost host;
    std::atomic<bool> ran{false};
    host.spec("toolbox").answer("check4kAlign", [&](const QVariantList&) {
        ran = true;
        return QVariant(true);
    });
    host.build();
    bool ranBefore = true;
    bool ranAfter = false;
    runOnOtherThread([&] {
        ranBefore = ran;
        const auto answer =
            callHost<bool>(host.object("toolbox"), "check4kAlign", ConnectionRule::Call, QVariant(1));
        ranAfter = ran;
        EXPECT_EQ(answer, std::optional<bool>(true));
    });
    EXPECT_FALSE(ranBefore);
    EXPECT_TRUE(ranAfter);
    EXPECT_EQ(host.recorder().calls().front().thread, applicationThread());
}

TEST(Connection, ADirectCallFromAnotherThread_RunsThere)
{
    RecordingHost host;
    host.build();
    QThread* caller = nullptr;
    runOnOtherThread([&] {
        caller = QThread::currentThread();
        callHost<bool>(host.object("toolbox"), "check4kAlign", ConnectionRule::Direct, QVariant(1));
    });
    EXPECT_EQ(host.recorder().calls().front().thread, caller);
}

TEST(HostMethod, WithAnotherReturnTypeArgumentTypeOrTooFewArguments_IsRejectedWithoutBeingRun)
{
    RecordingHost host;
    host.spec("toolbox")
        .method("text(QVariant)", "QString")
        .method("map(QVariantMap)", "bool")
        .method("two(QVariant,QVariant)", "bool")
        .method("silent(QVariant)");
    host.build();
    QObject* object = host.object("toolbox");
    const auto refused = [object] {
        for (const char* name : {"text", "map", "two", "silent", "missing"})
            EXPECT_FALSE(callHost<bool>(object, name, ConnectionRule::Call, QVariant(1)).has_value()) << name;
        EXPECT_FALSE(callHost<bool>(nullptr, "text", ConnectionRule::Call, QVariant(1)).has_value());
        EXPECT_FALSE(orderHost(object, "map", ConnectionRule::Call, QVariant(1)));
    };
    refused();
    runOnOtherThread(refused);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
    // An order ignores the result, and a method may take fewer arguments than are passed.
    EXPECT_TRUE(orderHost(object, "text", ConnectionRule::Call, QVariant(1)));
    EXPECT_TRUE(orderHost(object, "silent", ConnectionRule::Call, QVariant(1), QVariant(2)));
    EXPECT_EQ(host.recorder().sequence(), QStringList({"toolbox.text", "toolbox.silent"}));
}

TEST(HostMethod, AfterItsObjectWasDestroyed_IsNotValid)
{
    auto object = std::make_unique<Derived>();
    const HostMethod method(object.get(), "plain");
    EXPECT_TRUE(method.isValid());
    EXPECT_EQ(method.call<int>(ConnectionRule::Call), std::optional<int>(1));
    object.reset();
    EXPECT_FALSE(method.isValid());
    EXPECT_FALSE(method.call<int>(ConnectionRule::Call).has_value());
}

} // namespace

#include "HostAccessTest.moc"
