// The size and the theme of the window that the host remembers between runs.
#include "host/WindowMemory.h"
#include "tests/host/WindowTest.h"

#include "tests/support/Threads.h"

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

namespace {

const QSize kLargeScreen(3840, 2160);

class WindowSettings : public WindowTest
{
protected:
    WindowSettings() : WindowTest(host::ThemeMode::Light) {}

    QString file() const { return folder_.filePath("zorhost/zorhost.ini"); }
    void write(const QByteArray& content) const
    {
        ASSERT_TRUE(QDir(folder_.path()).mkpath("zorhost"));
        QFile target(file());
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(content);
    }
    QByteArray content() const
    {
        QFile source(file());
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    std::unique_ptr<host::WindowMemory> memory()
    {
        return std::make_unique<host::WindowMemory>(file(), *scene.window(), scene.theme());
    }
    QSize restored(const QSize& screen = kLargeScreen)
    {
        memory()->restore(screen, false);
        return scene.window()->size();
    }

    QTemporaryDir folder_;
};

TEST_F(WindowSettings, MissingFile_KeepsSizeAndThemeAndIsNotCreatedByTheStart)
{
    const QSize before = scene.window()->size();
    EXPECT_EQ(restored(), before);
    EXPECT_EQ(scene.theme().mode(), host::ThemeMode::Light);
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(WindowSettings, SizeAndTheme_ReturnInTheNextRun)
{
    {
        const auto first = memory();
        first->restore(kLargeScreen, false);
        scene.window()->resize(1100, 700);
        scene.theme().setMode(host::ThemeMode::Dark);
        EXPECT_TRUE(first->save());
    }
    EXPECT_TRUE(content().contains("width=1100")) << content().constData();
    EXPECT_TRUE(content().contains("height=700")) << content().constData();
    EXPECT_TRUE(content().contains("theme=dark")) << content().constData();
    scene.window()->resize(1280, 720);
    scene.theme().setMode(host::ThemeMode::Light);
    EXPECT_EQ(restored(), QSize(1100, 700));
    EXPECT_EQ(scene.theme().mode(), host::ThemeMode::Dark);
}

// A kill must not lose it.
TEST_F(WindowSettings, ChosenTheme_IsWrittenAtOnce)
{
    const auto first = memory();
    first->restore(kLargeScreen, false);
    scene.theme().setModeName("dark");
    EXPECT_TRUE(content().contains("theme=dark")) << content().constData();
}

TEST_F(WindowSettings, ThemeOfTheCommandLine_WinsAndIsNotWritten)
{
    write("[window]\ntheme=dark\n");
    const auto first = memory();
    first->restore(kLargeScreen, true);
    EXPECT_EQ(scene.theme().mode(), host::ThemeMode::Light);
    EXPECT_TRUE(first->save());
    EXPECT_TRUE(content().contains("theme=dark")) << content().constData();
}

TEST_F(WindowSettings, SmallerScreen_LimitsTheSize)
{
    write("[window]\nwidth=3000\nheight=2000\n");
    EXPECT_EQ(restored(QSize(1366, 728)), QSize(1366, 728));
}

TEST_F(WindowSettings, SizeBelowTheMinimum_IsRaised)
{
    write("[window]\nwidth=3\nheight=2\n");
    EXPECT_EQ(restored(), scene.window()->minimumSize());
}

TEST_F(WindowSettings, MaximizedWindow_KeepsItsOrdinarySizeAndReturnsMaximized)
{
    write("[window]\nwidth=1000\nheight=650\n");
    const auto first = memory();
    first->restore(kLargeScreen, false);
    scene.window()->showMaximized();
    EXPECT_TRUE(first->save());
    EXPECT_TRUE(content().contains("width=1000")) << content().constData();
    scene.window()->showNormal();
    ASSERT_FALSE(scene.window()->windowStates().testFlag(Qt::WindowMaximized));
    restored();
    EXPECT_TRUE(scene.window()->windowStates().testFlag(Qt::WindowMaximized));
}

struct Damage
{
    const char* name;
    QByteArray content;
};

class DamagedSettings : public WindowSettings, public testing::WithParamInterface<Damage>
{
};

TEST_P(DamagedSettings, File_IsIgnoredAndReplacedByTheNextSave)
{
    write(GetParam().content);
    const QSize before = scene.window()->size();
    const auto first = memory();
    first->restore(kLargeScreen, false);
    EXPECT_EQ(scene.window()->size(), before);
    EXPECT_EQ(scene.theme().mode(), host::ThemeMode::Light);
    scene.theme().setMode(host::ThemeMode::Dark);
    EXPECT_TRUE(first->save());
    scene.theme().setMode(host::ThemeMode::System);
    scene.window()->resize(1010, 660);
    EXPECT_TRUE(first->save());
    scene.window()->resize(1280, 720);
    EXPECT_EQ(restored(), QSize(1010, 660)) << content().constData();
}

INSTANTIATE_TEST_SUITE_P(
    Each, DamagedSettings,
    testing::Values(Damage{"Empty", ""}, Damage{"Binary", QByteArray("\0\xff\x89PNG\r\n\x1a\n[[[=", 14)},
                    Damage{"WithoutASection", "][\nwidth\n===\n"},
                    Damage{"Words", "[window]\nwidth=wide\nheight=@Invalid()\ntheme=purple\nmaximized=7x\n"},
                    Damage{"Negative", "[window]\nwidth=-5\nheight=99999999999999\n"},
                    Damage{"Truncated", "[window]\nwidth=12"},
                    Damage{"Variant", "[window]\nwidth=@Variant(\\0\\0\\0\\x7f)\nheight=@Size(1 2)\n"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(WindowSettings, FolderThatCannotBeCreated_ChangesNothingAndFailsTheSave)
{
    QFile obstacle(folder_.filePath("zorhost"));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    const QSize before = scene.window()->size();
    const auto first = memory();
    first->restore(kLargeScreen, false);
    scene.theme().setMode(host::ThemeMode::Dark);
    EXPECT_TRUE(scene.theme().isDark());
    EXPECT_EQ(scene.window()->size(), before);
    EXPECT_FALSE(first->save());
}

TEST_F(WindowSettings, FolderInPlaceOfTheFile_ChangesNothingAndFailsTheSave)
{
    ASSERT_TRUE(QDir(folder_.path()).mkpath("zorhost/zorhost.ini"));
    const QSize before = scene.window()->size();
    EXPECT_EQ(restored(), before);
    EXPECT_FALSE(memory()->save());
}

TEST_F(WindowSettings, UserFile_IsInTheFolderOfTheUsersSettings)
{
    EXPECT_TRUE(host::WindowMemory::userFile().endsWith("/zorhost/zorhost.ini"))
        << host::WindowMemory::userFile().toStdString();
}

} // namespace
