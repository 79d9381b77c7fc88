// The Windows platform, compared with the output of the system's own programs.
#include "platform/Platform.h"
#include "tests/support/Script.h"
#include "tests/windows/SystemTools.h"
#include "tests/windows/Wine.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

const QString kEnvironmentKey =
    QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment");

QString echoOf(const QString& variable)
{
    return programOutput(QStringLiteral("cmd"),
                         {QStringLiteral("/c"), QStringLiteral("echo %1").arg(variable)});
}

QString regValue(const QString& key, const QString& value)
{
    const QString text =
        programOutput(QStringLiteral("reg"),
                      {QStringLiteral("query"), QStringLiteral("HKLM\\") + key, QStringLiteral("/v"), value});
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("REG_\\w+ +(.*?)\\s*$")).match(text);
    return match.captured(1);
}

TEST(SystemDirectory, IsSystem32BelowSystemRoot)
{
    const QString expected = echoOf(QStringLiteral("%SystemRoot%")) + QStringLiteral("\\system32");
    EXPECT_EQ(QString::fromLocal8Bit(Platform::instance().systemDirectory()).toLower(), expected.toLower());
    EXPECT_EQ(QString::fromLocal8Bit(upperSystemDirectory()), expected.toUpper());
}

TEST(RegistryString, PlainText_EqualsTheOutputOfReg)
{
    const auto text =
        Platform::instance().registryString(kEnvironmentKey, QStringLiteral("PROCESSOR_ARCHITECTURE"));
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, regValue(kEnvironmentKey, QStringLiteral("PROCESSOR_ARCHITECTURE")));
    EXPECT_FALSE(text->isEmpty());
    EXPECT_FALSE(text->contains(QChar()));
}

TEST(RegistryString, MissingValueOrKey_IsNullopt)
{
    EXPECT_FALSE(
        Platform::instance().registryString(kEnvironmentKey, QStringLiteral("NoSuchValue")).has_value());
    EXPECT_FALSE(Platform::instance()
                     .registryString(QStringLiteral("SOFTWARE\\NoSuchKey"), QStringLiteral("x"))
                     .has_value());
}

// A registry key that exists for the duration of a test.
class ScratchKey : public testing::Test
{
protected:
    const QString path_ = QStringLiteral("SOFTWARE\\AIBridgePlatformTest%1").arg(GetCurrentProcessId());

    void SetUp() override
    {
        HKEY key = nullptr;
        if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, path_.toStdWString().c_str(), 0, nullptr, 0, KEY_WRITE,
                            nullptr, &key, nullptr) != ERROR_SUCCESS)
            GTEST_SKIP() << "only an administrator may write this part of the registry";
        RegCloseKey(key);
    }

    ~ScratchKey() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.toStdWString().c_str()); }

    void add(const QString& name, const QString& type, const QString& data)
    {
        programOutput(QStringLiteral("reg"),
                      {QStringLiteral("add"), QStringLiteral("HKLM\\") + path_, QStringLiteral("/v"), name,
                       QStringLiteral("/t"), type, QStringLiteral("/d"), data, QStringLiteral("/f")});
    }
};

TEST_F(ScratchKey, RegistryString_NonAsciiText_IsUnchanged)
{
    const QString text = QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                           "e \xe7\xa3\x81\xe7\x9b\x98");
    QSettings(QStringLiteral("HKEY_LOCAL_MACHINE\\") + path_, QSettings::NativeFormat)
        .setValue(QStringLiteral("text"), text);
    EXPECT_EQ(Platform::instance().registryString(path_, QStringLiteral("text")), text);
}

TEST_F(ScratchKey, RegistryString_EmptyText_IsAnEmptyString)
{
    add(QStringLiteral("empty"), QStringLiteral("REG_SZ"), QString());
    const auto text = Platform::instance().registryString(path_, QStringLiteral("empty"));
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, QString());
}

TEST_F(ScratchKey, RegistryString_Number_IsNullopt)
{
    add(QStringLiteral("number"), QStringLiteral("REG_DWORD"), QStringLiteral("64"));
    ASSERT_EQ(regValue(path_, QStringLiteral("number")), QStringLiteral("0x40"));
    EXPECT_FALSE(Platform::instance().registryString(path_, QStringLiteral("number")).has_value());
}

TEST_F(ScratchKey, RegistryString_TextWithVariables_IsExpandedByTheSystem)
{
    add(QStringLiteral("path"), QStringLiteral("REG_EXPAND_SZ"), QStringLiteral("%SystemRoot%\\bin"));
    EXPECT_EQ(Platform::instance().registryString(path_, QStringLiteral("path")),
              qEnvironmentVariable("SystemRoot") + QStringLiteral("\\bin"));
}

TEST_F(ScratchKey, RegistryString_SecondTerminatingZero_IsPartOfTheString)
{
    const std::wstring data(L"ARM64\0\0", 7);
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, path_.toStdWString().c_str(), L"zeros", REG_SZ, data.data(),
                              static_cast<DWORD>(data.size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
    const auto text = Platform::instance().registryString(path_, QStringLiteral("zeros"));
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, QString::fromLatin1("ARM64\0", 6));
}

TEST(WindowsVersion, EqualsTheOutputOfVer)
{
    const QRegularExpressionMatch output =
        QRegularExpression(QStringLiteral("(\\d+)\\.(\\d+)\\."))
            .match(programOutput(QStringLiteral("cmd"), {QStringLiteral("/c"), QStringLiteral("ver")}));
    ASSERT_TRUE(output.hasMatch());
    int major = output.captured(1).toInt();
    int minor = output.captured(2).toInt();
    // Windows reports at most 6.2 to a program without a manifest for later versions.
    if (major > 6 || minor > 2) {
        major = 6;
        minor = 2;
    }
    const WindowsVersion version = Platform::instance().windowsVersion();
    EXPECT_EQ(version.major, major);
    EXPECT_EQ(version.minor, minor);
}

TEST(FirmwareType, IsNulloptIfAndOnlyIfTheSystemLacksTheFunction)
{
    const bool exported = GetProcAddress(GetModuleHandleW(L"kernel32"), "GetFirmwareType") != nullptr;
    EXPECT_EQ(Platform::instance().firmwareType().has_value(), exported);
}

TEST(FirmwareVariable, EarlierLastError_IsNotReturned)
{
    SetLastError(1234);
    EXPECT_NE(Platform::instance().firmwareVariableError(), 1234u);
    SetLastError(0);
    const DWORD size =
        GetFirmwareEnvironmentVariableA("", "{00000000-0000-0000-0000-000000000000}", nullptr, 0);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(Platform::instance().firmwareVariableError(), GetLastError());
}

TEST(InstalledMemory, EqualsTheSumOfTheMemoryChips)
{
    if (!hasWmic())
        GTEST_SKIP() << "this system has no wmic";
    const auto kib = Platform::instance().installedMemoryKib();
    ASSERT_TRUE(kib.has_value());
    quint64 bytes = 0;
    for (const QString& chip : wmicRows(QStringLiteral("memorychip"), QStringLiteral("Capacity")))
        bytes += chip.toULongLong();
    EXPECT_EQ(*kib, bytes / 1024);
}

// Read from the system below Wine, because wmic does not count the blocks reserved for the administrator.
quint64 sizeOfSystemDrive()
{
    const QTemporaryDir folder;
    const QString program = folder.filePath(QStringLiteral("statfs.exe"));
    writeScript(program, "stat -f -c '%b %S' \"$WINEPREFIX/dosdevices/c:/\"\n");
    const QStringList fields = programOutput(program, {}).split(QLatin1Char(' '));
    return fields.value(0).toULongLong() * fields.value(1).toULongLong();
}

TEST(VolumeGeometry, Product_EqualsTheSizeOfTheVolume)
{
    if (!runsUnderWine())
        GTEST_SKIP() << "the size is read from the system below Wine";
    const auto volume = Platform::instance().volumeGeometry("C:");
    ASSERT_TRUE(volume.has_value());
    EXPECT_GT(volume->bytesPerSector, 0u);
    const quint64 cluster = volume->sectorsPerCluster * volume->bytesPerSector;
    ASSERT_GT(cluster, 0u);
    // The function counts clusters in 31 bits, which limits volumes with small clusters.
    const quint64 limit = cluster * 0x7fffffffull;
    EXPECT_EQ(cluster * volume->clusters, std::min(sizeOfSystemDrive() / cluster * cluster, limit));
}

TEST(VolumeGeometry, LetterWithoutVolume_IsNullopt)
{
    char root[] = "Z:";
    while (root[0] > 'A' && (GetLogicalDrives() >> (root[0] - 'A') & 1) != 0)
        --root[0];
    if (root[0] == 'A')
        GTEST_SKIP() << "every letter is in use";
    EXPECT_FALSE(Platform::instance().volumeGeometry(root).has_value()) << root;
}

} // namespace
