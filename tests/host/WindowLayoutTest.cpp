// The arrangement of the window: sizes follow the font.
#include "tests/host/WindowTest.h"

#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>

namespace {

class WindowTextSize : public WindowTest
{
protected:
    // The application's font is restored, because it applies to all later tests of the program.
    ~WindowTextSize() override { host::setUsualTextSize(); }

    static void setTextSize(int pixels)
    {
        QFont font = QGuiApplication::font();
        font.setPixelSize(pixels);
        QGuiApplication::setFont(font);
    }
};

TEST_F(WindowTextSize, ApplicationFont_SetsTheSizesOfTextsAndRows)
{
    const double buttonBefore = item("scanButton")->height();
    const double rowBefore = item("diskBar")->parentItem()->height();
    setTextSize(26);
    ASSERT_TRUE(pumpUntil([&] { return scene.theme().normal() == 26; }));
    EXPECT_EQ(scene.theme().small(), 24);
    EXPECT_EQ(scene.theme().heading(), 28);
    EXPECT_EQ(scene.theme().title(), 36);
    EXPECT_EQ(scene.theme().unit(), 2.0);
    EXPECT_EQ(item("machineName")->property("font").value<QFont>().pixelSize(), 36);
    EXPECT_EQ(item("details")->property("font").value<QFont>().pixelSize(), 24);
    EXPECT_TRUE(pumpUntil([&] { return item("scanButton")->height() == 2 * buttonBefore; }));
    EXPECT_EQ(item("diskBar")->parentItem()->height(), 2 * rowBefore);
}

TEST(WindowSource, TextSizes_ComeFromTheTheme)
{
    const QDir folder(QStringLiteral(":/sandbox"));
    const QRegularExpression number(QStringLiteral("pixelSize: *[0-9]|pointSize"));
    ASSERT_FALSE(folder.entryList({"*.qml"}).isEmpty());
    for (const QString& name : folder.entryList({"*.qml"})) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(QString::fromUtf8(file.readAll()).contains(number)) << name.toStdString();
    }
}

} // namespace
