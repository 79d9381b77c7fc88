// Which signatures of a host method are called, with hosts written in C++ and in QML, on the application
// thread and on another one.
#include "plugin/HostSignature.h"
#include "plugin/AIBridge.h"
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

// The class registers it by itself.
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

// Each member records that it ran, and the value that it got.
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

    // An argument of the library's type int.
    Q_INVOKABLE bool ofInt(int v) { return ran(v); }
    Q_INVOKABLE bool ofUint(uint v) { return ran(v); }
    Q_INVOKABLE bool ofQint32(qint32 v) { return ran(v); }
    Q_INVOKABLE bool ofQuint32(const quint32& v) { return ran(v); }
    Q_INVOKABLE bool ofLong(long v) { return ran(v); }
    Q_INVOKABLE bool ofUlong(ulong v) { return ran(qint64(v)); }
    Q_INVOKABLE bool ofPlain(Plain v) { return ran(int(v)); }
    Q_INVOKABLE bool ofScoped(Scoped v) { return ran(int(v)); }
    Q_INVOKABLE bool ofSpelledScoped(Page::Scoped v) { return ran(int(v)); }
    Q_INVOKABLE bool ofNarrow(Narrow v) { return ran(int(v)); }
    Q_INVOKABLE bool ofWide(Wide v) { return ran(qint64(v)); }
    Q_INVOKABLE void goHome() { moveToThread(QCoreApplication::instance()->thread()); }
    Q_INVOKABLE bool ofInherited(Inherited v) { return ran(int(v)); }
    Q_INVOKABLE bool ofRegistered(Registered v) { return ran(int(v)); }
    Q_INVOKABLE bool ofSpelledRegistered(Page::Registered v) { return ran(int(v)); }
    Q_INVOKABLE bool ofDeclared(Declared v) { return ran(int(v)); }
    Q_INVOKABLE bool ofFlag(Flag v) { return ran(v); }
    Q_INVOKABLE bool ofRegisteredNarrow(RegisteredNarrow v) { return ran(int(v)); }
    Q_INVOKABLE bool ofRegisteredWide(RegisteredWide v) { return ran(qint64(v)); }
    Q_INVOKABLE bool ofRegisteredBool(RegisteredBool v) { return ran(int(v)); }
    Q_INVOKABLE bool ofUnknown(Unknown v) { return ran(v); }
    Q_INVOKABLE bool ofStdInt(std::int32_t v) { return ran(v); }
    Q_INVOKABLE bool ofFlags(Flags v) { return ran(v); }
    Q_INVOKABLE bool ofShort(short v) { return ran(v); }
    Q_INVOKABLE bool ofUshort(ushort v) { return ran(v); }
    Q_INVOKABLE bool ofChar(char v) { return ran(v); }
    Q_INVOKABLE bool ofSchar(signed char v) { return ran(v); }
    Q_INVOKABLE bool ofUchar(uchar v) { return ran(v); }
    Q_INVOKABLE bool ofLonglong(qlonglong v) { return ran(v); }
    Q_INVOKABLE bool ofUlonglong(qulonglong v) { return ran(qint64(v)); }
    Q_INVOKABLE bool ofBool(bool v) { return ran(v); }
    Q_INVOKABLE bool ofBoolEnum(Bool v) { return ran(int(v)); }
    Q_INVOKABLE bool ofFloat(float v) { return ran(qint64(v)); }
    Q_INVOKABLE bool ofDouble(double v) { return ran(qint64(v)); }
    Q_INVOKABLE bool ofQchar(QChar v) { return ran(v.unicode()); }
    Q_INVOKABLE bool ofPointer(void*) { return ran(0); }
    Q_INVOKABLE bool ofString(QString) { return ran(0); }
    Q_INVOKABLE bool ofVariant(QVariant v) { return ran(v.toLongLong()); }
    Q_INVOKABLE bool ofMap(QVariantMap v) { return ran(v.size()); }
    Q_INVOKABLE bool ofSpelledMap(QMap<QString, QVariant> v) { return ran(v.size()); }
    Q_INVOKABLE bool ofHash(QVariantHash v) { return ran(v.size()); }
    Q_INVOKABLE bool ofStringMap(QMap<QString, QString> v) { return ran(v.size()); }
    Q_INVOKABLE bool ofNothing() { return ran(0); }

    // Results.
    Q_INVOKABLE QVariantMap asMap() { return result(QVariantMap{{QStringLiteral("a"), 1}}); }
    Q_INVOKABLE QMap<QString, QVariant> asSpelledMap() { return asMap(); }
    Q_INVOKABLE QVariantHash asHash() { return result(QVariantHash()); }
    Q_INVOKABLE int asInt() { return result(1); }
    Q_INVOKABLE uint asUint() { return result(1u); }
    Q_INVOKABLE Plain asPlain() { return result(PlainSeven); }
    Q_INVOKABLE bool asBool() { return result(true); }
    Q_INVOKABLE QVariant asVariant() { return result(QVariant(true)); }
    Q_INVOKABLE void asNothing() { ++calls; }

    int calls = 0;
    qint64 value = -1;
    QThread* thread = nullptr;

private:
    bool ran(qint64 got)
    {
        ++calls;
        value = got;
        thread = QThread::currentThread();
        return true;
    }
    template <class T> T result(T v)
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

struct Pair
{
    const char* method;
    bool called;
    friend void PrintTo(const Pair& pair, std::ostream* out) { *out << pair.method; }
};

template <class T> void expectCall(const Pair& pair, const T& argument, qint64 value)
{
    registerTypes();
    Page page;
    const HostMethod method(&page, pair.method);
    ASSERT_TRUE(method.isValid());
    const auto call = [&](ConnectionRule rule) {
        page.calls = 0;
        page.value = -1;
        EXPECT_EQ(method.call<bool>(rule, argument).has_value(), pair.called);
        EXPECT_EQ(page.calls, pair.called ? 1 : 0);
        if (pair.called) {
            EXPECT_EQ(page.value, value);
        }
    };
    call(ConnectionRule::Call);
    call(ConnectionRule::Window);
    runOnOtherThread([&] {
        call(ConnectionRule::Call);
        if (pair.called) {
            EXPECT_EQ(page.thread, QCoreApplication::instance()->thread());
        }
        call(ConnectionRule::Direct);
    });
    // The check of a host has the same answer.
    const int type = qMetaTypeId<T>();
    const QMetaMethod declared = findHostMethod(&page, pair.method);
    EXPECT_EQ(acceptsArguments(declared, &type, 1), pair.called);
}

class IntArgument : public testing::TestWithParam<Pair>
{
};

TEST_P(IntArgument, IsPassedToAnIntegerOrEnumerationOfItsSizeOnly)
{
    expectCall(GetParam(), 7, 7);
}

const Pair kIntPairs[] = {
    {"ofInt", true},
    {"ofUint", true},
    {"ofQint32", true},
    {"ofQuint32", true},
    {"ofLong", kLongIsInt},
    {"ofUlong", kLongIsInt},
    {"ofPlain", true},
    {"ofScoped", true},
    {"ofSpelledScoped", true},
    {"ofInherited", true},
    {"ofRegistered", true},
    {"ofSpelledRegistered", true},
    {"ofDeclared", true},
    {"ofFlag", true},
    // Of a size that Qt does not know: read from a 64-bit integer.
    {"ofNarrow", true},
    {"ofWide", true},
    {"ofRegisteredNarrow", false},
    {"ofRegisteredWide", false},
    {"ofRegisteredBool", false},
    {"ofUnknown", false},
    {"ofStdInt", false},
    {"ofFlags", false},
    {"ofShort", false},
    {"ofUshort", false},
    {"ofChar", false},
    {"ofSchar", false},
    {"ofUchar", false},
    {"ofLonglong", false},
    {"ofUlonglong", false},
    {"ofBool", false},
    {"ofFloat", false},
    {"ofDouble", false},
    {"ofQchar", false},
    {"ofPointer", false},
    {"ofString", false},
    {"ofVariant", false},
    {"ofMap", false},
};

const auto nameOfPair = [](const testing::TestParamInfo<Pair>& pair) {
    return std::string(pair.param.method);
};

INSTANTIATE_TEST_SUITE_P(Types, IntArgument, testing::ValuesIn(kIntPairs), nameOfPair);

class BoolArgument : public testing::TestWithParam<Pair>
{
};

TEST_P(BoolArgument, IsPassedToABoolOnly)
{
    expectCall(GetParam(), true, 1);
}

const Pair kBoolPairs[] = {
    {"ofBool", true},      {"ofChar", false},           {"ofSchar", false},
    {"ofUchar", false},    {"ofNarrow", false},         {"ofRegisteredNarrow", false},
    {"ofBoolEnum", false}, {"ofRegisteredBool", false}, {"ofInt", false},
    {"ofPlain", false},    {"ofVariant", false},
};

INSTANTIATE_TEST_SUITE_P(Types, BoolArgument, testing::ValuesIn(kBoolPairs), nameOfPair);

class MapArgument : public testing::TestWithParam<Pair>
{
};

TEST_P(MapArgument, IsPassedToTheSameTypeInAnySpelling)
{
    expectCall(GetParam(), QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), 2}}, 2);
}

const Pair kMapPairs[] = {
    {"ofMap", true},        {"ofSpelledMap", true}, {"ofHash", false},
    {"ofStringMap", false}, {"ofVariant", false},   {"ofPointer", false},
};

INSTANTIATE_TEST_SUITE_P(Types, MapArgument, testing::ValuesIn(kMapPairs), nameOfPair);

class VariantArgument : public testing::TestWithParam<Pair>
{
};

TEST_P(VariantArgument, IsPassedToAVariantOnly)
{
    expectCall(GetParam(), QVariant(5), 5);
}

const Pair kVariantPairs[] = {
    {"ofVariant", true}, {"ofInt", false}, {"ofMap", false}, {"ofString", false}, {"ofPlain", false},
};

INSTANTIATE_TEST_SUITE_P(Types, VariantArgument, testing::ValuesIn(kVariantPairs), nameOfPair);

TEST(HostSignature, NegativeAndLargestValues_ArriveUnchanged)
{
    Page page;
    for (const int value : {-2, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        for (const char* method : {"ofInt", "ofPlain", "ofScoped", "ofWide"}) {
            EXPECT_TRUE(orderHost(&page, method, ConnectionRule::Call, value));
            EXPECT_EQ(page.value, value) << method;
        }
    }
}

TEST(HostSignature, MethodWithFewerParameters_IsCalled)
{
    Page page;
    EXPECT_TRUE(orderHost(&page, "ofUint", ConnectionRule::Call, 7, QVariantMap()));
    EXPECT_TRUE(orderHost(&page, "ofNothing", ConnectionRule::Call, 7));
    EXPECT_EQ(page.calls, 2);
}

// The object lives on a thread of its own and the call comes from the application thread: Qt queues it and
// copies the arguments.
TEST(HostSignature, CallThatQtQueues_CarriesTheWholeValue)
{
    QThread thread;
    Page page;
    page.moveToThread(&thread);
    EXPECT_TRUE(orderHost(&page, "ofWide", ConnectionRule::Call, -2));
    thread.start();
    // The event queue of the thread is served in order.
    EXPECT_TRUE(orderHost(&page, "goHome", ConnectionRule::Blocking));
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
    for (const char* method : {"asInt", "asUint", "asPlain", "asVariant", "asNothing", "asMap"})
        expectResult<bool>(method, false);
    for (const char* method : {"asUint", "asPlain", "asBool", "asVariant", "asNothing"})
        expectResult<int>(method, false);
    for (const char* method : {"asHash", "asVariant", "asNothing"})
        expectResult<QVariantMap>(method, false);
    for (const char* method : {"asBool", "asMap", "asNothing"})
        expectResult<QVariant>(method, false);
}

TEST(HostSignature, ResultOfTheSameTypeInAnySpelling_IsCalled)
{
    expectResult<bool>("asBool", true);
    expectResult<int>("asInt", true);
    expectResult<QVariant>("asVariant", true);
    expectResult<QVariantMap>("asMap", true);
    expectResult<QVariantMap>("asSpelledMap", true);
}

TEST(HostSignature, ResultThatIsNotAskedFor_IsOfAnyType)
{
    Page page;
    for (const char* method : {"asInt", "asPlain", "asVariant", "asNothing"})
        EXPECT_TRUE(orderHost(&page, method, ConnectionRule::Call)) << method;
    EXPECT_EQ(page.calls, 4);
}

// The partition page in the forms that a host writes it in. It accepts function 18 and records its orders.
class RecordingPage : public QObject
{
    Q_OBJECT

public:
    int questions = 0;
    QVariantMap order;
    qint64 function = -1;

protected:
    bool take(qint64 number, const QVariantMap& params)
    {
        function = number;
        if (params.contains(QStringLiteral("TestFunValid")))
            ++questions;
        else
            order = params;
        return number == 18;
    }
};

class UintPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(uint number, QVariantMap params) { return take(number, params); }
};

class PlainEnumPage : public RecordingPage
{
    Q_OBJECT

public:
    enum Function { Create = 18 };
    Q_ENUM(Function)
    Q_INVOKABLE bool doFunFromAI(Function number, const QVariantMap& params) { return take(number, params); }
};

class ScopedEnumPage : public RecordingPage
{
    Q_OBJECT

public:
    enum class Function { Create = 18 };
    Q_ENUM(Function)
    Q_INVOKABLE bool doFunFromAI(ScopedEnumPage::Function number, QVariantMap params)
    {
        return take(int(number), params);
    }
};

// The first overload is the one that is called.
class OverloadedPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(uint number, QVariantMap params) { return take(number, params); }
    Q_INVOKABLE bool doFunFromAI(int, QVariantMap)
    {
        ADD_FAILURE() << "the second overload";
        return true;
    }
};

// The first overload cannot be called, and the second one is not looked at.
class ShadowedPage : public RecordingPage
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(qlonglong number, QVariantMap params) { return take(number, params); }
    Q_INVOKABLE bool doFunFromAI(int number, QVariantMap params) { return take(number, params); }
};

template <class T> class PartitionPage : public testing::Test
{
protected:
    PartitionPage()
    {
        host_.build();
        host_.engine()->rootContext()->setContextProperty(QStringLiteral("partitionmanager"), &page_);
    }

    void expectQuestionAndOrder()
    {
        const QVariantMap params{{QStringLiteral("diskIndex"), 3}};
        page_.questions = 0;
        page_.order.clear();
        EXPECT_TRUE(host_.bridge()->isFunValidForAI(18, params));
        EXPECT_FALSE(host_.bridge()->isFunValidForAI(17, params));
        EXPECT_EQ(page_.questions, 2);
        host_.bridge()->doFunFromAI(18, params);
        EXPECT_EQ(page_.function, 18);
        EXPECT_EQ(page_.order, params);
    }

    RecordingHost host_;
    T page_;
};

using CallablePages = testing::Types<UintPage, PlainEnumPage, ScopedEnumPage, OverloadedPage>;
TYPED_TEST_SUITE(PartitionPage, CallablePages);

TYPED_TEST(PartitionPage, IsAskedAndOrderedFromEitherThread)
{
    this->expectQuestionAndOrder();
    runOnOtherThread([this] { this->expectQuestionAndOrder(); });
}

using UncallablePage = PartitionPage<ShadowedPage>;

TEST_F(UncallablePage, IsNeitherAskedNorOrdered)
{
    const auto expectNothing = [this] {
        EXPECT_FALSE(host_.bridge()->isFunValidForAI(18, {}));
        host_.bridge()->doFunFromAI(18, {});
    };
    expectNothing();
    runOnOtherThread(expectNothing);
    EXPECT_EQ(page_.questions, 0);
    EXPECT_EQ(page_.function, -1);
}

class QmlSignature : public testing::Test
{
protected:
    QmlSignature()
    {
        engine_.loadData(R"(import QtQml 2.15
QtObject {
    property var got
    function typed(disk: int): bool { got = disk; return true }
    function flag(on: bool): bool { got = on; return true }
    function number(disk: real): bool { got = disk; return true }
    function text(disk: string): bool { got = disk; return true }
    function untyped(disk) { got = disk; return true }
    function untypedWithResult(disk): bool { got = disk; return true }
})");
    }

    QObject* page() { return engine_.rootObjects().value(0); }

    // Calls from both threads; true if the function ran each time.
    template <class Result, class T> bool runs(const char* method, const T& argument)
    {
        int runs = 0;
        const auto call = [&] {
            page()->setProperty("got", QVariant());
            runs += callHost<Result>(page(), method, ConnectionRule::Call, argument).has_value() ? 1 : 0;
        };
        call();
        const bool direct = page()->property("got").isValid();
        runOnOtherThread(call);
        EXPECT_EQ(page()->property("got").isValid(), direct);
        EXPECT_EQ(runs, direct ? 2 : 0) << method;
        return direct;
    }

    QQmlApplicationEngine engine_;
};

TEST_F(QmlSignature, FunctionWithTypes_IsCalledWhereTheyAgree)
{
    EXPECT_TRUE((runs<bool>("typed", 7)));
    EXPECT_EQ(page()->property("got"), QVariant(7));
    EXPECT_TRUE((runs<bool>("flag", true)));
    EXPECT_TRUE((runs<bool>("untypedWithResult", QVariant(7))));
    EXPECT_TRUE((runs<QVariant>("untyped", QVariant(7))));
}

TEST_F(QmlSignature, FunctionOfOtherTypes_IsNotCalled)
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
