// The map of a disk: used space, details, menu, legend, and the effects of the open orders.
#include "host/Screenshot.h"
#include "host/objects/CallExamples.h"
#include "host/objects/PendingChanges.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <cmath>

namespace {

constexpr int kWipeDisk = 7;
constexpr int kFormat = 15;
constexpr int kCreate = 18;
constexpr int kResize = 14;
constexpr int kMinute = 60000;
constexpr int kHour = 60 * kMinute;

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The contrast ratio of the Web Content Accessibility Guidelines.
double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

TEST(ThemeContrast, UsedAndUnusedSpace_HaveARatioOfThree)
{
    for (const host::ThemeMode mode : {host::ThemeMode::Light, host::ThemeMode::Dark}) {
        const host::Theme theme(mode);
        for (const char* name : {"NTFS", "FAT", "FAT16", "FAT32", "exFAT", "ReFS", "EXT4", ""})
            EXPECT_GE(contrast(theme.fileSystem(name, false), theme.raised()), 3.0)
                << name << (theme.isDark() ? " dark" : " light");
    }
}

class WindowMap : public WindowTest
{
protected:
    explicit WindowMap(host::ThemeMode theme = host::ThemeMode::Light) : WindowTest(theme) {}

    QQuickItem* segmentTitled(const QString& title)
    {
        for (QQuickItem* each : items("segmentTitle")) {
            if (each->property("text") == title)
                return each->parentItem()->parentItem();
        }
        return nullptr;
    }
    void openMenuOf(const QString& title)
    {
        QQuickItem* segment = segmentTitled(title);
        ASSERT_NE(segment, nullptr);
        scene.window()->grabWindow();
        QTest::mouseClick(scene.window(), Qt::RightButton, Qt::NoModifier, placeOf(segment).center());
        ASSERT_NE(awaited("copyItem"), nullptr);
    }
    void makeTasksLong()
    {
        host::Machine machine = testMachine();
        machine.taskMilliseconds = kHour;
        simulation.setPace(host::Pace());
        simulation.change(machine);
    }
    void keepPicture(const QString& name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        scene.window()->grabWindow();
        host::pictureOf(*scene.window()).save(folder.filePath("screenshots/" + name));
    }
};

TEST_F(WindowMap, UsedSpace_IsDrawnInAColourOfHighContrast)
{
    QQuickItem* segment = segmentTitled("C: Windows");
    ASSERT_NE(segment, nullptr);
    scene.window()->grabWindow();
    const QImage picture = host::pictureOf(*scene.window());
    const QRect place = placeOf(segment);
    int used = 0;
    int unused = 0;
    for (int x = place.left(); x < place.right(); ++x) {
        const QColor colour = picture.pixelColor(x, place.bottom() - 3);
        used += colour == scene.theme().fileSystem("NTFS", false) ? 1 : 0;
        unused += colour == scene.theme().raised() ? 1 : 0;
    }
    EXPECT_NEAR(used, place.width() / 2, 6);
    EXPECT_NEAR(unused, place.width() / 2, 6);
}

TEST_F(WindowMap, PointerOverAPartition_ShowsItsDetails)
{
    QQuickItem* segment = segmentTitled("D: Data");
    ASSERT_NE(segment, nullptr);
    scene.window()->grabWindow();
    QTest::mouseMove(scene.window(), placeOf(segment).center());
    QTest::mouseMove(scene.window(), placeOf(segment).center() + QPoint(2, 2));
    ASSERT_NE(awaited("tipText"), nullptr);
    EXPECT_TRUE(text("tipText").startsWith("Disk 0  \u00b7  D: Data  \u00b7  NTFS"))
        << text("tipText").toStdString();
}

TEST_F(WindowMap, MenuOfADrive_CopiesACallAndShowsTheHistory)
{
    Q_EMIT bridge.sigAbout2CallFun("FormatPartition driveLetter=D");
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    Q_EMIT bridge.sigAbout2CallFun("FormatPartition driveLetter=E");
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    ASSERT_TRUE(pumpUntil([&] { return items("callTool").size() == 2; }));
    openMenuOf("D: Data");
    keepPicture("segment-menu.png");
    EXPECT_EQ(text("copyItem"), "Copy: zorcall ListPartitionsOnDisk diskIndex=0");
    click(item("copyItem"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "zorcall ListPartitionsOnDisk diskIndex=0");
    ASSERT_TRUE(pumpUntil([&] { return item("copyItem") == nullptr; }));
    openMenuOf("D: Data");
    click(item("historyItem"));
    EXPECT_TRUE(pumpUntil([&] { return texts("callArguments") == QStringList("driveLetter=D"); }));
    click(awaited("historyReset"));
    EXPECT_TRUE(pumpUntil([&] { return items("callTool").size() == 2; }));
}

TEST_F(WindowMap, MenuKey_OpensTheMenuOfTheSelectedEntry)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_Right);
    press(Qt::Key_Menu);
    ASSERT_NE(awaited("copyItem"), nullptr);
    EXPECT_TRUE(texts("copyItem").contains("Copy: zorcall GetPartitionInfo driveLetter=C"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(pumpUntil([&] { return item("copyItem") == nullptr; }));
}

// A copied text can end with a line feed that a terminal executes at once.
TEST(CallExamples, Calls_OnlyReadOrLackArguments)
{
    const host::Machine machine = testMachine();
    EXPECT_EQ(
        host::callExamples(*machine.partition("D")),
        QStringList({"zorcall ListPartitionsOnDisk diskIndex=0", "zorcall GetPartitionInfo driveLetter=D",
                     "zorcall --gated --patient FormatPartition driveLetter=D",
                     "zorcall --gated --patient ResizePartition driveLetter=D",
                     "zorcall --gated --patient ChangePartitionLabel driveLetter=D"}));
    EXPECT_EQ(host::callExamples(*machine.freeRegions(0).front()),
              QStringList("zorcall ListPartitionsOnDisk diskIndex=0"));
}

TEST_F(WindowMap, Legend_NamesColoursAndPatterns)
{
    EXPECT_EQ(texts("legendText"), QStringList({"NTFS", "FAT", "exFAT", "ReFS", "Other", "Used", "Free",
                                                "Planned", "Will be lost"}));
}

TEST_F(WindowMap, NewPartition_IsDrawnInTheFreeSpaceUntilTheTaskEnds)
{
    makeTasksLong();
    scene.core().orders().order(kCreate, {{"diskIndex", 0},
                                          {"unallocatedIndex", 0},
                                          {"capacity", 5 * kGiB},
                                          {"label", "New"},
                                          {"fileSystem", "NTFS"}});
    ASSERT_TRUE(waitForText("taskState", "0 %")) << text("taskError").toStdString();
    ASSERT_NE(awaited("ghost"), nullptr);
    EXPECT_EQ(items("ghost").size(), 1u);
    EXPECT_TRUE(text("ghost").contains("New")) << text("ghost").toStdString();
    const QRect ghost = placeOf(item("ghost"));
    const QRect place = placeOf(item("ghost")->parentItem()->parentItem());
    EXPECT_TRUE(place.contains(ghost));
    EXPECT_NEAR(ghost.width(), place.width() / 2, 3);
    keepPicture("ghost.png");
    scene.core().tasks()->cancel(1);
    EXPECT_TRUE(pumpUntil([&] { return item("ghost") == nullptr; }));
}

TEST_F(WindowMap, DataThatWillBeLost_IsHatchedUntilTheTaskEnds)
{
    makeTasksLong();
    scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    ASSERT_NE(awaited("lostHatching"), nullptr);
    EXPECT_EQ(items("lostHatching").size(), 1u);
    keepPicture("hatching.png");
    scene.core().tasks()->cancelAll();
    EXPECT_TRUE(pumpUntil([&] { return item("lostHatching") == nullptr; }));
}

TEST_F(WindowMap, RemainingTime_ReplacesTheFlagsThatItWouldCover)
{
    host::Machine machine = testMachine();
    machine.taskMilliseconds = kMinute;
    for (host::Partition& partition : machine.disk(0)->partitions)
        partition.isHidden = partition.driveLetter == QStringLiteral("D");
    simulation.setPace(host::Pace());
    simulation.change(machine);
    ASSERT_TRUE(pumpUntil([&] { return texts("segmentFlags").contains("Hidden"); }));
    scene.core().orders().order(kFormat, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}});
    ASSERT_TRUE(pumpUntil([&] { return item("remainingBadge") != nullptr; }));
    EXPECT_FALSE(texts("segmentFlags").contains("Hidden"));
}

host::OpenOrder order(int id, int function, const QVariantMap& params)
{
    return {id, function, params};
}

TEST(PendingChanges, OnlyTheEntriesOfTheRunningOrder_AreBusy)
{
    const host::Machine machine = testMachine();
    const host::Partition& d = *machine.partition("D");
    const host::Partition& e = *machine.partition("E");
    const QVariantMap format{
        {"fileSystem", "NTFS"}, {"label", ""}, {"clusterSize", 0}, {"quickFormat", true}};
    QVariantMap ofD = format;
    ofD["driveLetter"] = "D";
    QVariantMap ofE = format;
    ofE["driveLetter"] = "E";
    const host::PendingChanges changes =
        host::pendingChanges(machine, {order(1, kFormat, ofD), order(2, kFormat, ofE)}, 1);
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_TRUE(changes.at({0, d.startSector}).isLost);
    EXPECT_TRUE(changes.at({0, d.startSector}).isRunning);
    EXPECT_TRUE(changes.at({1, e.startSector}).isLost);
    EXPECT_FALSE(changes.at({1, e.startSector}).isRunning);
}

TEST(PendingChanges, LargerPartition_IsAGhostInTheFreeSpace)
{
    const host::Machine machine = testMachine();
    const host::Partition& d = *machine.partition("D");
    const host::Partition& space = *machine.freeRegions(0).front();
    ASSERT_EQ(d.endOffset(), space.startOffset());
    const host::PendingChanges changes = host::pendingChanges(
        machine, {order(1, kResize, {{"driveLetter", "D"}, {"size", d.size + space.size / 2}})}, 1);
    ASSERT_EQ(changes.count({0, space.startSector}), 1u);
    const host::PendingChange& change = changes.at({0, space.startSector});
    ASSERT_EQ(change.ghosts.size(), 1u);
    EXPECT_DOUBLE_EQ(change.ghosts[0].begin, 0);
    EXPECT_NEAR(change.ghosts[0].end, 0.5, 0.01);
    EXPECT_EQ(change.ghosts[0].partition.driveLetter, "D");
    EXPECT_TRUE(change.isRunning);
}

TEST(PendingChanges, RejectedOrder_HasNoEffect)
{
    EXPECT_TRUE(host::pendingChanges(testMachine(), {order(1, kFormat, {{"driveLetter", "Q"}})}, 0).empty());
}

} // namespace
