// The menu with the theme, the dialogs with the keys and the versions, the mark of the mode, and Ctrl+Q. The
// pictures remain in build/screenshots.
#include "host/Screenshot.h"
#include "tests/host/AskingSimulation.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>

namespace {

constexpr int kWipeDisk = 7;
constexpr int kHour = 3600000;

class WindowMenu : public WindowTest
{
protected:
    explicit WindowMenu(std::unique_ptr<host::Simulation> backend = simulated(testMachine()))
        : WindowTest(std::move(backend), host::ThemeMode::Light)
    {
    }

    void openMenu()
    {
        click(item("menuButton"));
        ASSERT_TRUE(pumpUntil([&] { return items("themeItem").size() == 3; }));
    }
    QQuickItem* themeItem(const QString& text)
    {
        for (QQuickItem* each : items("themeItem")) {
            if (each->property("text") == text)
                return each;
        }
        return nullptr;
    }
    bool isGone(const QString& name)
    {
        return pumpUntil([&] { return item(name) == nullptr; });
    }
    bool isOpen(const QString& title)
    {
        return waitForText("informationTitle", title) &&
               pumpUntil([&] { return focused() == "informationClose"; });
    }
    QImage picture(const QString& name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        scene.window()->grabWindow();
        // After a change of its size, the window has a picture only after the next frame.
        QImage taken;
        pumpUntil([&] { return !(taken = host::pictureOf(*scene.window())).isNull(); });
        taken.save(folder.filePath("screenshots/" + name));
        return taken;
    }
    void startWipe()
    {
        host::Machine machine = testMachine();
        machine.taskMilliseconds = kHour;
        simulation.setPace(host::Pace());
        simulation.change(machine);
        scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
        ASSERT_TRUE(pumpUntil([&] { return !texts("taskState").isEmpty(); }));
    }
    // The mark's own colours, which the shade of a dialog would darken.
    void expectClearMark(const QImage& taken)
    {
        QQuickItem* mark = item("modeMark");
        ASSERT_NE(mark, nullptr);
        const QRect place = placeOf(mark);
        EXPECT_TRUE(QRect(QPoint(0, 0), scene.window()->size()).contains(place));
        const QColor ground = mark->property("color").value<QColor>();
        const double scale = taken.width() / static_cast<double>(scene.window()->width());
        int count = 0;
        for (int x = place.left(); x < place.right(); ++x)
            count += taken.pixelColor(qRound(x * scale), qRound((place.top() + 3) * scale)) == ground ? 1 : 0;
        EXPECT_GT(count, place.width() / 2);
        EXPECT_FALSE(mark->childItems().first()->property("truncated").toBool());
    }
};

TEST_F(WindowMenu, Dark_ChangesTheColoursAtOnceAndIsMarked)
{
    openMenu();
    EXPECT_TRUE(themeItem("Light")->property("chosen").toBool());
    click(themeItem("Dark"));
    EXPECT_TRUE(pumpUntil([&] { return scene.theme().isDark(); }));
    ASSERT_TRUE(isGone("themeItem"));
    openMenu();
    EXPECT_TRUE(themeItem("Dark")->property("chosen").toBool());
    EXPECT_FALSE(themeItem("Light")->property("chosen").toBool());
    picture("menu-dark.png");
    click(themeItem("Colours of the system"));
    EXPECT_TRUE(pumpUntil([&] { return scene.theme().mode() == host::ThemeMode::System; }));
}

TEST_F(WindowMenu, Keyboard_OpensTheMenuAndChooses)
{
    ASSERT_TRUE(tabTo("menuButton"));
    press(Qt::Key_Return);
    ASSERT_TRUE(pumpUntil([&] { return items("themeItem").size() == 3; }));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(pumpUntil([&] { return scene.theme().mode() == host::ThemeMode::Dark; }));
    EXPECT_TRUE(pumpUntil([&] { return focused() == "menuButton"; })) << focused().toStdString();
}

TEST_F(WindowMenu, F1_ListsTheKeysAndEscapeReturnsTheFocus)
{
    ASSERT_TRUE(tabTo("logButton"));
    press(Qt::Key_F1);
    ASSERT_TRUE(isOpen("Keys"));
    const QStringList keys = texts("informationTerm");
    for (const char* key : {"Tab, Shift+Tab", "Up, Down", "Left, Right", "Home, End", "Enter, Space",
                            "Escape", "Ctrl+F", "Ctrl+Q", "F1"})
        EXPECT_TRUE(keys.contains(key)) << key;
    picture("help.png");
    press(Qt::Key_Escape);
    EXPECT_TRUE(isGone("informationTitle"));
    EXPECT_TRUE(pumpUntil([&] { return focused() == "logButton"; })) << focused().toStdString();
}

TEST_F(WindowMenu, Help_CountsAsAnOpenDialogForTheGate)
{
    EXPECT_FALSE(isPopuped());
    press(Qt::Key_F1);
    ASSERT_TRUE(isOpen("Keys"));
    EXPECT_TRUE(isPopuped());
    EXPECT_NE(item("popupBadge"), nullptr);
    click(item("informationClose"));
    EXPECT_TRUE(pumpUntil([] { return !isPopuped(); }));
    EXPECT_TRUE(isGone("popupBadge"));
}

TEST_F(WindowMenu, About_StatesVersionsLicenceAndMode)
{
    openMenu();
    click(item("aboutItem"));
    ASSERT_TRUE(isOpen("Sandbox host of AIBridge (zorhost)"));
    const QStringList meanings = texts("informationMeaning");
    ASSERT_EQ(meanings.size(), 4);
    EXPECT_TRUE(QRegularExpression("^\\d+\\.\\d+\\.\\d+$").match(meanings[0]).hasMatch())
        << meanings[0].toStdString();
    EXPECT_EQ(meanings[1], "Simulated: no disk of the computer is changed.");
    EXPECT_TRUE(meanings[2].startsWith("Qt " + QString(qVersion()) + ", Apache Thrift 0."))
        << meanings[2].toStdString();
    EXPECT_EQ(meanings[3], "No licence is given.");
    expectClearMark(picture("about.png"));
}

TEST_F(WindowMenu, QuestionAboutData_ClosesTheHelp)
{
    startWipe();
    press(Qt::Key_F1);
    ASSERT_TRUE(isOpen("Keys"));
    scene.window()->close();
    ASSERT_NE(awaited("interruptionDialog"), nullptr);
    EXPECT_TRUE(isGone("informationTitle"));
    EXPECT_TRUE(pumpUntil([&] { return focused() == "interruptionKeep"; })) << focused().toStdString();
    press(Qt::Key_F1);
    EXPECT_EQ(item("informationTitle"), nullptr);
}

TEST_F(WindowMenu, CtrlQ_ClosesTheWindow)
{
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(scene.window()->isVisible());
}

TEST_F(WindowMenu, CtrlQDuringAWipe_AsksLikeTheCloseButton)
{
    startWipe();
    press(Qt::Key_F1);
    ASSERT_TRUE(isOpen("Keys"));
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    press(Qt::Key_Q, Qt::ControlModifier);
    ASSERT_NE(awaited("interruptionDialog"), nullptr);
    EXPECT_TRUE(scene.window()->isVisible());
    EXPECT_EQ(closed.count(), 0);
    EXPECT_TRUE(text("interruptionWarning").startsWith("Closing the window cancels this task."));
}

TEST_F(WindowMenu, Mark_ReadsSimulationInEveryState)
{
    EXPECT_EQ(text("modeMark"), "Simulation");
    expectClearMark(picture("mark.png"));
    click(item("compactToggle"));
    expectClearMark(picture("mark-compact.png"));
    startWipe();
    scene.window()->close();
    ASSERT_NE(awaited("interruptionDialog"), nullptr);
    expectClearMark(picture("mark-question.png"));
    scene.core().interruption().reject();
    ASSERT_TRUE(isGone("interruptionDialog"));
    press(Qt::Key_F1);
    ASSERT_TRUE(isOpen("Keys"));
    scene.window()->resize(640, 480);
    ASSERT_TRUE(pumpUntil([&] { return scene.window()->contentItem()->width() == 640; }));
    expectClearMark(picture("mark-small.png"));
}

TEST_F(WindowMenu, Title_NamesTheMachineAndTheMode)
{
    EXPECT_EQ(scene.window()->title(), "Sandbox host: test (simulation)");
    scene.language().setLanguage("de");
    EXPECT_EQ(scene.window()->title(), "Sandbox-Host: test (Simulation)");
    EXPECT_EQ(text("modeMark"), "Simulation");
}

TEST_F(WindowMenu, German_TranslatesMenuAndHelp)
{
    scene.language().setLanguage("de");
    EXPECT_EQ(text("menuButton"), QString::fromUtf8("Menü"));
    openMenu();
    EXPECT_NE(themeItem("Dunkel"), nullptr);
    click(item("helpItem"));
    ASSERT_TRUE(isOpen("Tasten"));
    EXPECT_TRUE(texts("informationTerm").contains("Strg+Q"));
    picture("help-german.png");
}

class WindowMenuRealDisks : public WindowMenu
{
protected:
    WindowMenuRealDisks() : WindowMenu(std::make_unique<AskingSimulation>(testMachine())) {}
};

TEST_F(WindowMenuRealDisks, MarkTitleAndAbout_StateRealDisks)
{
    EXPECT_EQ(text("modeMark"), "Real disks");
    EXPECT_EQ(scene.window()->title(), "Sandbox host: test (real disks)");
    expectClearMark(picture("mark-real.png"));
    scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
    ASSERT_NE(awaited("confirmationDialog"), nullptr);
    expectClearMark(picture("mark-real-question.png"));
    scene.core().orders().confirmation().reject();
    ASSERT_TRUE(isGone("confirmationDialog"));
    openMenu();
    click(item("aboutItem"));
    ASSERT_TRUE(isOpen("Sandbox host of AIBridge (zorhost)"));
    EXPECT_EQ(texts("informationMeaning").value(1),
              "Real: orders change the disks and images of the command line.");
}

} // namespace
