// The rendered window, checked for its parts and not for each pixel. The pictures remain in
// build/screenshots.
#include "host/Screenshot.h"
#include "tests/host/WindowTest.h"

#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <set>

namespace {

int coloursIn(const QImage& picture, const QRect& place)
{
    std::set<QRgb> colours;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    return static_cast<int>(colours.size());
}

int pixelsOf(const QImage& picture, const QRect& place, const QColor& colour)
{
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            count += picture.pixel(x, y) == colour.rgb() ? 1 : 0;
    }
    return count;
}

class WindowPicture : public WindowTest
{
protected:
    using WindowTest::WindowTest;

    QImage take(const QString& name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        host::Screenshot screenshot(folder.filePath("screenshots/" + name));
        EXPECT_EQ(screenshot.open(), "");
        EXPECT_EQ(screenshot.take(*scene.window()), "");
        return QImage(folder.filePath("screenshots/" + name)).convertToFormat(QImage::Format_RGB32);
    }

    QQuickItem* segmentTitled(const QString& title)
    {
        for (QQuickItem* each : items("segmentTitle")) {
            if (each->property("text") == title)
                return each->parentItem()->parentItem();
        }
        return nullptr;
    }

    // The middle row of the segment's lower part, which has no text.
    double shareOfColour(const QImage& picture, QQuickItem* segment, const QColor& colour)
    {
        const QRect place = placeOf(segment);
        const QRect row(place.left(), place.bottom() - 9, place.width(), 1);
        return static_cast<double>(pixelsOf(picture, row, colour)) / place.width();
    }

    void checkBars(const QImage& picture)
    {
        ASSERT_EQ(picture.size(), QSize(1280, 720));
        QQuickItem* system = segmentTitled("C: Windows");
        ASSERT_NE(system, nullptr);
        // Half of C is used.
        EXPECT_NEAR(shareOfColour(picture, system, scene.theme().fileSystem("NTFS", true)), 0.5, 0.03);
        EXPECT_NEAR(shareOfColour(picture, system, scene.theme().raised()), 0.5, 0.03);
        const QRect stick = placeOf(segmentTitled("F:"));
        EXPECT_GT(pixelsOf(picture, stick, scene.theme().fileSystem("FAT32", false)), stick.width());
        // C is twice as wide as D: 100 and 50 GiB.
        const double ratio = system->width() / segmentTitled("D: Data")->width();
        EXPECT_NEAR(ratio, 2.0, 0.02);
        for (const QQuickItem* bar : items("diskBar"))
            EXPECT_GE(coloursIn(picture, placeOf(bar)), 3);
    }

    // A text is drawn if its area has more colours than background and text colour.
    void checkText(const QImage& picture, const QString& name, const QString& expected)
    {
        QQuickItem* label = item(name);
        ASSERT_NE(label, nullptr) << name.toStdString();
        EXPECT_EQ(label->property("text"), expected);
        EXPECT_TRUE(QRect(0, 0, 1280, 720).contains(placeOf(label))) << name.toStdString();
        EXPECT_GT(coloursIn(picture, placeOf(label)), 3) << name.toStdString();
        EXPECT_FALSE(label->property("truncated").toBool()) << name.toStdString();
    }
};

TEST_F(WindowPicture, Light_ShowsBarsTimelineAndTasks)
{
    Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=Photos");
    scene.core().orders().order(31, {{"driveLetter", "E"}, {"newLabel", "Photos"}});
    Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    Q_EMIT bridge.sigAbout2CallFun("DeletePartition driveLetter=C");
    scene.core().orders().rejection(16, {{"driveLetter", "C"}});
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    ASSERT_TRUE(pumpUntil([&] { return texts("taskState") == QStringList("done"); }));
    ASSERT_TRUE(pumpUntil([&] { return items("callTool").size() == 2; }));
    const QImage picture = take("light.png");
    checkBars(picture);
    checkText(picture, "machineName", "test");
    checkText(picture, "callTool", "ChangePartitionLabel");
    checkText(picture, "taskTitle", "ChangePartitionLabel");
    checkText(picture, "callReason", text("callReason"));
    EXPECT_GT(pixelsOf(picture, placeOf(item("callReason")), scene.theme().bad()), 0);
    EXPECT_EQ(picture.pixelColor(2, 2), scene.theme().window());
}

class DarkPicture : public WindowPicture
{
protected:
    DarkPicture() : WindowPicture(host::ThemeMode::Dark) {}
};

TEST_F(DarkPicture, Dark_ShowsBarsGuideAndRecommendation)
{
    const QVariantMap source{{"diskIndex", 1}, {"isDiskItem", true}};
    const QVariantMap destination{{"diskIndex", 2}, {"isDiskItem", true}};
    Q_EMIT bridge.sigCloneResult(QVariantMap{{"source", source},
                                             {"destination", destination},
                                             {"errMsg", "The destination is too small."},
                                             {"cloneType", 2},
                                             {"goToPageIndex", 2}});
    Q_EMIT bridge.sigRecScanResult(
        QVariantMap{{"msg", "Convert disk 1."}, {"buttons", QVariantList{"Accept", "Cancel"}}});
    ASSERT_NE(awaited("guideRejection"), nullptr);
    ASSERT_NE(awaited("recommendationText"), nullptr);
    const QImage picture = take("dark.png");
    checkText(picture, "guideRejection", "The destination is too small.");
    checkText(picture, "recommendationText", "Convert disk 1.");
    checkText(picture, "recommendationButton", "Accept");
    EXPECT_EQ(picture.pixelColor(2, 2), scene.theme().window());
    EXPECT_LT(picture.pixelColor(2, 2).lightness(), 60);
    EXPECT_GT(pixelsOf(picture, placeOf(item("guidePane")), scene.theme().badSurface()), 1000);
}

TEST_F(WindowPicture, InvalidPath_IsOneLine)
{
    const QTemporaryDir folder;
    host::Screenshot nowhere(folder.filePath("no/such/folder/x.png"));
    const QString error = nowhere.open();
    EXPECT_TRUE(error.contains("no/such/folder/x.png"));
    EXPECT_FALSE(error.contains('\n'));
}

TEST_F(WindowPicture, PictureThatIsNotTaken_LeavesNoFile)
{
    const QTemporaryDir folder;
    {
        host::Screenshot screenshot(folder.filePath("x.png"));
        EXPECT_EQ(screenshot.open(), "");
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

} // namespace
