// The program's window without a display, and what it says of itself as a host.
#include "tests/host/ZorhostProcess.h"

#include <QtCore/QFile>
#include <QtGui/QImage>

#include <gtest/gtest.h>

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

TEST(ZorhostWindow, ScreenshotWithAnAgent_IsTakenWhenItEndsAndKeepsItsExitCode)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--theme", "light", "--screenshot", "window.png", "--agent",
                                 "test -e window.png && exit 9; exit 3", "--exit-with-agent"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 3) << host.errors().constData();
    EXPECT_GT(QImage(host.file("window.png")).pixelColor(1, 1).lightness(), 200);
}

TEST(ZorhostWindow, ScreenshotAtABadPath_IsOneLineAndExitCode2)
{
    ZorhostProcess host;
    host.start({"--screenshot", "no/such/folder/window.png"});
    EXPECT_EQ(host.exitCode(), 2);
    EXPECT_EQ(linesOf(host.errors()), 1) << host.errors().constData();
    EXPECT_TRUE(host.errors().contains("no/such/folder/window.png")) << host.errors().constData();
    EXPECT_EQ(host.output(), "");
}

TEST(ZorhostWindow, CheckHost_FindsEverythingInTheSandboxHost)
{
    ZorhostProcess host;
    host.start({"--check-host"});
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    const QByteArray output = host.output();
    EXPECT_TRUE(output.endsWith("38 looked for: 38 found, 0 missing, 0 with another signature\n"))
        << output.constData();
    EXPECT_EQ(linesOf(output), 39);
    EXPECT_EQ(output.count("\nmissing"), 0);
}

} // namespace
