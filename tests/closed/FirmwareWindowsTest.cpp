// The firmware stand-in on Windows: GetFirmwareType resolved by name in the system's library and in
// stand-ins, and the firmware variable where the function is missing.
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

bool systemExportsTheFunction()
{
    return GetProcAddress(GetModuleHandleW(L"kernel32"), "GetFirmwareType") != nullptr;
}

TEST(WindowsFirmware, ExportedFunction_IsResolvedByName)
{
    const FirmwareCalls calls = callsOf("FirmwareReports.dll");
    ASSERT_TRUE(calls.type);
    quint32 type = 0;
    EXPECT_TRUE(calls.type(&type));
    EXPECT_EQ(type, 2u);
    EXPECT_TRUE(startedThroughUefi(calls));
}

TEST(WindowsFirmware, FailedCall_IsNotUefi)
{
    const FirmwareCalls calls = callsOf("FirmwareFails.dll");
    ASSERT_TRUE(calls.type);
    EXPECT_FALSE(startedThroughUefi(calls));
}

TEST(WindowsFirmware, MissingFunction_FallsBackToTheVariable)
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

TEST(WindowsFirmware, SystemCalls_HaveTheFunctionIfAndOnlyIfExported)
{
    EXPECT_EQ(static_cast<bool>(systemFirmwareCalls().type), systemExportsTheFunction());
}

// On Windows the path of Linux's kernel folder is an ordinary folder on the current drive.
TEST(WindowsFirmware, FolderNamedAsOnLinux_IsIgnored)
{
    qunsetenv("AIBRIDGE_UEFI");
    const bool without = MayBeSupportUEFI();
    const QDir root(qEnvironmentVariable("SystemDrive") + QLatin1Char('/'));
    ASSERT_TRUE(QDir::setCurrent(root.path()));
    if (root.exists(QStringLiteral("sys")) || !root.mkpath(QStringLiteral("sys/firmware/efi")))
        GTEST_SKIP() << "cannot create a folder in the root of the current drive";
    EXPECT_EQ(MayBeSupportUEFI(), without);
    EXPECT_TRUE(root.rmpath(QStringLiteral("sys/firmware/efi")));
}

} // namespace
