// The readiness checks with the Windows platform: real WMI rows, memory and volume, and commands found
// through the system's search order. Firmware and TPM are fakes, because the test system may not have them.
#include "platform/windows/PlatformWindows.h"
#include "tests/support/ScratchApplication.h"
#include "tests/windows/SystemTools.h"
#include "tests/windows/Wine.h"
#include "win11/Win11Check.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace {

const char kDxdiagText[] = "------------------\r\nSystem Information\r\n------------------\r\n"
                           "---------------\r\nDisplay Devices\r\n---------------\r\n"
                           "           Card name: Some adapter\r\n"
                           "         DDI Version: 12\r\n"
                           "        Driver Model: WDDM 2.7\r\n";

QByteArray utf16(const QString& text)
{
    return QByteArray("\xff\xfe") +
           QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * int(sizeof(ushort)));
}

// Returns the system's values unless a test sets them, and records the queries.
class PartlyFakedPlatform : public PlatformWindows
{
public:
    std::optional<quint32> firmware;
    std::vector<QVariantMap> tpm;
    mutable QStringList queries;

    std::optional<quint32> firmwareType() const override
    {
        queries << QStringLiteral("firmware");
        return firmware ? firmware : PlatformWindows::firmwareType();
    }
    quint32 firmwareVariableError() const override
    {
        queries << QStringLiteral("variable");
        return PlatformWindows::firmwareVariableError();
    }
    WindowsVersion windowsVersion() const override
    {
        return firmware ? WindowsVersion{10, 0} : PlatformWindows::windowsVersion();
    }
    std::optional<quint64> installedMemoryKib() const override
    {
        queries << QStringLiteral("memory");
        return PlatformWindows::installedMemoryKib();
    }
    std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                      const QStringList& properties) const override
    {
        if (!nameSpace.endsWith(QLatin1String("MicrosoftTPM")))
            return PlatformWindows::wmiQuery(nameSpace, query, properties);
        queries << QStringLiteral("tpm");
        return tpm.empty() ? PlatformWindows::wmiQuery(nameSpace, query, properties) : tpm;
    }
    void runHidden(const QString& command) const override
    {
        queries << command.section(QLatin1Char(' '), 0, 0);
        PlatformWindows::runHidden(command);
    }
};

class Readiness : public testing::Test
{
protected:
    ScratchApplication application_;
    PartlyFakedPlatform platform_;
    const Platform::Scope scope_{platform_};

    // Adds this machine's processor, as wmic names it, to every list.
    void SetUp() override
    {
        if (!hasWmic())
            GTEST_SKIP() << "this system has no wmic, which names the processor";
        if (belowTheThresholds())
            GTEST_SKIP() << "this machine has less than 4 GiB of memory or 64 GiB on C:";
        const QByteArray name = wmicValue(QStringLiteral("cpu"), QStringLiteral("Name")).toUtf8();
        for (const char* vendor : {"AMD", "Intel", "Qualcomm"})
            ScratchApplication::write(
                application_.root() +
                    QStringLiteral("/Win11Checker/SupportedProcessors%1.txt").arg(QLatin1String(vendor)),
                name + "\n");
        ScratchApplication::write(
            application_.root() + QStringLiteral("/Win11Checker/win11_cpu_whitelist.txt"), name + "\n");
    }

    void fakeFirmwareAndTpm()
    {
        platform_.firmware = 2;
        platform_.tpm = {{{QStringLiteral("IsActivated_InitialValue"), true},
                          {QStringLiteral("IsEnabled_InitialValue"), true},
                          {QStringLiteral("SpecVersion"), QStringLiteral("2.0, 0, 1.38")}}};
    }

    // The system searches the working directory before its own folders. Without output the stand-in does not
    // write a file.
    void addStandIn(const QString& program, const std::optional<QByteArray>& output)
    {
        const QString path = application_.current() + QLatin1Char('/') + program;
        ASSERT_TRUE(QFile::copy(builtProgram(), path));
        if (output)
            ScratchApplication::write(path + QStringLiteral(".out"), *output);
    }

    QString commandLineOf(const QString& program) const
    {
        const QByteArray bytes = ScratchApplication::read(application_.current() + QLatin1Char('/') +
                                                          program + QStringLiteral(".line"));
        return QString::fromUtf16(reinterpret_cast<const ushort*>(bytes.constData()), bytes.size() / 2);
    }

    bool check()
    {
        Win11Check checks(nullptr);
        checks.setGptDisk(true);
        return checks.checkAll();
    }

private:
    static bool belowTheThresholds()
    {
        const PlatformWindows system;
        const VolumeGeometry volume = system.volumeGeometry("C:").value_or(VolumeGeometry{});
        return system.installedMemoryKib().value_or(0) >> 20 < 4 ||
               volume.sectorsPerCluster * volume.bytesPerSector * volume.clusters >> 30 < 64;
    }

    static QString builtProgram()
    {
        return qEnvironmentVariable("AIBRIDGE_BUILD_DIR") +
               QStringLiteral("/tests/test_windows_readiness/RecordedOutput.exe");
    }
};

TEST_F(Readiness, SystemWithoutUefi_FailsWithoutFurtherQueries)
{
    // Before version 6.2, which Wine may report, a variable is read instead.
    const PlatformWindows system;
    const WindowsVersion version = system.windowsVersion();
    const bool older = version.major < 6 || (version.major == 6 && version.minor < 2);
    if (older ? system.firmwareVariableError() != 1 : system.firmwareType() == 2u)
        GTEST_SKIP() << "this system reports UEFI";
    EXPECT_FALSE(check());
    EXPECT_EQ(platform_.queries,
              QStringList(older ? QStringLiteral("variable") : QStringLiteral("firmware")));
}

TEST_F(Readiness, UnreachableTpmNamespace_FailsBeforeACommandStarts)
{
    if (!PlatformWindows()
             .wmiQuery(QStringLiteral("ROOT\\CIMV2\\Security\\MicrosoftTPM"),
                       QStringLiteral("SELECT * FROM Win32_TPM"), {QStringLiteral("SpecVersion")})
             .empty())
        GTEST_SKIP() << "this user may read this machine's TPM";
    platform_.firmware = 2;
    EXPECT_FALSE(check());
    EXPECT_EQ(platform_.queries,
              QStringList({QStringLiteral("firmware"), QStringLiteral("memory"), QStringLiteral("tpm")}));
}

TEST_F(Readiness, AllRequirementsMet_PassesAndStartsBothCommands)
{
    fakeFirmwareAndTpm();
    addStandIn(QStringLiteral("dxdiag.exe"), kDxdiagText);
    addStandIn(QStringLiteral("powershell.exe"), utf16(QStringLiteral("False\r\n")));
    EXPECT_TRUE(check());
    const QString temp = QDir::toNativeSeparators(application_.temp()) + QLatin1Char('\\');
    EXPECT_EQ(commandLineOf(QStringLiteral("dxdiag.exe")),
              QStringLiteral("dxdiag /whql:off /t ") + temp + QStringLiteral("TVDxCheck.txt"));
    EXPECT_EQ(commandLineOf(QStringLiteral("powershell.exe")),
              QStringLiteral("powershell -Command Confirm-SecureBootUEFI | Out-File -FilePath  ") + temp +
                  QStringLiteral("TVSecBootCheck.txt"));
}

TEST_F(Readiness, DxdiagWithoutADisplayDevice_WritesItsFileAndFails)
{
    if (!runsUnderWine())
        GTEST_SKIP() << "only Wine's dxdiag omits the display device";
    fakeFirmwareAndTpm();
    EXPECT_FALSE(check());
    const QByteArray text = ScratchApplication::read(application_.temp() + QStringLiteral("/TVDxCheck.txt"));
    EXPECT_TRUE(text.contains("DirectX")) << text.toStdString();
    EXPECT_EQ(platform_.queries.last(), QStringLiteral("dxdiag"));
}

TEST_F(Readiness, PowershellStub_WritesNoFileAndFails)
{
    if (!runsUnderWine())
        GTEST_SKIP() << "only Wine's powershell is a stub";
    fakeFirmwareAndTpm();
    addStandIn(QStringLiteral("dxdiag.exe"), kDxdiagText);
    EXPECT_FALSE(check());
    EXPECT_EQ(platform_.queries.last(), QStringLiteral("powershell"));
    EXPECT_FALSE(QFile::exists(application_.temp() + QStringLiteral("/TVSecBootCheck.txt")));
}

TEST_F(Readiness, FileOfAnEarlierRun_IsIgnored)
{
    fakeFirmwareAndTpm();
    addStandIn(QStringLiteral("dxdiag.exe"), kDxdiagText);
    addStandIn(QStringLiteral("powershell.exe"), std::nullopt);
    ScratchApplication::write(application_.temp() + QStringLiteral("/TVSecBootCheck.txt"),
                              utf16(QStringLiteral("True")));
    EXPECT_FALSE(check());
    EXPECT_EQ(platform_.queries.last(), QStringLiteral("powershell"));
}

} // namespace
