// The seven checks in their order, each on both sides of its limit.
#include "win11/Win11Check.h"

#include "tests/support/FakePlatform.h"
#include "tests/support/ScratchApplication.h"
#include "tests/win11/OpenedFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

const QString kMachine = QStringLiteral("ROOT\\CIMV2");
const QString kTpmSpace = QStringLiteral("ROOT\\CIMV2\\Security\\MicrosoftTPM");
const QString kProcessorQuery = QStringLiteral("SELECT * FROM Win32_Processor");
const QString kSystemQuery = QStringLiteral("SELECT * FROM Win32_OperatingSystem");
const QString kTpmQuery = QStringLiteral("SELECT * FROM Win32_TPM");
constexpr quint64 kGib = 1073741824;

// The check that makes a query of the platform.
QString checkOf(const QString& question)
{
    static const QList<QPair<QString, QString>> checks = {
        {kProcessorQuery, "checkProcessor"},
        {"SELECT * FROM Win32_ComputerSystem", "checkProcessor"},
        {kSystemQuery, "checkProcessor"},
        {"version", "checkFirmware"},
        {"firmware", "checkFirmware"},
        {"firmwareVariable", "checkFirmware"},
        {"memory", "checkMemory"},
        {"volume C:", "checkDiskSize"},
        {kTpmQuery, "checkTpm"},
        {"dxdiag /whql:off /t ", "checkDirectX"},
        {"powershell -Command ", "checkSecureBoot"}};
    for (const auto& [text, check] : checks) {
        if (question == text || (text.endsWith(' ') && question.startsWith(text)))
            return check;
    }
    return "unknown: " + question;
}

// A platform that runs a function of the test at the first WMI query.
class QueriedPlatform : public FakePlatform
{
public:
    std::function<void()> beforeQuery;

    std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                      const QStringList& properties) const override
    {
        if (beforeQuery)
            beforeQuery();
        return FakePlatform::wmiQuery(nameSpace, query, properties);
    }
};

// A machine that passes. Each test changes one property.
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
        return {{"Name", name},
                {"AddressWidth", width},
                {"NumberOfCores", 1},
                {"NumberOfLogicalProcessors", 1},
                {"MaxClockSpeed", 800}};
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

    // The checks that queried the platform, in the order of their first query.
    QStringList checksThatRan() const
    {
        QStringList checks;
        for (const QString& question : platform.asked) {
            if (!checks.contains(checkOf(question)))
                checks << checkOf(question);
        }
        return checks;
    }
    // Makes one check fail and leaves the others as they are.
    void fail(const QString& check)
    {
        if (check == "checkProcessor")
            platform.rows[{kMachine, kProcessorQuery}] = {processor(32)};
        if (check == "checkFirmware")
            platform.firmware = 1;
        if (check == "checkMemory")
            platform.memoryKib = 1;
        if (check == "checkDiskSize")
            platform.volumes["C:"] = {8, 512, 1};
        if (check == "checkTpm")
            platform.rows[{kTpmSpace, kTpmQuery}][0]["IsEnabled_InitialValue"] = false;
        if (check == "checkDirectX")
            directX = "DDI Version: 11\n";
        if (check == "checkSecureBoot")
            secureBoot = "neither";
    }

    ScratchApplication application;
    QueriedPlatform platform;
    QByteArray directX = "DDI Version: 12\r\nDriver Model: WDDM 2.7\r\n";
    QByteArray secureBoot = QByteArray("\xff\xfeT\0r\0u\0e\0\r\0\n\0", 14);
};

const QStringList kChecks = {"checkProcessor", "checkFirmware", "checkMemory",    "checkDiskSize",
                             "checkTpm",       "checkDirectX",  "checkSecureBoot"};

TEST_F(Win11CheckMachine, AllChecksPass_TheSevenRunInOrder)
{
    EXPECT_TRUE(check());
    EXPECT_EQ(checksThatRan(), kChecks);
}

TEST_F(Win11CheckMachine, OneCheckFails_NoLaterOneRuns)
{
    for (int failing = kChecks.size() - 1; failing >= 0; --failing) {
        platform.asked.clear();
        fail(kChecks.at(failing));
        EXPECT_FALSE(check()) << qPrintable(kChecks.at(failing));
        EXPECT_EQ(checksThatRan(), kChecks.mid(0, failing + 1));
    }
}

TEST_F(Win11CheckMachine, TwoCommands_HaveTheseLines)
{
    EXPECT_TRUE(check());
    EXPECT_EQ(platform.asked.filter("dxdiag"), QStringList("dxdiag /whql:off /t " + directXFile()));
    EXPECT_EQ(
        platform.asked.filter("powershell"),
        QStringList("powershell -Command Confirm-SecureBootUEFI | Out-File -FilePath  " + secureBootFile()));
}

TEST_F(Win11CheckMachine, MissingProperty_FailsTheCheckThatReadsIt)
{
    const QList<std::tuple<QString, QString, QString, QString>> table = {
        {kTpmSpace, kTpmQuery, "SpecVersion", "checkTpm"},
        {kTpmSpace, kTpmQuery, "IsEnabled_InitialValue", "checkTpm"},
        {kTpmSpace, kTpmQuery, "IsActivated_InitialValue", "checkTpm"},
        {kMachine, kSystemQuery, "OSArchitecture", "checkProcessor"},
        {kMachine, kProcessorQuery, "AddressWidth", "checkProcessor"},
        {kMachine, kProcessorQuery, "Name", "checkProcessor"}};
    EXPECT_TRUE(check());
    for (const auto& [space, query, property, last] : table) {
        const QVariant value = platform.rows[{space, query}][0].take(property);
        EXPECT_FALSE(check()) << qPrintable(property);
        EXPECT_EQ(checkOf(platform.asked.last()), last) << qPrintable(property);
        platform.rows[{space, query}][0].insert(property, value);
    }
    EXPECT_TRUE(check());
}

// --- the lists of processors

class Win11CheckLists : public Win11CheckMachine
{
protected:
    // A list program that records its call and writes the requested list.
    void installFinder(const QByteArray& intelList)
    {
        application.write(application.root() + "/fetched", intelList);
        application.script(application.folder() + "/WebViewFinder.exe",
                           "cd '" + QFile::encodeName(application.root()) +
                               "'\necho \"$2\" >> calls\n"
                               "if [ \"$2\" = manufacturer=intel ]; then\n"
                               "cp fetched Win11Checker/SupportedProcessorsIntel.txt\nfi\n");
    }
    QByteArray calls() const { return application.read(application.root() + "/calls"); }
    QString intelPath() const { return application.root() + "/Win11Checker/SupportedProcessorsIntel.txt"; }
};

const QByteArray kOneRefresh = "manufacturer=intel\nmanufacturer=amd\nmanufacturer=qualcomm\n";

TEST_F(Win11CheckLists, AreRefreshedBeforeTheFirstQuery)
{
    installFinder("Core i5-8400\n");
    QByteArray callsAtFirstQuery;
    platform.beforeQuery = [&] {
        if (callsAtFirstQuery.isEmpty())
            callsAtFirstQuery = calls() + "then the query";
    };
    EXPECT_TRUE(check());
    EXPECT_EQ(callsAtFirstQuery, kOneRefresh + "then the query");
}

TEST_F(Win11CheckLists, RefreshedListDecides)
{
    application.write(intelPath(), "");
    EXPECT_FALSE(check());
    installFinder("Core i5-8400\n");
    EXPECT_TRUE(check());
    installFinder("");
    EXPECT_FALSE(check());
}

TEST_F(Win11CheckLists, AreRefreshedAtEachCheckOfOneObject)
{
    installFinder("Core i5-8400\n");
    const Platform::Scope scope(platform);
    Win11Check win11;
    win11.setGptDisk(true);
    EXPECT_TRUE(win11.checkAll());
    EXPECT_EQ(calls(), kOneRefresh);
    EXPECT_TRUE(win11.checkAll());
    EXPECT_EQ(calls(), kOneRefresh + kOneRefresh);
}

TEST_F(Win11CheckLists, OfAMachineOf32Bits_AreRefreshedButNotRead)
{
    installFinder("Core i5-8400\n");
    platform.rows[{kMachine, kSystemQuery}] = {{{"OSArchitecture", "32-bit"}}};
    const OpenedFiles opened;
    EXPECT_FALSE(check());
    EXPECT_EQ(opened.count("/SupportedProcessorsIntel.txt"), 0);
    EXPECT_EQ(calls(), kOneRefresh);
    platform.rows[{kMachine, kSystemQuery}] = {{{"OSArchitecture", "64-bit"}}};
    EXPECT_TRUE(check());
    EXPECT_EQ(opened.count("/SupportedProcessorsIntel.txt"), 1);
}

// --- one check at a time

TEST_F(Win11CheckMachine, OutputFiles_AreNotRemoved)
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
    EXPECT_EQ(checksThatRan(), QStringList("checkProcessor"));
}

TEST_F(Win11CheckMachine, SystemOf32BitsOnAProcessorOf64_Fails)
{
    platform.rows[{kMachine, kSystemQuery}] = {{{"OSArchitecture", "32-bit"}}};
    EXPECT_FALSE(check());
    EXPECT_EQ(checksThatRan(), QStringList("checkProcessor"));
}

TEST_F(Win11CheckMachine, UnlistedProcessor_Fails)
{
    platform.rows[{kMachine, kProcessorQuery}] = {processor(64, "Intel(R) Core(TM) i5-7400 CPU")};
    EXPECT_FALSE(check());
    EXPECT_EQ(checksThatRan(), QStringList("checkProcessor"));
}

TEST_F(Win11CheckMachine, TwoSockets_TheLastIsLookedUp)
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

TEST_F(Win11CheckMachine, FirmwareOfWindows61_IsDerivedFromTheErrorOfAVariable)
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

TEST_F(Win11CheckMachine, FirmwareOfWindows62_IsQueried)
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

TEST_F(Win11CheckMachine, Volume_IsCForAnySystemDrive)
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

TEST_F(Win11CheckMachine, EmptyTemp_NamesTheFilesAfterABareBackslash)
{
    qunsetenv("TEMP");
    directX = QByteArray();
    EXPECT_FALSE(check());
    EXPECT_EQ(platform.asked.last(), "dxdiag /whql:off /t \\TVDxCheck.txt");
}

TEST(Win11CheckOutcome, SetGptDisk_IsKeptAndReturned)
{
    Win11Check win11;
    EXPECT_FALSE(win11.isGptDisk());
    win11.setGptDisk(true);
    EXPECT_TRUE(win11.isGptDisk());
    win11.setGptDisk(false);
    EXPECT_FALSE(win11.isGptDisk());
}

} // namespace
