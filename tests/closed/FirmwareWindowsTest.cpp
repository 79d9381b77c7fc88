// How the firmware stand-in asks Windows: the call by its name, in the system's library and in libraries of
// the test's own, and the variable where the call is missing.
#include "closed/LLFProc/windows/FirmwareWindows.h"
#include "closed/LLFProc/LLFProc.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

#include <gtest/gtest.h>

namespace {

FirmwareCalls callsOf(const char* library)
{
    const QString path = QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                                                  QLatin1String(library));
    const HMODULE module = LoadLibraryW(path.toStdWString().c_str());
    EXPECT_NE(module, nullptr) << library << ": " << GetLastError();
    return firmwareCallsOf(module);
}

bool systemExportsTheCall()
{
    return GetProcAddress(GetModuleHandleW(L"kernel32"), "GetFirmwareType") != nullptr;
}

TEST(WindowsFirmware, LibraryWithTheCall_IsAskedByItsName)
{
    const FirmwareCalls calls = callsOf("FirmwareReports.dll");
    ASSERT_TRUE(calls.type);
    quint32 type = 0;
    EXPECT_TRUE(calls.type(&type));
    EXPECT_EQ(type, 2u);
    EXPECT_TRUE(startedThroughUefi(calls));
}

TEST(WindowsFirmware, CallThatFails_IsNotUefi)
{
    const FirmwareCalls calls = callsOf("FirmwareFails.dll");
    ASSERT_TRUE(calls.type);
    EXPECT_FALSE(startedThroughUefi(calls));
}

TEST(WindowsFirmware, LibraryWithoutTheCall_LeavesTheVariableToDecide)
{
    const FirmwareCalls calls = firmwareCallsOf(GetModuleHandleW(L"ntdll"));
    EXPECT_FALSE(calls.type);
    SetLastError(0);
    GetFirmwareEnvironmentVariableA("", "{00000000-0000-0000-0000-000000000000}", nullptr, 0);
    const quint32 error = GetLastError();
    SetLastError(1234);
    EXPECT_EQ(calls.variableError(), error);
    EXPECT_EQ(startedThroughUefi(calls), error != 1);
}

TEST(WindowsFirmware, System_HasTheCallExactlyWhereItExportsIt)
{
    EXPECT_EQ(static_cast<bool>(systemFirmwareCalls().type), systemExportsTheCall());
}

// A path of another system's kernel, which is an ordinary folder of the current drive here.
TEST(WindowsFirmware, FolderNamedAsOnLinux_IsNotTheAnswer)
{
    qunsetenv("AIBRIDGE_UEFI");
    const bool without = MayBeSupportUEFI();
    const QDir root(qEnvironmentVariable("SystemDrive") + QLatin1Char('/'));
    ASSERT_TRUE(QDir::setCurrent(root.path()));
    if (root.exists(QStringLiteral("sys")) || !root.mkpath(QStringLiteral("sys/firmware/efi")))
        GTEST_SKIP() << "no folder can be made in the root of the current drive";
    EXPECT_EQ(MayBeSupportUEFI(), without);
    EXPECT_TRUE(root.rmpath(QStringLiteral("sys/firmware/efi")));
}

} // namespace
