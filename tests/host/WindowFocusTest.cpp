// The keyboard focus when a guide opens and closes, and the panel with the switches for tests.
#include "host/machine/Records.h"
#include "plugin/HostCall.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

namespace {

class WindowFocus : public WindowTest
{
protected:
    void openConversion(int disk = 1)
    {
        const QVariant record = host::diskRecords(*scene.core().machine()).value(disk);
        Q_EMIT bridge.sigConvertResult(QVariantMap{{"funIdx", 0}, {"info", record}});
        ASSERT_NE(awaited("guidePane"), nullptr);
    }
    void openHealth()
    {
        orderHost(mainPage(), "opendiskhealth", ConnectionRule::Call,
                  QVariant(QVariantMap{{"diskIndex", 0}}));
    }
    bool hasFocus(const QString& name)
    {
        return pumpUntil([&] { return focused() == name; });
    }
};

TEST_F(WindowFocus, OpenedGuide_TakesTheFocusWithItsCloseButtonAndReturnsIt)
{
    ASSERT_TRUE(tabTo("logButton"));
    openConversion();
    EXPECT_TRUE(hasFocus("guideClose")) << focused().toStdString();
    press(Qt::Key_Return);
    EXPECT_EQ(item("guidePane"), nullptr);
    EXPECT_TRUE(hasFocus("logButton")) << focused().toStdString();
}

TEST_F(WindowFocus, Escape_ClosesTheGuideWhereverTheFocusIs)
{
    for (const char* name : {"diskList", "timelineList", "languageButton"}) {
        openConversion();
        ASSERT_TRUE(tabTo(name));
        press(Qt::Key_Escape);
        EXPECT_EQ(item("guidePane"), nullptr) << name;
        EXPECT_EQ(focused(), name);
    }
}

TEST_F(WindowFocus, GuideThatReplacesAnother_TakesTheFocusFromTheStartButton)
{
    ASSERT_TRUE(tabTo("diskList"));
    openConversion();
    ASSERT_TRUE(tabTo("guideStart"));
    openConversion(2);
    EXPECT_TRUE(hasFocus("guideClose"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(hasFocus("diskList")) << focused().toStdString();
}

TEST_F(WindowFocus, StartedGuide_ReturnsTheFocus)
{
    ASSERT_TRUE(tabTo("timelineList"));
    openConversion();
    ASSERT_TRUE(tabTo("guideStart"));
    press(Qt::Key_Return);
    EXPECT_TRUE(hasFocus("timelineList")) << focused().toStdString();
}

TEST_F(WindowFocus, PageThatCoversTheWindow_ReturnsTheFocus)
{
    ASSERT_TRUE(tabTo("logButton"));
    openHealth();
    ASSERT_TRUE(hasFocus("dialogClose"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(hasFocus("logButton")) << focused().toStdString();
}

TEST_F(WindowFocus, GuideAfterAPageThatCoversTheWindow_TakesTheFocus)
{
    ASSERT_TRUE(tabTo("logButton"));
    openHealth();
    ASSERT_TRUE(hasFocus("dialogClose"));
    openConversion();
    EXPECT_TRUE(hasFocus("guideClose")) << focused().toStdString();
}

TEST_F(WindowFocus, Switches_AreInAPanelBelowTheHeader)
{
    scene.window()->grabWindow();
    const int headerEnd = placeOf(item("scanButton")).bottom();
    for (const char* name : {"win11Toggle", "dialogToggle"}) {
        EXPECT_GT(placeOf(item(name)).top(), headerEnd) << name;
        EXPECT_TRUE(QRect(0, 0, 1280, 720).contains(placeOf(item(name)))) << name;
    }
}

// A window that is too small for all panes shows one at a time, selected by tabs.
class TabbedWindowFocus : public WindowFocus
{
protected:
    void SetUp() override
    {
        WindowFocus::SetUp();
        scene.window()->resize(640, 480);
        ASSERT_NE(awaited("disksTab"), nullptr);
    }
    void selectTab(const QString& name)
    {
        ASSERT_TRUE(tabTo(name));
        press(Qt::Key_Space);
    }
    /// The names of the tabs in the order in which the keys select them, until one repeats.
    QStringList selectedInTurn(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QStringList order;
        press(key, modifiers);
        while (!order.contains(focused())) {
            order.append(focused());
            press(key, modifiers);
        }
        return order;
    }
};

TEST_F(TabbedWindowFocus, CtrlTab_SelectsTheNextPaneFromAnyControl)
{
    ASSERT_TRUE(tabTo("searchField"));
    EXPECT_EQ(selectedInTurn(Qt::Key_Tab, Qt::ControlModifier),
              QStringList({"tasksTab", "agentTab", "testingTab", "disksTab"}));
    EXPECT_EQ(selectedInTurn(Qt::Key_PageDown, Qt::ControlModifier),
              QStringList({"agentTab", "testingTab", "disksTab", "tasksTab"}));
}

TEST_F(TabbedWindowFocus, CtrlShiftTab_SelectsThePreviousPane)
{
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::ShiftModifier;
    EXPECT_EQ(selectedInTurn(Qt::Key_Backtab, both),
              QStringList({"testingTab", "agentTab", "tasksTab", "disksTab"}));
    EXPECT_EQ(selectedInTurn(Qt::Key_PageUp, Qt::ControlModifier),
              QStringList({"agentTab", "tasksTab", "disksTab", "testingTab"}));
}

TEST_F(TabbedWindowFocus, ArrowsOnATab_SelectItsNeighbour)
{
    ASSERT_TRUE(tabTo("disksTab"));
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), "tasksTab");
    EXPECT_EQ(item("diskList"), nullptr);
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), "disksTab");
    EXPECT_NE(item("diskList"), nullptr);
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), "testingTab");
    EXPECT_NE(item("win11Toggle"), nullptr);
}

TEST_F(TabbedWindowFocus, GuideThatCloses_ReturnsThePaneAndTheFocus)
{
    for (const auto& [tab, control] :
         {std::pair("agentTab", "timelineList"), std::pair("disksTab", "diskList"),
          std::pair("testingTab", "win11Toggle")}) {
        selectTab(tab);
        ASSERT_TRUE(tabTo(control));
        openConversion();
        EXPECT_TRUE(hasFocus("guideClose")) << focused().toStdString();
        EXPECT_NE(item("guideTab"), nullptr);
        EXPECT_EQ(item(control), nullptr);
        press(Qt::Key_Escape);
        EXPECT_TRUE(hasFocus(control)) << focused().toStdString();
        EXPECT_EQ(item("guideTab"), nullptr);
    }
}

TEST_F(TabbedWindowFocus, GuideBehindAnotherPane_StaysOpenAndLeavesTheFocusWhenItCloses)
{
    openConversion();
    ASSERT_TRUE(hasFocus("guideClose"));
    selectTab("tasksTab");
    EXPECT_EQ(item("guidePane"), nullptr);
    ASSERT_NE(item("guideTab"), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(item("guideTab"), nullptr);
    EXPECT_EQ(focused(), "tasksTab");
}

TEST_F(TabbedWindowFocus, PaneThatDisappearsInASmallerWindow_PassesTheFocusToItsTab)
{
    scene.window()->resize(1280, 720);
    ASSERT_NE(awaited("timelineList"), nullptr);
    ASSERT_TRUE(tabTo("timelineList"));
    scene.window()->resize(640, 480);
    EXPECT_TRUE(hasFocus("disksTab")) << focused().toStdString();
}

} // namespace
