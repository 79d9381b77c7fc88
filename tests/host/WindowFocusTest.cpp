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

} // namespace
