// The program's window on the offscreen platform, and --check-host.
#include "tests/host/ZorhostProcess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <set>

namespace {

int coloursOf(const QImage& picture)
{
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    return static_cast<int>(colours.size());
}

int linesOf(const QByteArray& text)
{
    return text.count('\n');
}

TEST(ZorhostWindow, Screenshot_IsWrittenWithoutADisplayAndTheProgramEnds)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--machine", "desktop", "--theme", "dark", "--screenshot", "window.png"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_EQ(host.output().count("screenshot window.png: 1280x720"), 1) << host.output().constData();
    const QImage picture(host.file("window.png"));
    EXPECT_EQ(picture.size(), QSize(1280, 720));
    EXPECT_GT(coloursOf(picture), 50);
    EXPECT_LT(picture.pixelColor(1, 1).lightness(), 60);
    EXPECT_LT(QFile(host.file("window.png")).size(), 150000);
}

TEST(ZorhostWindow, SizeOfTheCommandLine_IsThatOfThePicture)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--size", "640x480", "--screenshot", "window.png"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_EQ(QImage(host.file("window.png")).size(), QSize(640, 480));
}

TEST(ZorhostWindow, ScreenshotWithAScaleFactor_IsTheWholeWindowInItsPixels)
{
    ZorhostProcess host;
    host.environment().insert("QT_SCALE_FACTOR", "2");
    ASSERT_TRUE(host.startReady({"--size", "640x480", "--theme", "light", "--screenshot", "window.png"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    const QImage picture(host.file("window.png"));
    ASSERT_EQ(picture.size(), QSize(1280, 960));
    EXPECT_EQ(picture.pixelColor(1278, 958), picture.pixelColor(1, 1));
}

TEST(ZorhostWindow, ScreenshotWithAnAgent_IsTakenAtItsEndAndKeepsItsExitCode)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--theme", "light", "--screenshot", "window.png", "--agent",
                                 "test -e window.png && exit 9; exit 3", "--exit-with-agent"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 3) << host.errors().constData();
    EXPECT_GT(QImage(host.file("window.png")).pixelColor(1, 1).lightness(), 200);
}

TEST(ZorhostWindow, ScreenshotAtAnInvalidPath_IsOneLineAndExitCode2)
{
    ZorhostProcess host;
    host.start({"--screenshot", "no/such/folder/window.png"});
    EXPECT_EQ(host.exitCode(), 2);
    EXPECT_EQ(linesOf(host.errors()), 1) << host.errors().constData();
    EXPECT_TRUE(host.errors().contains("no/such/folder/window.png")) << host.errors().constData();
    EXPECT_EQ(host.output(), "");
}

const char* const kSettings = "config/zorhost/zorhost.ini";

TEST(ZorhostWindow, ShownWindow_RemembersItsSizeAtTheEnd)
{
    ZorhostProcess host;
    host.environment().insert("QT_QPA_PLATFORM", "offscreen");
    ASSERT_TRUE(host.startReady({"--window"})) << host.errors().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(host.waitForContent(kSettings, "width="));
}

// Without the settings, the window would have the size of the offscreen display, and this size would be
// saved.
TEST(ZorhostWindow, RememberedSize_IsUsedAndKept)
{
    ZorhostProcess host;
    host.environment().insert("QT_QPA_PLATFORM", "offscreen");
    ASSERT_TRUE(QDir(host.file("")).mkpath("config/zorhost"));
    host.write(kSettings, "[window]\nwidth=700\nheight=500\n");
    ASSERT_TRUE(host.startReady({"--window", "--theme", "dark"})) << host.errors().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    ASSERT_TRUE(host.waitForContent(kSettings, "maximized=false"));
    EXPECT_TRUE(host.waitForContent(kSettings, "width=700"));
    EXPECT_TRUE(host.waitForContent(kSettings, "height=500"));
    EXPECT_FALSE(host.waitForContent(kSettings, "theme="));
}

TEST(ZorhostWindow, SizeOfTheCommandLine_WinsOverTheRememberedSize)
{
    ZorhostProcess host;
    host.environment().insert("QT_QPA_PLATFORM", "offscreen");
    ASSERT_TRUE(QDir(host.file("")).mkpath("config/zorhost"));
    host.write(kSettings, "[window]\nwidth=700\nheight=500\nmaximized=true\n");
    ASSERT_TRUE(host.startReady({"--window", "--size", "720x520"})) << host.errors().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(host.waitForContent(kSettings, "width=720"));
}

TEST(ZorhostWindow, HeadlessAndScreenshot_UseNoSettings)
{
    const QList<QStringList> runs = {{"--headless", "--agent", "true", "--exit-with-agent"},
                                     {"--screenshot", "w.png"}};
    for (const QStringList& arguments : runs) {
        ZorhostProcess host;
        ASSERT_TRUE(QDir(host.file("")).mkpath("config/zorhost"));
        host.write(kSettings, "[window]\nwidth=700\nheight=500\ntheme=dark\n");
        ASSERT_TRUE(host.startReady(arguments)) << host.errors().constData();
        EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
        QFile settings(host.file(kSettings));
        ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
        EXPECT_EQ(settings.readAll(), "[window]\nwidth=700\nheight=500\ntheme=dark\n");
        const QImage picture(host.file("w.png"));
        if (!picture.isNull()) {
            EXPECT_EQ(picture.size(), QSize(1280, 720));
            EXPECT_GT(picture.pixelColor(1, 1).lightness(), 200);
        }
    }
}

// A file in place of the folder: nothing can be read or written, not even by root.
TEST(ZorhostWindow, UnwritableSettings_AreReportedInOneLineAtTheEndAndChangeNothingElse)
{
    ZorhostProcess host;
    host.environment().insert("QT_QPA_PLATFORM", "offscreen");
    host.write("config", "");
    ASSERT_TRUE(host.startReady({"--window", "--agent", "true", "--exit-with-agent"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_EQ(host.errors(),
              "zorhost: settings " + host.file(kSettings).toLocal8Bit() + ": cannot be written\n");
}

TEST(ZorhostWindow, UnknownLanguage_ListsTheLanguagesInOneLineWithExitCode2)
{
    ZorhostProcess host;
    host.start({"--language", "fr"});
    EXPECT_EQ(host.exitCode(), 2);
    EXPECT_EQ(host.errors(), "zorhost: option --language needs one of: en, de\n");
    EXPECT_EQ(host.output(), "");
}

TEST(ZorhostWindow, GermanScan_PrintsTheRecordOfTheLibrary)
{
    ZorhostProcess host;
    host.write("unwell.json", R"({"smartErrors": [1], "disks": [{"diskIndex": 1, "size": 1073741824}]})");
    ASSERT_TRUE(
        host.startReady({"--headless", "--language", "de", "--machine", host.file("unwell.json"), "--scan"}))
        << host.errors().constData();
    EXPECT_TRUE(
        host.waitForOutput("recommendation {\"buttons\":[\"Annehmen\",\"Abbrechen\"],\"default\":0,"
                           "\"msg\":\"Beim Zustand von Datenträger 1 wurde eine Auffälligkeit erkannt."))
        << host.output().constData();
    EXPECT_TRUE(host.waitForOutput("scan ended\n"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

// The output and the transcript of an agent's run, without the parts that differ between runs.
struct Account
{
    QStringList output;
    QStringList transcript;
};

QStringList linesWithout(const QByteArray& text, const QString& pattern)
{
    QString rest = QString::fromUtf8(text);
    rest.remove(QRegularExpression(pattern));
    QStringList lines = rest.split('\n');
    // The agent's lines and the host's arrive in either order.
    lines.sort();
    return lines;
}

Account accountOf(const QString& language)
{
    ZorhostProcess host;
    EXPECT_TRUE(host.startReady({"--headless", "--machine", "desktop", "--language", language, "--transcript",
                                 "transcript", "--exit-with-agent", "--agent",
                                 QString("/usr/bin/python3 %1 %2").arg(AGENT_SCRIPT, AGENT_CODE)}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    QFile file(host.file("transcript"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList transcript = linesWithout(file.readAll(), "\"(ms|time)\":(\"[^\"]*\"|\\d+),?");
    // The number and the results of the gate's reads depend on the agent's retries.
    transcript.erase(std::remove_if(transcript.begin(), transcript.end(),
                                    [](const QString& line) {
                                        return line.contains("\"member\":\"popuped\"") ||
                                               line.contains("\"member\":\"busy\"");
                                    }),
                     transcript.end());
    return {linesWithout(host.output(), "(?m)^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} |:\\d+$"), transcript};
}

TEST(ZorhostWindow, German_LeavesTranscriptLogAndAnswersUnchanged)
{
    const Account english = accountOf("en");
    const Account german = accountOf("de");
    EXPECT_EQ(german.output, english.output) << german.output.join('\n').toStdString();
    EXPECT_EQ(german.transcript, english.transcript) << german.transcript.join('\n').toStdString();
    EXPECT_TRUE(english.output.contains("DeletePartition -> Task NotValid False"));
}

TEST(ZorhostWindow, CheckHost_FindsEverythingInTheSandboxHost)
{
    ZorhostProcess host;
    host.start({"--check-host"});
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    const QByteArray output = host.output();
    EXPECT_TRUE(output.endsWith("38 checked: 38 found, 0 missing, 0 with another signature\n"))
        << output.constData();
    EXPECT_EQ(linesOf(output), 39);
    EXPECT_EQ(output.count("\nmissing"), 0);
}

} // namespace
