// The log: filter, selection and copy.
#include "host/objects/LogView.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QStringListModel>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

namespace {

QStringList linesOf(const host::LogView& view)
{
    QStringList lines;
    for (int row = 0; row < view.rowCount(); ++row)
        lines.append(view.index(row, 0).data().toString());
    return lines;
}

TEST(LogView, Filter_ShowsLinesThatContainTheTextInAnyCase)
{
    QStringListModel log({"order Format", "done Format", "order Wipe"});
    host::LogView view(log);
    view.setFilter("format");
    EXPECT_EQ(linesOf(view), QStringList({"order Format", "done Format"}));
    view.setFilter("[");
    EXPECT_EQ(linesOf(view), QStringList());
    view.setFilter("");
    EXPECT_EQ(view.rowCount(), 3);
}

TEST(LogView, Selection_IsARangeInBothDirections)
{
    QStringListModel log({"a", "b", "c", "d"});
    host::LogView view(log);
    view.select(2, false);
    view.select(1, true);
    EXPECT_EQ(view.selectedText(), "b\nc");
    view.select(3, true);
    EXPECT_EQ(view.selectedText(), "c\nd");
    view.select(99, false);
    EXPECT_EQ(view.selectedText(), "d");
    view.selectAll();
    EXPECT_EQ(view.selectedText(), "a\nb\nc\nd");
}

TEST(LogView, SelectedLines_StaySelectedWhenOlderOnesAreRemoved)
{
    QStringListModel log({"a", "b", "c"});
    host::LogView view(log);
    view.select(2, false);
    log.removeRows(0, 2);
    EXPECT_EQ(view.selectedText(), "c");
    view.setFilter("x");
    EXPECT_EQ(view.selectedText(), "");
    EXPECT_EQ(view.currentRow(), -1);
}

class WindowLog : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        for (const char* line : {"first order", "second order", "an event"})
            scene.core().log()->write(line);
        click(item("logButton"));
        ASSERT_NE(awaited("logList"), nullptr);
    }
    QStringList shownLines()
    {
        QStringList shown;
        for (const QString& line : texts("logLine"))
            shown.append(line.section(' ', 1));
        shown.sort();
        return shown;
    }
    static QString copied() { return QGuiApplication::clipboard()->text(); }
};

TEST_F(WindowLog, FilterField_FiltersTheLines)
{
    click(item("logFilter"));
    for (const Qt::Key key : {Qt::Key_O, Qt::Key_R, Qt::Key_D})
        press(key);
    EXPECT_TRUE(pumpUntil([&] { return shownLines() == QStringList({"first order", "second order"}); }));
    press(Qt::Key_Z);
    EXPECT_NE(awaited("noLogLine"), nullptr);
    press(Qt::Key_Escape);
    EXPECT_TRUE(pumpUntil([&] { return shownLines().size() == 3; }));
}

TEST_F(WindowLog, Keys_SelectAndCopyLines)
{
    ASSERT_TRUE(tabTo("logList"));
    QGuiApplication::clipboard()->setText("before");
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), "before");
    press(Qt::Key_Home);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied().split('\n').size(), 2);
    EXPECT_TRUE(copied().contains("first order")) << copied().toStdString();
    EXPECT_TRUE(copied().endsWith("second order")) << copied().toStdString();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied().split('\n').size(), 3);
}

TEST_F(WindowLog, Click_SelectsALineVisibly)
{
    for (QQuickItem* line : items("logLine")) {
        if (line->property("text").toString().endsWith("second order"))
            click(line);
    }
    int chosen = 0;
    for (QQuickItem* line : items("logLine"))
        chosen += line->property("chosen").toBool() ? 1 : 0;
    EXPECT_EQ(chosen, 1);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(copied().endsWith("second order")) << copied().toStdString();
}

} // namespace
