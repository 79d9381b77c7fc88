// An event to the host, each way in which it can be lost, and the processor check.
#include "telemetry/Telemetry.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

namespace {

bool report()
{
    return reportUserInfo(kTelemetryCategory, QStringLiteral("Event"), QStringLiteral("{\"a\":\"b\"}"),
                          QVariant());
}

class Telemetry : public testing::Test
{
protected:
    void expectLost()
    {
        EXPECT_FALSE(report());
        runOnOtherThread([] { EXPECT_FALSE(report()); });
        EXPECT_TRUE(host.recorder().sequence().isEmpty());
    }

    RecordingHost host;
};

TEST_F(Telemetry, Event_IsSentWithItsFourValuesOnTheApplicationThread)
{
    host.build();
    EXPECT_TRUE(report());
    runOnOtherThread([] { EXPECT_TRUE(report()); });
    const auto calls = host.recorder().calls();
    ASSERT_EQ(calls.size(), 2u);
    for (const HostCallRecord& call : calls) {
        EXPECT_EQ(call.where(), "__qml_executer.sendUserInfo");
        EXPECT_EQ(typed(call.arguments),
                  "list[QString:\"AIPixie\",QString:\"Event\",QString:\"{\"a\":\"b\"}\",invalid]");
        EXPECT_TRUE(call.withResult);
        EXPECT_EQ(call.thread, QCoreApplication::instance()->thread());
    }
}

TEST_F(Telemetry, ResultOfTheHost_IsIgnored)
{
    host.spec("__qml_executer").answer("sendUserInfo", QVariant(false));
    host.build();
    EXPECT_TRUE(report());
}

TEST_F(Telemetry, WithoutAWindow_TheEventIsLost)
{
    host.without("window").build();
    expectLost();
}

TEST_F(Telemetry, WithoutTheExecuter_TheEventIsLost)
{
    host.without("__qml_executer").build();
    expectLost();
}

TEST_F(Telemetry, WithoutTheMethod_TheEventIsLost)
{
    host.spec("__qml_executer").remove("sendUserInfo");
    host.build();
    expectLost();
}

TEST_F(Telemetry, WithAMethodOfAnotherSignatureOrResult_TheEventIsLost)
{
    host.spec("__qml_executer")
        .remove("sendUserInfo")
        .method("sendUserInfo(QVariant,QVariant,QVariant,QVariant)", "bool");
    host.build();
    expectLost();
}

TEST_F(Telemetry, WithAMethodOfMoreArguments_TheEventIsLost)
{
    host.spec("__qml_executer")
        .remove("sendUserInfo")
        .method("sendUserInfo(QVariant,QVariant,QVariant,QVariant,QVariant)", "QVariant");
    host.build();
    expectLost();
}

TEST(Arm64, RegistryValue_MustBeExactlyARM64)
{
    FakePlatform platform;
    const Platform::Scope scope(platform);
    const QString key = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";
    EXPECT_FALSE(isArm64Machine());
    for (const char* value : {"", "arm64", "AMD64", "ARM64 ", " ARM64", "ARM", "x86", "Arm64", "ARM64EC"}) {
        platform.registry[{key, "PROCESSOR_ARCHITECTURE"}] = value;
        EXPECT_FALSE(isArm64Machine()) << value;
    }
    platform.registry[{key, "PROCESSOR_ARCHITECTURE"}] = "ARM64";
    EXPECT_TRUE(isArm64Machine());
    platform.registry.clear();
    platform.registry[{key, "PROCESSOR_ARCHITEW6432"}] = "ARM64";
    EXPECT_FALSE(isArm64Machine());
}

// The platform has already removed the terminating zero, so another one is part of the string.
TEST(Arm64, RegistryValueWithAnExtraZero_DoesNotMatch)
{
    FakePlatform platform;
    const Platform::Scope scope(platform);
    const QString key = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";
    platform.registry[{key, "PROCESSOR_ARCHITECTURE"}] = QStringLiteral("ARM64") + QChar(0);
    EXPECT_FALSE(isArm64Machine());
    platform.registry[{key, "PROCESSOR_ARCHITECTURE"}] = QStringLiteral("ARM64");
    EXPECT_TRUE(isArm64Machine());
}

TEST(Arm64, EnvironmentOfTheProcess_IsIgnored)
{
    const FakePlatform platform;
    const Platform::Scope scope(platform);
    qputenv("PROCESSOR_ARCHITECTURE", "ARM64");
    EXPECT_FALSE(isArm64Machine());
    qunsetenv("PROCESSOR_ARCHITECTURE");
}

} // namespace
