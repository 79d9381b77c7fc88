// Keyboard use, and light and dark colours.
#include "tests/host/WindowTest.h"

#include "tests/support/Threads.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <cmath>
#include <functional>

namespace {

using WindowKeys = WindowTest;

TEST_F(WindowKeys, Tab_StartsAtTheDisksAndReachesEveryControl)
{
    QStringList order;
    press(Qt::Key_Tab);
    while (!order.contains(focused())) {
        order.append(focused());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(order,
              QStringList({"diskList", "searchField", "compactToggle", "logButton", "timelineList",
                           "win11Toggle", "dialogToggle", "languageButton", "scanButton", "menuButton"}));
}

TEST_F(WindowKeys, BackTab_GoesBack)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "menuButton");
}

TEST_F(WindowKeys, FocusedItem_HasARing)
{
    for (const char* name : {"scanButton", "win11Toggle", "timelineList"}) {
        EXPECT_TRUE(items("focusRing").empty() || focused() != name);
        ASSERT_TRUE(tabTo(name));
        ASSERT_EQ(items("focusRing").size(), 1u) << name;
        EXPECT_TRUE(placeOf(items("focusRing").front()).intersects(placeOf(item(name)))) << name;
    }
}

TEST_F(WindowKeys, EnterAndSpace_PressAButton)
{
    ASSERT_TRUE(tabTo("logButton"));
    press(Qt::Key_Return);
    EXPECT_EQ(text("logButton"), "Show agent");
    press(Qt::Key_Enter);
    EXPECT_EQ(text("logButton"), "Show log");
    press(Qt::Key_Space);
    EXPECT_EQ(text("logButton"), "Show agent");
}

TEST_F(WindowKeys, Enter_TogglesASwitch)
{
    ASSERT_TRUE(tabTo("win11Toggle"));
    press(Qt::Key_Return);
    EXPECT_TRUE(scene.core().isWin11Checker());
    ASSERT_TRUE(tabTo("dialogToggle"));
    press(Qt::Key_Space);
    EXPECT_TRUE(isPopuped());
    EXPECT_NE(item("popupBadge"), nullptr);
}

TEST_F(WindowKeys, Arrows_SelectDiskAndEntry)
{
    ASSERT_TRUE(tabTo("diskList"));
    EXPECT_TRUE(text("details").contains("EFI"));
    press(Qt::Key_Right);
    EXPECT_TRUE(text("details").contains("C: Windows"));
    press(Qt::Key_Down);
    EXPECT_TRUE(text("details").startsWith("Disk 1"));
    press(Qt::Key_Up);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_TRUE(text("details").contains("EFI"));
}

TEST_F(WindowKeys, Click_SelectsTheEntry)
{
    scene.window()->grabWindow();
    for (QQuickItem* title : items("segmentTitle")) {
        if (title->property("text") == "D: Data")
            click(title);
    }
    EXPECT_TRUE(text("details").contains("D: Data"));
    EXPECT_EQ(focused(), "diskList");
}

// A list that is longer than its pane.
void checkScrolling(QQuickItem* list, const std::function<void(Qt::Key)>& press)
{
    ASSERT_GT(list->property("contentHeight").toDouble(), 2 * list->height());
    press(Qt::Key_Home);
    EXPECT_TRUE(list->property("atYBeginning").toBool());
    press(Qt::Key_Down);
    const double below = list->property("contentY").toDouble();
    EXPECT_FALSE(list->property("atYBeginning").toBool());
    press(Qt::Key_End);
    EXPECT_TRUE(list->property("atYEnd").toBool());
    EXPECT_GT(list->property("contentY").toDouble(), below);
    press(Qt::Key_Up);
    EXPECT_FALSE(list->property("atYEnd").toBool());
}

TEST_F(WindowKeys, HomeEndAndArrows_ScrollEachList)
{
    constexpr int kRows = 60;
    for (int row = 0; row < kRows; ++row) {
        scene.core().log()->write(QString::number(row));
        Q_EMIT bridge.sigAbout2CallFun("DeletePartition driveLetter=C");
        Q_EMIT bridge.sigAfterCallFun("a partition with all of its details", false);
        scene.core().orders().order(31, {{"driveLetter", "E"}, {"newLabel", QString::number(row)}});
    }
    // The log grows until the last task has ended.
    ASSERT_TRUE(pumpUntil([&] { return !scene.core().tasks()->isAtWork(); }));
    for (const char* name : {"taskList", "timelineList", "logList"}) {
        SCOPED_TRACE(name);
        if (name == QString("logList"))
            click(item("logButton"));
        ASSERT_TRUE(tabTo(name)) << name;
        // New rows scroll the list in the next round of the event loop.
        ASSERT_TRUE(pumpUntil([&] { return item(name)->property("atYEnd").toBool(); })) << name;
        checkScrolling(item(name), [&](Qt::Key key) { press(key); });
    }
}

TEST_F(WindowKeys, NewLines_DoNotMoveALogThatTheUserHasScrolledBack)
{
    constexpr int kRows = 60;
    for (int row = 0; row < kRows; ++row)
        scene.core().log()->write(QString::number(row));
    click(item("logButton"));
    ASSERT_TRUE(tabTo("logList"));
    ASSERT_TRUE(pumpUntil([&] { return item("logList")->property("atYEnd").toBool(); }));
    press(Qt::Key_Home);
    scene.core().log()->write("new");
    ASSERT_GT(item("logList")->property("count").toInt(), kRows);
    // The list would follow with the next frame.
    scene.window()->grabWindow();
    QCoreApplication::processEvents();
    scene.window()->grabWindow();
    EXPECT_TRUE(item("logList")->property("atYBeginning").toBool());
    press(Qt::Key_End);
    scene.core().log()->write("newest");
    EXPECT_TRUE(pumpUntil([&] {
        return item("logList")->property("count").toInt() > kRows + 1 &&
               item("logList")->property("atYEnd").toBool();
    }));
}

double channel(double value)
{
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
           0.0722 * channel(colour.blueF());
}

// Contrast ratio of the accessibility guidelines, 1 to 21; they require 4.5 for text of this size.
double contrast(const QColor& a, const QColor& b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

class ThemeColours : public testing::TestWithParam<host::ThemeMode>
{
protected:
    host::Theme theme{GetParam()};
};

TEST_P(ThemeColours, Texts_HaveEnoughContrast)
{
    constexpr double kMinContrast = 4.5;
    for (const QColor& ground : {theme.window(), theme.surface(), theme.raised()}) {
        EXPECT_GE(contrast(theme.text(), ground), kMinContrast);
        EXPECT_GE(contrast(theme.muted(), ground), kMinContrast);
    }
    for (const QColor& ink : {theme.good(), theme.bad(), theme.warn(), theme.accent()})
        EXPECT_GE(contrast(ink, theme.surface()), kMinContrast) << ink.name().toStdString();
    EXPECT_GE(contrast(theme.good(), theme.goodSurface()), kMinContrast);
    EXPECT_GE(contrast(theme.bad(), theme.badSurface()), kMinContrast);
    EXPECT_GE(contrast(theme.warn(), theme.warnSurface()), kMinContrast);
    EXPECT_GE(contrast(theme.accent(), theme.accentSurface()), kMinContrast);
    EXPECT_GE(contrast(theme.text(), theme.accentSurface()), kMinContrast);
    EXPECT_GE(contrast(theme.accentText(), theme.accent()), kMinContrast);
    for (const char* name : {"NTFS", "FAT32", "exFAT", "ReFS", "ext4", ""})
        EXPECT_GE(contrast(theme.text(), theme.fileSystem(name, true)), kMinContrast) << name;
}

TEST_P(ThemeColours, FileSystems_DifferFromEachOtherAndUsedFromFree)
{
    EXPECT_NE(theme.fileSystem("NTFS", false), theme.fileSystem("FAT32", false));
    EXPECT_NE(theme.fileSystem("NTFS", false), theme.fileSystem("exFAT", false));
    EXPECT_NE(theme.fileSystem("NTFS", true), theme.raised());
    EXPECT_EQ(theme.fileSystem("ntfs", true), theme.fileSystem("NTFS", true));
}

INSTANTIATE_TEST_SUITE_P(Both, ThemeColours, testing::Values(host::ThemeMode::Light, host::ThemeMode::Dark),
                         [](const auto& row) {
                             return row.param == host::ThemeMode::Dark ? std::string("Dark")
                                                                       : std::string("Light");
                         });

class WindowFollowsSystem : public WindowTest
{
protected:
    WindowFollowsSystem() : WindowTest(host::ThemeMode::System) {}
};

TEST_F(WindowFollowsSystem, Palette_DecidesBetweenLightAndDarkAtAnyTime)
{
    QQuickItem* name = item("machineName");
    QGuiApplication::setPalette(QPalette(QColor("#202020")));
    ASSERT_TRUE(pumpUntil([&] { return scene.theme().isDark(); }));
    const QColor onDark = name->property("color").value<QColor>();
    QGuiApplication::setPalette(QPalette(QColor("#f0f0f0")));
    ASSERT_TRUE(pumpUntil([&] { return !scene.theme().isDark(); }));
    const QColor onLight = name->property("color").value<QColor>();
    EXPECT_GT(onDark.lightness(), onLight.lightness());
}

} // namespace
