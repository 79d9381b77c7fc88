// The refresh of the lists: the child process, its script, and the whitelist.
#include "win11/ProcessorLists.h"

#include "tests/support/Processes.h"
#include "tests/support/ScratchApplication.h"
#include "tests/win11/ExpectedScript.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace {

// The variable that names the folder for temporary files.
#ifdef Q_OS_WIN
const char* const kTempVariable = "TMP";
#else
const char* const kTempVariable = "TMPDIR";
#endif

const QString kSite = QStringLiteral("https://learn.microsoft.com");

class ListRefresh : public testing::Test
{
protected:
    ListRefresh()
    {
        previousTmp_ = qgetenv(kTempVariable);
        qputenv(kTempVariable, QFile::encodeName(application.temp()));
        QDir().mkpath(application.root() + "/Win11Checker");
    }
    ~ListRefresh() override
    {
        previousTmp_.isNull() ? qunsetenv(kTempVariable) : qputenv(kTempVariable, previousTmp_);
    }

    void configure(const QJsonObject& values)
    {
        application.write(application.folder() + "/remoteconfig.json", QJsonDocument(values).toJson());
    }
    // A list program that records its arguments and its script.
    void installFinder()
    {
        application.script(
            application.folder() + "/WebViewFinder.exe",
            "cd \"" + QFile::encodeName(application.root()) +
                "\"\nfor a in \"$@\"; do echo \"$a\" >> arguments; done\necho end >> arguments\n"
                "cat \"${3#callFunctionFile=}\" > script\n");
    }
    QStringList arguments() const
    {
        return QString::fromUtf8(application.read(application.root() + "/arguments"))
            .split('\n', Qt::SkipEmptyParts);
    }
    QByteArray script() const { return application.read(application.root() + "/script"); }
    QString whitelistPath() const { return application.root() + "/Win11Checker/win11_cpu_whitelist.txt"; }

    ScratchApplication application;

private:
    QByteArray previousTmp_;
};

TEST_F(ListRefresh, Refresh_StartsTheProgramForEachMakerWithSixArguments)
{
    installFinder();
    refreshProcessorLists();
    const QStringList given = arguments();
    ASSERT_EQ(given.size(), 21);
    const QStringList makers = {"intel", "amd", "qualcomm"};
    for (int i = 0; i < 3; ++i) {
        const QString maker = makers.at(i);
        EXPECT_EQ(given.at(i * 7), QString("url=%1/en-us/windows-hardware/design/minimum/supported/"
                                           "windows-11-24h2-supported-%2-processors")
                                       .arg(kSite, maker));
        EXPECT_EQ(given.at(i * 7 + 1), "manufacturer=" + maker);
        EXPECT_EQ(given.at(i * 7 + 3), "type=win11_cpus");
        EXPECT_EQ(given.at(i * 7 + 4), "WVF_server=partition_manager_tvins_server");
        EXPECT_EQ(given.at(i * 7 + 5), "willEmbed=false");
        EXPECT_EQ(given.at(i * 7 + 6), "end");
    }
}

TEST_F(ListRefresh, Refresh_ScriptFileIsNamedByTheTimeAndIsNotRemoved)
{
    installFinder();
    refreshProcessorLists();
    const QString argument = arguments().at(2);
    const QRegularExpression form(
        "^callFunctionFile=" + QRegularExpression::escape(application.temp()) +
        "/tmp_win11_checker_function_\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d\\.txt$");
    EXPECT_TRUE(form.match(argument).hasMatch()) << argument.toStdString();
    EXPECT_TRUE(QFile::exists(argument.mid(17)));
}

TEST_F(ListRefresh, Refresh_WithoutConfiguration_PassesTheBuiltInScript)
{
    installFinder();
    refreshProcessorLists();
    EXPECT_EQ(script(), QByteArray(kExpectedScript));
}

TEST_F(ListRefresh, Refresh_ConfiguredScriptAndAddresses_ReplaceThem)
{
    installFinder();
    configure({{"url_win11_cpulist_function_text", "doOther(\u00e9)"},
               {"url_win11_cpulist_intel", "http://i"},
               {"url_win11_cpulist_amd", "http://a"},
               {"url_win11_cpulist_qualcomm", "http://q"}});
    refreshProcessorLists();
    EXPECT_EQ(script(), QByteArray("doOther(\xc3\xa9)"));
    const QStringList given = arguments();
    ASSERT_EQ(given.size(), 21);
    EXPECT_EQ(given.at(0), "url=http://i");
    EXPECT_EQ(given.at(7), "url=http://a");
    EXPECT_EQ(given.at(14), "url=http://q");
}

TEST_F(ListRefresh, Refresh_WithoutTheProgram_KeepsTheOldListsAndPausesThreeTimes)
{
    const QString list = application.root() + "/Win11Checker/SupportedProcessorsIntel.txt";
    application.write(list, "Core i5-8400\n");
    QElapsedTimer timer;
    timer.start();
    refreshProcessorLists();
    EXPECT_GE(timer.elapsed(), 300);
    EXPECT_EQ(application.read(list), "Core i5-8400\n");
}

TEST_F(ListRefresh, Refresh_ProgramThatDoesNotEnd_IsTerminatedAfterTheTimeout)
{
    const QString list = application.root() + "/pids";
    application.script(application.folder() + "/WebViewFinder.exe",
                       QByteArray("echo ") + kOwnProcess + " >> \"" + QFile::encodeName(list) +
                           "\"\nwhile [ -e \"$0\" ]; do sleep 0.1; done\n");
    // The round counts only if the program writes its process number before the timeout. On a busy machine
    // it is repeated with twice the timeout.
    QList<QByteArray> pids;
    for (int limitMs = 250; limitMs <= 32000 && pids.size() != 3; limitMs *= 2) {
        QFile::remove(list);
        refreshProcessorLists(limitMs);
        pids = application.read(list).trimmed().split('\n');
    }
    ASSERT_EQ(pids.size(), 3);
    for (const QByteArray& pid : pids)
        EXPECT_FALSE(processRuns(pid)) << pid.constData();
}

TEST(ListRefreshLimit, Finder_MayTakeThirtySeconds)
{
    EXPECT_EQ(kListFinderTimeoutMs, 30000);
}

TEST_F(ListRefresh, Refresh_ConfiguredWhitelist_IsWritten)
{
    configure({{"url_win11_cpu_whitelist", "VIA N\u00e4no\nOther"}});
    refreshProcessorLists();
    EXPECT_EQ(application.read(whitelistPath()), QByteArray("VIA N\xc3\xa4no\nOther"));
}

TEST_F(ListRefresh, Refresh_EmptyWhitelist_DoesNotChangeTheFile)
{
    application.write(whitelistPath(), "old\n");
    configure({{"url_win11_cpu_whitelist", ""}});
    refreshProcessorLists();
    EXPECT_EQ(application.read(whitelistPath()), "old\n");
}

TEST_F(ListRefresh, Refresh_ShorterWhitelist_LeavesTheTailOfTheOld)
{
    application.write(whitelistPath(), "0123456789");
    configure({{"url_win11_cpu_whitelist", "abc"}});
    refreshProcessorLists();
    EXPECT_EQ(application.read(whitelistPath()), "abc3456789");
}

TEST_F(ListRefresh, Refresh_WithoutTheFolder_WritesNothing)
{
    QDir(application.root() + "/Win11Checker").removeRecursively();
    configure({{"url_win11_cpu_whitelist", "abc"}});
    refreshProcessorLists();
    EXPECT_FALSE(QFile::exists(whitelistPath()));
}

TEST_F(ListRefresh, ServerName_IsThePlainFileNameAndTheSuffix)
{
    EXPECT_EQ(webViewServerName("tvins_server"), "partition_manager_tvins_server");
}

// Another order of the steps gives "my_app_exe_tvins_server" or "my_app_exe_exe_tvins_server".
TEST_F(ListRefresh, ServerName_IsInLowerCaseBeforeItLosesExe_AndLosesExeBeforeItsDots)
{
    application.rename("My.App.EXE.exe");
    EXPECT_EQ(webViewServerName("tvins_server"), "my_app_tvins_server");
    application.rename("A b.exe.c.Exe");
    EXPECT_EQ(webViewServerName("x"), "a_b_c_x");
}

TEST_F(ListRefresh, FunctionFile_ThatCannotBeWritten_StillHasAPath)
{
    const QString file = application.root() + "/notAFolder";
    application.write(file, "x");
    qputenv(kTempVariable, QFile::encodeName(file));
    const QString path = writeFunctionFile("x");
    EXPECT_TRUE(path.startsWith(file + "/tmp_win11_checker_function_")) << path.toStdString();
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
