// Unusual machines: many partitions, no disks, no name. The pictures remain in build/screenshots.
#include "host/Screenshot.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QImage>

namespace {

constexpr int kPartitions = 500;

host::Machine crowdedMachine()
{
    host::Machine machine = testMachine();
    host::Disk& disk = *machine.disk(1);
    disk.isGPT = true;
    disk.partitions.clear();
    for (int i = 0; i < kPartitions; ++i) {
        host::Partition partition;
        partition.diskIndex = 1;
        partition.partitionIndex = i + 1;
        partition.startSector = 2048 * (i + 1);
        partition.size = 1048576;
        partition.fsString = i % 2 == 0 ? "NTFS" : "FAT32";
        disk.partitions.push_back(partition);
    }
    return machine;
}

class WindowCrowdedDisk : public WindowTest
{
protected:
    WindowCrowdedDisk() : WindowTest(crowdedMachine(), host::ThemeMode::Light) {}
};

TEST_F(WindowCrowdedDisk, Bar_ShowsTheFileSystemsOfAllPartitions)
{
    scene.window()->grabWindow();
    const QImage picture = host::pictureOf(*scene.window());
    QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
    folder.mkpath("screenshots");
    picture.save(folder.filePath("screenshots/crowded-disk.png"));
    const QRect bar = placeOf(items("diskBar").at(1));
    int coloured = 0;
    for (int x = bar.left(); x < bar.right(); ++x)
        coloured += picture.pixelColor(x, bar.center().y()) != scene.theme().surface() ? 1 : 0;
    EXPECT_GT(coloured, bar.width() / 2);
}

TEST_F(WindowCrowdedDisk, Arrows_SelectEachPartitionVisibly)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_Down);
    for (int presses = 0; presses < kPartitions; ++presses)
        press(Qt::Key_Right);
    EXPECT_TRUE(text("details").contains("from sector 1024000")) << text("details").toStdString();
    ASSERT_EQ(items("narrowSelection").size(), 1u);
    EXPECT_GE(item("narrowSelection")->width(), 4);
}

class WindowEmptyMachine : public WindowTest
{
protected:
    WindowEmptyMachine() : WindowTest(host::Machine(), host::ThemeMode::Light) {}
};

TEST_F(WindowEmptyMachine, MissingDisksAndName_AreStated)
{
    EXPECT_EQ(text("noDisks"), "The machine has no disks.");
    EXPECT_EQ(text("machineName"), "The machine has no name.");
}

TEST_F(WindowEmptyMachine, FirstDisk_ReplacesTheSentence)
{
    simulation.change(testMachine());
    EXPECT_TRUE(pumpUntil([&] { return item("noDisks") == nullptr && !texts("diskName").isEmpty(); }));
}

using WindowDisks = WindowTest;

TEST_F(WindowDisks, DiskWithoutEntries_IsStatedInTheDetails)
{
    ASSERT_TRUE(tabTo("diskList"));
    for (int presses = 0; presses < 4; ++presses)
        press(Qt::Key_Down);
    EXPECT_EQ(text("details"), "The disk has no known partition.");
}

} // namespace
