// Signatures of host methods that the library calls, with hosts written in C++ and in QML, from the
// application thread and from another one.
#include "plugin/HostSignature.h"
#include "bridge/AIBridge.h"
#include "plugin/HostCall.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaType>
#include <QtCore/QThread>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

// Registered through the parameter types of Page's meta-object.
enum class Declared { Zero, Seven = 7 };
Q_DECLARE_METATYPE(Declared)

namespace {

class Enumerations : public QObject
{
    Q_OBJECT

public:
    enum class Inherited { Zero, Seven = 7 };
    Q_ENUM(Inherited)
};

// Each member records its call and its argument.
class Page : public Enumerations
{
    Q_OBJECT

public:
    enum Plain : int { PlainZero, PlainSeven = 7 };
    Q_ENUM(Plain)
    enum class Scoped { Zero, Seven = 7 };
    Q_ENUM(Scoped)
    enum class Narrow : quint8 { Zero, Seven = 7 };
    Q_ENUM(Narrow)
    enum class Wide : qint64 { Zero, Seven = 7 };
    Q_ENUM(Wide)
    enum class Registered { Zero, Seven = 7 };
    Q_ENUM(Registered)
    enum class RegisteredNarrow : quint8 { Zero, Seven = 7 };
    Q_ENUM(RegisteredNarrow)
    enum class RegisteredWide : qint64 { Zero, Seven = 7 };
    Q_ENUM(RegisteredWide)
    enum class RegisteredBool : bool { No, Yes };
    Q_ENUM(RegisteredBool)
    enum class Bool : bool { No, Yes };
    Q_ENUM(Bool)
    enum Unknown : int { UnknownZero, UnknownSeven = 7 };
    enum Flag : int { FlagOne = 1 };
    Q_DECLARE_FLAGS(Flags, Flag)
    Q_FLAG(Flags)

    // Arguments for a value that the library passes as int.
    Q_INVOKABLE bool takesInt(int v) { return recordCall(v); }
    Q_INVOKABLE bool takesUint(uint v) { return recordCall(v); }
    Q_INVOKABLE bool takesQint32(qint32 v) { return recordCall(v); }
    Q_INVOKABLE bool takesQuint32(const quint32& v) { return recordCall(v); }
    Q_INVOKABLE bool takesLong(long v) { return recordCall(v); }
    Q_INVOKABLE bool takesUlong(ulong v) { return recordCall(qint64(v)); }
    Q_INVOKABLE bool takesPlain(Plain v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesScoped(Scoped v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesSpelledScoped(Page::Scoped v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesNarrow(Narrow v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesWide(Wide v) { return recordCall(qint64(v)); }
    Q_INVOKABLE void moveToApplicationThread() { moveToThread(QCoreApplication::instance()->thread()); }
    Q_INVOKABLE bool takesInherited(Inherited v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesRegistered(Registered v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesSpelledRegistered(Page::Registered v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesDeclared(Declared v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesFlag(Flag v) { return recordCall(v); }
    Q_INVOKABLE bool takesRegisteredNarrow(RegisteredNarrow v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesRegisteredWide(RegisteredWide v) { return recordCall(qint64(v)); }
    Q_INVOKABLE bool takesRegisteredBool(RegisteredBool v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesUnknown(Unknown v) { return recordCall(v); }
    Q_INVOKABLE bool takesStdInt(std::int32_t v) { return recordCall(v); }
    Q_INVOKABLE bool takesFlags(Flags v) { return recordCall(v); }
    Q_INVOKABLE bool takesShort(short v) { return recordCall(v); }
    Q_INVOKABLE bool takesUshort(ushort v) { return recordCall(v); }
    Q_INVOKABLE bool takesChar(char v) { return recordCall(v); }
    Q_INVOKABLE bool takesSchar(signed char v) { return recordCall(v); }
    Q_INVOKABLE bool takesUchar(uchar v) { return recordCall(v); }
    Q_INVOKABLE bool takesLonglong(qlonglong v) { return recordCall(v); }
    Q_INVOKABLE bool takesUlonglong(qulonglong v) { return recordCall(qint64(v)); }
    Q_INVOKABLE bool takesBool(bool v) { return recordCall(v); }
    Q_INVOKABLE bool takesBoolEnum(Bool v) { return recordCall(int(v)); }
    Q_INVOKABLE bool takesFloat(float v) { return recordCall(qint64(v)); }
    Q_INVOKABLE bool takesDouble(double v) { return recordCall(qint64(v)); }
    Q_INVOKABLE bool takesQchar(QChar v) { return recordCall(v.unicode()); }
    Q_INVOKABLE bool takesPointer(void*) { return recordCall(0); }
    Q_INVOKABLE bool takesString(QString) { return recordCall(0); }
    Q_INVOKABLE bool takesVariant(QVariant v) { return recordCall(v.toLongLong()); }
    Q_INVOKABLE bool takesMap(QVariantMap v) { return recordCall(v.size()); }
    Q_INVOKABLE bool takesSpelledMap(QMap<QString, QVariant> v) { return recordCall(v.size()); }
    Q_INVOKABLE bool takesHash(QVariantHash v) { return recordCall(v.size()); }
    Q_INVOKABLE bool takesStringMap(QMap<QString, QString> v) { return recordCall(v.size()); }
    Q_INVOKABLE bool takesNothing() { return recordCall(0); }

    // Results.
    Q_INVOKABLE QVariantMap returnsMap() { return recordResult(QVariantMap{{QStringLiteral("a"), 1}}); }
    Q_INVOKABLE QMap<QString, QVariant> returnsSpelledMap() { return returnsMap(); }
    Q_INVOKABLE QVariantHash returnsHash() { return recordResult(QVariantHash()); }
    Q_INVOKABLE int returnsInt() { return recordResult(1); }
    Q_INVOKABLE uint returnsUint() { return recordResult(1u); }
    Q_INVOKABLE Plain returnsPlain() { return recordResult(PlainSeven); }
    Q_INVOKABLE bool returnsBool() { return recordResult(true); }
    Q_INVOKABLE QVariant returnsVariant() { return recordResult(QVariant(true)); }
    Q_INVOKABLE void returnsVoid() { ++calls; }

    int calls = 0;
    qint64 value = -1;
    QThread* thread = nullptr;

private:
    bool recordCall(qint64 argument)
    {
        ++calls;
        value = argument;
        thread = QThread::currentThread();
        return true;
    }
    template <class T> T recordResult(T v)
    {
        ++calls;
        return v;
    }
};

void registerTypes()
{
    qRegisterMetaType<Page::Registered>();
    qRegisterMetaType<Page::RegisteredNarrow>();
    qRegisterMetaType<Page::RegisteredWide>();
    qRegisterMetaType<Page::RegisteredBool>();
}

constexpr bool kLongIsInt = sizeof(long) == sizeof(int);

struct MethodCase
{
    const char* method;
    bool called;
    friend void PrintTo(const MethodCase& row, std::ostream* out) { *out << row.method; }
};

template <class T> void expectCall(const MethodCase& row, const T& argument, qint64 value)
{
    registerTypes();
    Page page;
    const HostMethod method(&page, row.method);
    ASSERT_TRUE(method.isValid());
    const auto call = [&](ConnectionRule rule) {
        page.calls = 0;
        page.value = -1;
        EXPECT_EQ(method.call<bool>(rule, argument).has_value(), row.called);
        EXPECT_EQ(page.calls, row.called ? 1 : 0);
        if (row.called) {
            EXPECT_EQ(page.value, value);
        }
    };
    call(ConnectionRule::Call);
    call(ConnectionRule::Window);
    runOnOtherThread([&] {
        call(ConnectionRule::Call);
        if (row.called) {
            EXPECT_EQ(page.thread, QCoreApplication::instance()->thread());
        }
        call(ConnectionRule::Direct);
    });
    // hostcheck applies the same rule.
    const int type = qMetaTypeId<T>();
    const QMetaMethod declared = findHostMethod(&page, row.method);
    EXPECT_EQ(acceptsArguments(declared, &type, 1), row.called);
}

class IntArgument : public testing::TestWithParam<MethodCase>
{
};

TEST_P(IntArgument, IsPassedOnlyToAnIntegerOrEnumerationOfItsSize)
{
    expectCall(GetParam(), 7, 7);
}

const MethodCase kIntCases[] = {
    {"takesInt", true},
    {"takesUint", true},
    {"takesQint32", true},
    {"takesQuint32", true},
    {"takesLong", kLongIsInt},
    {"takesUlong", kLongIsInt},
    {"takesPlain", true},
    {"takesScoped", true},
    {"takesSpelledScoped", true},
    {"takesInherited", true},
    {"takesRegistered", true},
    {"takesSpelledRegistered", true},
    {"takesDeclared", true},
    {"takesFlag", true},
    // Qt does not know the size of these types and reads them from a 64-bit integer.
    {"takesNarrow", true},
    {"takesWide", true},
    {"takesRegisteredNarrow", false},
    {"takesRegisteredWide", false},
    {"takesRegisteredBool", false},
    {"takesUnknown", false},
    {"takesStdInt", false},
    {"takesFlags", false},
    {"takesShort", false},
    {"takesUshort", false},
    {"takesChar", false},
    {"takesSchar", false},
    {"takesUchar", false},
    {"takesLonglong", false},
    {"takesUlonglong", false},
    {"takesBool", false},
    {"takesFloat", false},
    {"takesDouble", false},
    {"takesQchar", false},
    {"takesPointer", false},
    {"takesString", false},
    {"takesVariant", false},
    {"takesMap", false},
};

const auto nameOfCase = [](const testing::TestParamInfo<MethodCase>& row) {
    return std::string(row.param.method);
};

INSTANTIATE_TEST_SUITE_P(Types, IntArgument, testing::ValuesIn(kIntCases), nameOfCase);

class BoolArgument : public testing::TestWithParam<MethodCase>
{
};

TEST_P(BoolArgument, IsPassedOnlyToABool)
{
    expectCall(GetParam(), true, 1);
}

const MethodCase kBoolCases[] = {
    {"takesBool", true},      {"takesChar", false},           {"takesSchar", false},
    {"takesUchar", false},    {"takesNarrow", false},         {"takesRegisteredNarrow", false},
    {"takesBoolEnum", false}, {"takesRegisteredBool", false}, {"takesInt", false},
    {"takesPlain", false},    {"takesVariant", false},
};

INSTANTIATE_TEST_SUITE_P(Types, BoolArgument, testing::ValuesIn(kBoolCases), nameOfCase);

class MapArgument : public testing::TestWithParam<MethodCase>
{
};

TEST_P(MapArgument, IsPassedToTheSameTypeInAnySpelling)
{
    expectCall(GetParam(), QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), 2}}, 2);
}

const MethodCase kMapCases[] = {
    {"takesMap", true},        {"takesSpelledMap", true}, {"takesHash", false},
    {"takesStringMap", false}, {"takesVariant", false},   {"takesPointer", false},
};

INSTANTIATE_TEST_SUITE_P(Types, MapArgument, testing::ValuesIn(kMapCases), nameOfCase);

class VariantArgument : public testing::TestWithParam<MethodCase>
{
};

TEST_P(VariantArgument, IsPassedOnlyToAVariant)
{
    expectCall(GetParam(), QVariant(5), 5);
}

const MethodCase kVariantCases[] = {
    {"takesVariant", true}, {"takesInt", false},   {"takesMap", false},
    {"takesString", false}, {"takesPlain", false},
};

INSTANTIATE_TEST_SUITE_P(Types, VariantArgument, testing::ValuesIn(kVariantCases), nameOfCase);

TEST(HostSignature, NegativeAndLargestValues_ArriveUnchanged)
{
    Page page;
    for (const int value : {-2, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        for (const char* method : {"takesInt", "takesPlain", "takesScoped", "takesWide"}) {
            EXPECT_TRUE(orderHost(&page, method, ConnectionRule::Call, value));
            EXPECT_EQ(page.value, value) << method;
        }
    }
}

TEST(HostSignature, MethodWithFewerParameters_IsCalled)
{
    Page page;
    EXPECT_TRUE(orderHost(&page, "takesUint", ConnectionRule::Call, 7, QVariantMap()));
    EXPECT_TRUE(orderHost(&page, "takesNothing", ConnectionRule::Call, 7));
    EXPECT_EQ(page.calls, 2);
}

// Qt queues a call from the application thread to an object on another thread, and copies the arguments.
TEST(HostSignature, QueuedCall_CarriesTheWholeValue)
{
    QThread thread;
    Page page;
    page.moveToThread(&thread);
    EXPECT_TRUE(orderHost(&page, "takesWide", ConnectionRule::Call, -2));
    thread.start();
    // Blocks until the thread has processed the queued call.
    EXPECT_TRUE(orderHost(&page, "moveToApplicationThread", ConnectionRule::Blocking));
    thread.quit();
    thread.wait();
    EXPECT_EQ(page.calls, 1);
    EXPECT_EQ(page.value, -2);
}

template <class Result> void expectResult(const char* method, bool called)
{
    Page page;
    const auto call = [&] {
        page.calls = 0;
        EXPECT_EQ(callHost<Result>(&page, method, ConnectionRule::Call).has_value(), called) << method;
        EXPECT_EQ(page.calls, called ? 1 : 0) << method;
    };
    call();
    runOnOtherThread(call);
    EXPECT_EQ(hasResultType(findHostMethod(&page, method), qMetaTypeId<Result>()), called) << method;
}

TEST(HostSignature, ResultOfAnotherType_IsNotCalled)
{
    for (const char* method :
         {"returnsInt", "returnsUint", "returnsPlain", "returnsVariant", "returnsVoid", "returnsMap"})
        expectResult<bool>(method, false);
    for (const char* method : {"returnsUint", "returnsPlain", "returnsBool", "returnsVariant", "returnsVoid"})
        expectResult<int>(method, false);
    for (const char* method : {"returnsHash", "returnsVariant", "returnsVoid"})
        expectResult<QVariantMap>(method, false);
    for (const char* method : {"returnsBool", "returnsMap", "returnsVoid"})
        expectResult<QVariant>(method, false);
}

TEST(HostSignature, ResultOfTheSameTypeInAnySpelling_IsCalled)
{
    expectResult<bool>("returnsBool", true);
    expectResult<int>("returnsInt", true);
    expectResult<QVariant>("returnsVariant", true);
    expectResult<QVariantMap>("returnsMap", true);
    expectResult<QVariantMap>("returnsSpelledMap", true);
}

TEST(HostSignature, DiscardedResult_MayHaveAnyType)
{
    Page page;
    for (const char* method : {"returnsInt", "returnsPlain", "returnsVariant", "returnsVoid"})
        EXPECT_TRUE(orderHost(&page, method, ConnectionRule::Call)) << method;
    EXPECT_EQ(page.calls, 4);
}

// Base of the partition pages below, which declare doFunFromAI in different ways. Accepts function 18 and
// records each check and each request.
class RecordingPage : public QObject
{
    Q_OBJECT

public:
    int checks = 0;
    QVariantMap request;
    qint64 function = -1;

protected:
    bool record(qint64 number, const QVariantMap& params)
    {
        function = number;
        if (params.contains(QStringLiteral("TestFunValid")))
            ++checks;
        else
            request = params;
        return number == 18;
    }
};

class UintPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(uint number, QVariantMap params) { return record(number, params); }
};

class PlainEnumPage : public RecordingPage
{
    Q_OBJECT

public:
    enum Function { Create = 18 };
    Q_ENUM(Function)
    Q_INVOKABLE bool doFunFromAI(Function number, const QVariantMap& params)
    {
        return record(number, params);
    }
};

class ScopedEnumPage : public RecordingPage
{
    Q_OBJECT

public:
    enum class Function { Create = 18 };
    Q_ENUM(Function)
    Q_INVOKABLE bool doFunFromAI(ScopedEnumPage::Function number, QVariantMap params)
    {
        return record(int(number), params);
    }
};

// The library calls the first overload.
class OverloadedPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(uint number, QVariantMap params) { return record(number, params); }
    Q_INVOKABLE bool doFunFromAI(int, QVariantMap)
    {
        ADD_FAILURE() << "the second overload was called";
        return true;
    }
};

// The library cannot call the first overload and does not try the second.
class ShadowedPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(qlonglong number, QVariantMap params) { return record(number, params); }
    Q_INVOKABLE bool doFunFromAI(int number, QVariantMap params) { return record(number, params); }
};

template <class T> class PartitionPage : public testing::Test
{
protected:
    PartitionPage()
    {
        host_.build();
        host_.engine()->rootContext()->setContextProperty(QStringLiteral("partitionmanager"), &page_);
    }

    void expectCheckAndRequest()
    {
        const QVariantMap params{{QStringLiteral("diskIndex"), 3}};
        page_.checks = 0;
        page_.request.clear();
        EXPECT_TRUE(host_.bridge()->isFunValidForAI(18, params));
        EXPECT_FALSE(host_.bridge()->isFunValidForAI(17, params));
        EXPECT_EQ(page_.checks, 2);
        host_.bridge()->doFunFromAI(18, params);
        EXPECT_EQ(page_.function, 18);
        EXPECT_EQ(page_.request, params);
    }

    RecordingHost host_;
    T page_;
};

using CallablePages = testing::Types<UintPage, PlainEnumPage, ScopedEnumPage, OverloadedPage>;
TYPED_TEST_SUITE(PartitionPage, CallablePages);

TYPED_TEST(PartitionPage, ReceivesChecksAndRequestsFromEitherThread)
{
    this->expectCheckAndRequest();
    runOnOtherThread([this] { this->expectCheckAndRequest(); });
}

using UncallablePage = PartitionPage<ShadowedPage>;

TEST_F(UncallablePage, ReceivesNeitherChecksNorRequests)
{
    const auto expectRejection = [this] {
        EXPECT_FALSE(host_.bridge()->isFunValidForAI(18, {}));
        host_.bridge()->doFunFromAI(18, {});
    };
    expectRejection();
    runOnOtherThread(expectRejection);
    EXPECT_EQ(page_.checks, 0);
    EXPECT_EQ(page_.function, -1);
}

class QmlSignature : public testing::Test
{
protected:
    QmlSignature()
    {
        engine_.loadData(R"(import QtQml 2.15
QtObject {
    property var received
    function typed(disk: int): bool { received = disk; return true }
    function flag(on: bool): bool { received = on; return true }
    function number(disk: real): bool { received = disk; return true }
    function text(disk: string): bool { received = disk; return true }
    function untyped(disk) { received = disk; return true }
    function untypedWithResult(disk): bool { received = disk; return true }
})");
    }

    QObject* page() { return engine_.rootObjects().value(0); }

    // Calls from both threads. True if the function ran both times.
    template <class Result, class T> bool runs(const char* method, const T& argument)
    {
        int runs = 0;
        const auto call = [&] {
            page()->setProperty("received", QVariant());
            runs += callHost<Result>(page(), method, ConnectionRule::Call, argument).has_value() ? 1 : 0;
        };
        call();
        const bool direct = page()->property("received").isValid();
        runOnOtherThread(call);
        EXPECT_EQ(page()->property("received").isValid(), direct);
        EXPECT_EQ(runs, direct ? 2 : 0) << method;
        return direct;
    }

    QQmlApplicationEngine engine_;
};

TEST_F(QmlSignature, FunctionWithMatchingTypes_IsCalled)
{
    EXPECT_TRUE((runs<bool>("typed", 7)));
    EXPECT_EQ(page()->property("received"), QVariant(7));
    EXPECT_TRUE((runs<bool>("flag", true)));
    EXPECT_TRUE((runs<bool>("untypedWithResult", QVariant(7))));
    EXPECT_TRUE((runs<QVariant>("untyped", QVariant(7))));
}

TEST_F(QmlSignature, FunctionWithOtherTypes_IsNotCalled)
{
    EXPECT_FALSE((runs<bool>("typed", true)));
    EXPECT_FALSE((runs<bool>("typed", QVariant(7))));
    EXPECT_FALSE((runs<bool>("flag", 1)));
    EXPECT_FALSE((runs<bool>("number", 7)));
    EXPECT_FALSE((runs<bool>("text", 7)));
    EXPECT_FALSE((runs<bool>("untypedWithResult", 7)));
    EXPECT_FALSE((runs<bool>("untyped", QVariant(7))));
}

} // namespace

#include "HostSignatureTest.moc"
