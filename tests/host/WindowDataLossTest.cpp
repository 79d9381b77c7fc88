// Guides that destroy data. The pictures remain in build/screenshots.
#include "host/Screenshot.h"
#include "host/machine/Records.h"
#include "plugin/HostCall.h"
#include "tests/host/AskingSimulation.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QImage>

namespace {

// Disk 2 has 60 GB and fits on disk 1, which holds drive E.
QVariantMap cloneOf(const host::Machine& machine, int from, int to)
{
    const QVariantList records = host::diskRecords(machine);
    return {{"source", records.value(from)},
            {"destination", records.value(to)},
            {"errMsg", ""},
            {"cloneType", 2},
            {"goToPageIndex", 3}};
}

class WindowDataLoss : public WindowTest
{
protected:
    explicit WindowDataLoss(host::ThemeMode theme = host::ThemeMode::Light) : WindowTest(theme) {}

    void openClone(int from, int to)
    {
        Q_EMIT bridge.sigCloneResult(cloneOf(*scene.core().machine(), from, to));
        ASSERT_NE(awaited("guideStart"), nullptr);
    }
    void openConversion(int disk)
    {
        const QVariant record = host::diskRecords(*scene.core().machine()).value(disk);
        Q_EMIT bridge.sigConvertResult(QVariantMap{{"funIdx", 0}, {"info", record}});
        ASSERT_NE(awaited("guideStart"), nullptr);
    }
    QStringList marks()
    {
        QStringList all;
        for (const QQuickItem* mark : items("segmentMark"))
            all.append(mark->property("mark").toString());
        return all;
    }
    QColor groundOf(const QString& name)
    {
        scene.window()->grabWindow(); // lays out new items
        const QImage picture = host::pictureOf(*scene.window());
        const QRect place = placeOf(item(name));
        return picture.pixelColor(place.left() + 8, place.top() + 3);
    }
    void take(const QString& name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        EXPECT_TRUE(host::pictureOf(*scene.window()).save(folder.filePath("screenshots/" + name)));
    }
};

TEST_F(WindowDataLoss, CloneGuide_StatesWhatTheDestinationLoses)
{
    openClone(2, 1);
    EXPECT_EQ(text("guideWarning"), "This order destroys this data permanently:");
    ASSERT_EQ(texts("guideLoss").size(), 1);
    EXPECT_TRUE(text("guideLoss").startsWith("Disk 1  \u00b7  E:  \u00b7  NTFS  \u00b7  1 TB"));
    take("loss-clone-light.png");
}

TEST_F(WindowDataLoss, CloneGuide_MarksSourceAndTargetUntilItCloses)
{
    openClone(2, 1);
    // Free, E and free on disk 1; F on disk 2.
    EXPECT_EQ(marks(), QStringList({"target", "target", "target", "source"}));
    EXPECT_EQ(texts("segmentMarkLabel").last(), "Source");
    EXPECT_TRUE(texts("segmentMarkLabel").contains("Target"));
    click(item("guideClose"));
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(WindowDataLoss, ConversionGuide_StatesARiskAndMarksTheTarget)
{
    openConversion(1);
    EXPECT_EQ(text("guideWarning"), "If this order fails, this data can be lost:");
    EXPECT_TRUE(text("guideLoss").contains("E:"));
    EXPECT_EQ(marks(), QStringList({"target"}));
}

TEST_F(WindowDataLoss, DestructiveStart_IsRed)
{
    openClone(2, 1);
    EXPECT_EQ(groundOf("guideStart"), scene.theme().bad());
    EXPECT_NE(groundOf("guideClose"), scene.theme().bad());
}

TEST_F(WindowDataLoss, CloneOntoAnEmptyDisk_NamesDataWithoutAPartition)
{
    openClone(2, 5);
    EXPECT_EQ(text("guideNoPartition"), "The disk has no known partition. Data without a partition is lost.");
}

TEST_F(WindowDataLoss, GuideThatKeepsAllData_HasNoWarningAndAnOrdinaryStart)
{
    orderHost(mainPage(), "dobmfunction", ConnectionRule::Call,
              QVariant(QVariantMap{{"createToFile", true}}));
    ASSERT_NE(awaited("dialogStart"), nullptr);
    EXPECT_EQ(item("dialogWarning"), nullptr);
    EXPECT_FALSE(item("dialogStart")->property("destructive").toBool());
}

TEST_F(WindowDataLoss, PageThatCoversTheWindow_StatesTheLoss)
{
    orderHost(mainPage(), "dobmfunction", ConnectionRule::Call,
              QVariant(QVariantMap{{"usbDriveLetter", "F"}}));
    ASSERT_NE(awaited("dialogStart"), nullptr);
    EXPECT_EQ(text("dialogWarning"), "This order destroys this data permanently:");
    EXPECT_TRUE(text("dialogLoss").contains("F:"));
    EXPECT_TRUE(item("dialogStart")->property("destructive").toBool());
}

TEST_F(WindowDataLoss, ChangeOfTheMachine_UpdatesTheOpenGuideAndTheMarks)
{
    openClone(2, 1);
    host::Machine machine = *scene.core().machine();
    host::Disk& disk = *machine.disk(1);
    disk.partitions[2].unallocated = false;
    disk.partitions[2].driveLetter = "G";
    disk.partitions.erase(disk.partitions.begin());
    simulation.change(machine);
    EXPECT_TRUE(pumpUntil([&] { return texts("guideLoss").size() == 2; }));
    EXPECT_EQ(marks(), QStringList({"target", "target", "source"}));
}

TEST_F(WindowDataLoss, Losses_AreTranslatedWithTheOpenGuide)
{
    openClone(2, 1);
    scene.language().setLanguage("de");
    EXPECT_EQ(text("guideWarning"), "Dieser Auftrag zerstört diese Daten endgültig:");
    EXPECT_EQ(texts("segmentMarkLabel").last(), "Quelle");
}

class WindowRealDataLoss : public WindowTest
{
protected:
    WindowRealDataLoss()
        : WindowTest(std::make_unique<AskingSimulation>(testMachine()), host::ThemeMode::Dark)
    {
    }
};

TEST_F(WindowRealDataLoss, GuideAndConfirmation_ShowTheSameSentences)
{
    Q_EMIT bridge.sigCloneResult(cloneOf(*scene.core().machine(), 2, 1));
    ASSERT_NE(awaited("guideStart"), nullptr);
    const QString warning = text("guideWarning");
    const QStringList losses = texts("guideLoss");
    EXPECT_EQ(warning, "This order changes a real disk. It destroys this data permanently:");
    click(item("guideStart"));
    ASSERT_NE(awaited("confirmationDialog"), nullptr);
    EXPECT_EQ(text("confirmationWarning"), warning);
    EXPECT_EQ(texts("confirmationLoss"), losses);
}

class DarkDataLoss : public WindowDataLoss
{
protected:
    DarkDataLoss() : WindowDataLoss(host::ThemeMode::Dark) {}
};

TEST_F(DarkDataLoss, CloneGuide_FitsTheSmallestWindow)
{
    scene.window()->resize(960, 600);
    openClone(2, 1);
    ASSERT_TRUE(pumpUntil([&] { return placeOf(item("diskList")).bottom() < 600; }));
    scene.window()->grabWindow();
    for (const char* name : {"guideWarning", "guideLoss", "guideStart", "guideClose", "diskList"}) {
        ASSERT_NE(item(name), nullptr) << name;
        EXPECT_TRUE(QRect(0, 0, 960, 600).contains(placeOf(item(name)))) << name;
    }
    EXPECT_GT(item("diskList")->height(), 90);
    take("loss-clone-dark.png");
}

} // namespace
