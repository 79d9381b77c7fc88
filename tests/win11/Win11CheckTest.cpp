// The seven checks in their order, each on both sides of its limit.
#include "win11/Win11Check.h"

#include "tests/support/FakePlatform.h"
#include "tests/support/ScratchApplication.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace {

const QString kMachine = QStringLiteral("ROOT\\CIMV2");
const QString kTpmSpace = QStringLiteral("ROOT\\CIMV2\\Security\\MicrosoftTPM");
const QString kProcessorQuery = QStringLiteral("SELECT * FROM Win32_Processor");
const QString kSystemQuery = QStringLiteral("SELECT * FROM Win32_OperatingSystem");
const QString kTpmQuery = QStringLiteral("SELECT * FROM Win32_TPM");
constexpr quint64 kGib = 1073741824;

// A machine that passes, from which each test takes one thing away.
class Win11CheckMachine : public testing::Test
{
protected:
    Win11CheckMachine()
    {
        platform.rows[{kMachine, kProcessorQuery}] = {processor(64)};
        platform.rows[{kMachine, kSystemQuery}] = {{{"OSArchitecture", "64-bit"}}};
        platform.rows[{kTpmSpace, kTpmQuery}] = {{{"IsActivated_InitialValue", true},
                                                  {"IsEnabled_InitialValue", true},
                                                  {"SpecVersion", "2.0, 0, 1.38"}}};
        platform.firmware = 2;
        platform.memoryKib = 8388608;
        platform.volumes["C:"] = {8, 512, 500 * kGib / 4096};
        platform.hidden = [this](const QString& command) { write(command); };
        application.write(application.root() + "/Win11Checker/SupportedProcessorsIntel.txt",
                          "Core i5-8400\n");
    }

    static QVariantMap processor(int width, const char* name = "Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz")
    {
        return {{"Name", name}, {"AddressWidth", width}, {"NumberOfCores", 1}, {"MaxClockSpeed", 800}};
    }
    QString scratch() const { return QDir::toNativeSeparators(application.temp()) + '\\'; }
    QString directXFile() const { return scratch() + "TVDxCheck.txt"; }
    QString secureBootFile() const { return scratch() + "TVSecBootCheck.txt"; }
    void write(const QString& command)
    {
        if (command.startsWith("dxdiag") && !directX.isNull())
            application.write(directXFile(), directX);
        if (command.startsWith("powershell") && !secureBoot.isNull())
            application.write(secureBootFile(), secureBoot);
    }
    bool check()
    {
        const Platform::Scope scope(platform);
        Win11Check win11;
        win11.setGptDisk(true);
        return win11.checkAll();
    }

    ScratchApplication application;
    FakePlatform platform;
    QByteArray directX = "DDI Version: 12\r\nDriver Model: WDDM 2.7\r\n";
    QByteArray secureBoot = QByteArray("\xff\xfeT\0r\0u\0e\0\r\0\n\0", 14);
};

TEST_F(Win11CheckMachine, AllChecksPass_AsksInOrder)
{
    EXPECT_TRUE(check());
    EXPECT_EQ(platform.asked,
              QStringList(
                  {kProcessorQuery, kSystemQuery, "version", "firmware", "memory", "volume C:", kTpmQuery,
                   "dxdiag /whql:off /t " + directXFile(),
                   "powershell -Command Confirm-SecureBootUEFI | Out-File -FilePath  " + secureBootFile()}));
}

TEST_F(Win11CheckMachine, OutputFiles_StayBehind)
{
    EXPECT_TRUE(check());
    EXPECT_TRUE(QFile::exists(directXFile()));
    EXPECT_TRUE(QFile::exists(secureBootFile()));
}

TEST_F(Win11CheckMachine, OneCoreAndASlowClock_PassIfTheNameIsListed)
{
    EXPECT_TRUE(check());
}

TEST_F(Win11CheckMachine, ProcessorOf32Bits_FailsAndEndsTheRun)
{
    platform.rows[{kMachine, kProcessorQuery}] = {processor(32)};
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked, QStringList({kProcessorQuery, kSystemQuery}));
}

TEST_F(Win11CheckMachine, SystemOf32BitsOnAProcessorOf64_Fails)
{
    platform.rows[{kMachine, kSystemQuery}] = {{{"OSArchitecture", "32-bit"}}};
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked, QStringList({kProcessorQuery, kSystemQuery}));
}

TEST_F(Win11CheckMachine, ProcessorOnNoList_Fails)
{
    platform.rows[{kMachine, kProcessorQuery}] = {processor(64, "Intel(R) Core(TM) i5-7400 CPU")};
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.size(), 2);
}

TEST_F(Win11CheckMachine, TwoSockets_TheLastOneIsLookedUp)
{
    platform.rows[{kMachine, kProcessorQuery}] = {processor(64), processor(64, "Intel Other")};
    EXPECT_FALSE(check());
    platform.rows[{kMachine, kProcessorQuery}] = {processor(64, "Intel Other"), processor(64)};
    EXPECT_TRUE(check());
}

TEST_F(Win11CheckMachine, NoWmi_Fails)
{
    platform.rows.clear();
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, FirmwareOtherThanUefi_Fails)
{
    for (const quint32 type : {0u, 1u, 3u, 4u}) {
        platform.firmware = type;
        EXPECT_FALSE(check()) << type;
    }
    platform.firmware.reset();
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), "firmware");
}

TEST_F(Win11CheckMachine, FirmwareOfWindows61_IsToldByTheErrorOfAVariable)
{
    platform.firmware.reset();
    for (const WindowsVersion old : {WindowsVersion{6, 1}, WindowsVersion{5, 9}}) {
        platform.version = old;
        platform.variableError = 1;
        EXPECT_FALSE(check());
        platform.variableError = 998;
        EXPECT_TRUE(check());
    }
    EXPECT_FALSE(platform.asked.contains("firmware"));
}

TEST_F(Win11CheckMachine, FirmwareOfWindows62_IsAskedFor)
{
    platform.version = {6, 2};
    EXPECT_TRUE(check());
    EXPECT_FALSE(platform.asked.contains("firmwareVariable"));
}

TEST_F(Win11CheckMachine, Memory_NeedsFourWholeGib)
{
    platform.memoryKib = 4194304;
    EXPECT_TRUE(check());
    platform.memoryKib = 4194303;
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), "memory");
    platform.memoryKib = 4089446; // 3.9 GiB
    EXPECT_FALSE(check());
    platform.memoryKib.reset();
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, Volume_NeedsSixtyFourWholeGib)
{
    platform.volumes["C:"] = {8, 512, 64 * kGib / 4096};
    EXPECT_TRUE(check());
    platform.volumes["C:"] = {8, 512, 64 * kGib / 4096 - 1};
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), "volume C:");
    platform.volumes.clear();
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, Volume_OfManyClusters_IsCountedIn64Bits)
{
    platform.volumes["C:"] = {128, 512, 4294967295u};
    EXPECT_TRUE(check());
}

TEST_F(Win11CheckMachine, Volume_IsThatOfCWhereverTheSystemLies)
{
    platform.directory = "D:\\Windows\\system32";
    platform.volumes["D:"] = {8, 512, 1};
    EXPECT_TRUE(check());
}

TEST_F(Win11CheckMachine, TpmOfVersion12_FailsBeforeTheSlowChecks)
{
    platform.rows[{kTpmSpace, kTpmQuery}][0]["SpecVersion"] = "1.2, 2, 3";
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), kTpmQuery);
}

TEST_F(Win11CheckMachine, NoTpm_Fails)
{
    platform.rows.erase({kTpmSpace, kTpmQuery});
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, DirectXCommandThatWritesNothing_FailsAndRemovesAnOldOutput)
{
    application.write(directXFile(), directX);
    directX = QByteArray();
    EXPECT_FALSE(check());
    EXPECT_FALSE(QFile::exists(directXFile()));
    EXPECT_TRUE(platform.asked.last().startsWith("dxdiag"));
}

TEST_F(Win11CheckMachine, CommandsThatCannotStart_Fail)
{
    platform.hidden = nullptr;
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, SecureBootSwitchedOff_Passes)
{
    secureBoot = QByteArray("\xff\xfe"
                            "F\0a\0l\0s\0e\0",
                            12);
    EXPECT_TRUE(check());
}

TEST_F(Win11CheckMachine, SecureBootUnknown_Fails)
{
    secureBoot = "Cmdlet not supported on this platform";
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckMachine, EmptyTemp_PutsTheFilesBehindABareBackslash)
{
    qunsetenv("TEMP");
    directX = QByteArray();
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), "dxdiag /whql:off /t \\TVDxCheck.txt");
}

TEST(Win11CheckOutcome, SetGptDisk_IsKeptAndAsked)
{
    Win11Check win11;
    EXPECT_FALSE(win11.isGptDisk());
    win11.setGptDisk(true);
    EXPECT_TRUE(win11.isGptDisk());
    win11.setGptDisk(false);
    EXPECT_FALSE(win11.isGptDisk());
}

} // namespace
