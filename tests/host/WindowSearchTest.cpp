// The search field of the disks, the compact view for many disks, and Home and End. The pictures remain in
// build/screenshots.
#include "host/Screenshot.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtTest/QTest>

namespace {

constexpr int kManyDisks = 24;

host::Machine crowdedMachine(int disks)
{
    host::Machine machine = testMachine();
    const host::Disk pattern = *machine.disk(0);
    machine.disks.clear();
    for (int i = 0; i < disks; ++i) {
        host::Disk disk = pattern;
        disk.diskIndex = i;
        for (host::Partition& partition : disk.partitions)
            partition.diskIndex = i;
        machine.disks.push_back(disk);
    }
    return machine;
}

class WindowSearch : public WindowTest
{
protected:
    using WindowTest::WindowTest;

    void search(const QString& text)
    {
        press(Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(focused(), "searchField");
        press(Qt::Key_Delete);
        for (const QChar& letter : text)
            QTest::keyClick(scene.window(), letter.toLatin1());
    }
    bool shows(const QStringList& names)
    {
        return pumpUntil([&] { return texts("diskName") == names; });
    }
    void save(const QString& name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        host::pictureOf(*scene.window()).save(folder.filePath("screenshots/" + name));
    }
};

struct Query
{
    const char* name;
    const char* text;
    QStringList disks;
};

class WindowQuery : public WindowSearch, public testing::WithParamInterface<Query>
{
};

TEST_P(WindowQuery, Text_ShowsTheDisksThatMatchEachWord)
{
    search(GetParam().text);
    EXPECT_TRUE(shows(GetParam().disks)) << texts("diskName").join(", ").toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Each, WindowQuery,
    testing::Values(Query{"Name", "disk 2", {"Disk 2"}}, Query{"EndOfANumber", "0", {"Disk 0"}},
                    Query{"NumberOfAFileSystem", "32", {"Disk 0", "Disk 2"}},
                    Query{"PatternCharacters", ".*", {}}, Query{"Label", "windows", {"Disk 0"}},
                    Query{"DriveLetter", "e:", {"Disk 1"}},
                    Query{"FileSystem", "fat32", {"Disk 0", "Disk 2"}}, Query{"Kind", "usb", {"Disk 2"}},
                    Query{"TwoWords", "gpt  ntfs", {"Disk 0"}}, Query{"OtherOrder", "ntfs gpt", {"Disk 0"}},
                    Query{"WordsOfDifferentDisks", "windows usb", {}}, Query{"FreeSpace", "free", {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(WindowSearch, NoMatch_IsStatedAndEscapeShowsAllDisksAgain)
{
    const QStringList all = texts("diskName");
    search("xyz");
    ASSERT_TRUE(shows({}));
    EXPECT_EQ(text("noDisks"), "No disk matches the search.");
    EXPECT_EQ(text("foundDisks"), "0 of 6");
    EXPECT_EQ(text("details"), "");
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows(all));
    EXPECT_EQ(item("noDisks"), nullptr);
    EXPECT_EQ(item("foundDisks"), nullptr);
    EXPECT_TRUE(pumpUntil([&] { return text("details").startsWith("Disk 0"); }))
        << text("details").toStdString();
}

TEST_F(WindowSearch, SelectedEntry_IsOneOfTheShownDisks)
{
    search("usb");
    ASSERT_TRUE(shows({"Disk 2"}));
    EXPECT_TRUE(pumpUntil([&] { return text("details").startsWith("Disk 2"); }))
        << text("details").toStdString();
}

TEST_F(WindowSearch, SelectedDiskThatStillMatches_RemainsSelected)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    search("fat32");
    ASSERT_TRUE(shows({"Disk 0", "Disk 2"}));
    pumpUntil([] { return true; });
    EXPECT_TRUE(text("details").startsWith("Disk 2")) << text("details").toStdString();
}

TEST_F(WindowSearch, ChangedLabel_MovesTheDiskIntoTheResult)
{
    search("holiday");
    ASSERT_TRUE(shows({}));
    host::Machine next = testMachine();
    next.disk(1)->partitions[1].label = "Holiday";
    simulation.change(next);
    EXPECT_TRUE(shows({"Disk 1"}));
}

TEST_F(WindowSearch, EscapeDuringAGuide_ClearsTheSearchFirst)
{
    search("usb");
    const QVariantMap source{{"diskIndex", 1}, {"isDiskItem", true}};
    const QVariantMap destination{{"diskIndex", 2}, {"isDiskItem", true}};
    Q_EMIT bridge.sigCloneResult(
        QVariantMap{{"source", source}, {"destination", destination}, {"cloneType", 2}});
    ASSERT_NE(awaited("guidePane"), nullptr);
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_EQ(item("searchField")->property("text"), "");
    EXPECT_NE(item("guidePane"), nullptr);
    press(Qt::Key_Escape);
    EXPECT_TRUE(pumpUntil([&] { return item("guidePane") == nullptr; }));
}

TEST_F(WindowSearch, HomeAndEnd_SelectTheFirstAndTheLastDisk)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_End);
    EXPECT_TRUE(text("details").startsWith("Disk 5")) << text("details").toStdString();
    press(Qt::Key_Home);
    EXPECT_TRUE(text("details").startsWith("Disk 0")) << text("details").toStdString();
}

TEST_F(WindowSearch, CompactSwitch_MakesTheDisksLower)
{
    const double height = item("diskBar")->parentItem()->height();
    EXPECT_FALSE(item("compactToggle")->property("checked").toBool());
    click(item("compactToggle"));
    EXPECT_LT(item("diskBar")->parentItem()->height(), height / 2);
    EXPECT_EQ(text("diskName"), "Disk 0");
    EXPECT_TRUE(texts("segmentTitle").contains("C: Windows"));
    click(item("compactToggle"));
    EXPECT_EQ(item("diskBar")->parentItem()->height(), height);
}

class WindowManyDisks : public WindowSearch
{
protected:
    explicit WindowManyDisks(host::ThemeMode theme = host::ThemeMode::Light)
        : WindowSearch(crowdedMachine(kManyDisks), theme)
    {
    }

    // Number of disks that lie completely inside the list.
    int visibleDisks()
    {
        const QRect list = placeOf(item("diskList"));
        int count = 0;
        for (const QQuickItem* bar : items("diskBar"))
            count += list.contains(placeOf(bar->parentItem())) ? 1 : 0;
        return count;
    }
};

TEST_F(WindowManyDisks, Compact_IsOnAndShowsTwelveDisksAt1280x720)
{
    EXPECT_TRUE(item("compactToggle")->property("checked").toBool());
    ASSERT_EQ(scene.window()->size(), QSize(1280, 720));
    scene.window()->grabWindow();
    save("many-disks.png");
    EXPECT_GE(visibleDisks(), 12);
}

TEST_F(WindowManyDisks, CompactLine_ShowsNameSizeAndKindWithoutOverlap)
{
    scene.window()->grabWindow();
    const QRect name = placeOf(item("diskName"));
    const QRect size = placeOf(item("diskSize"));
    const QRect kind = placeOf(item("diskKind"));
    EXPECT_LE(name.right(), size.left());
    EXPECT_LE(size.right(), kind.left());
    EXPECT_LE(kind.right(), placeOf(item("diskBar")).left());
    EXPECT_FALSE(item("diskKind")->property("truncated").toBool());
}

TEST_F(WindowManyDisks, Switch_OverridesTheNumberOfDisks)
{
    click(item("compactToggle"));
    EXPECT_LT(visibleDisks(), 8);
    simulation.change(crowdedMachine(kManyDisks + 1));
    EXPECT_FALSE(item("compactToggle")->property("checked").toBool());
}

TEST_F(WindowManyDisks, EightDisks_AreShownInFull)
{
    simulation.change(crowdedMachine(8));
    EXPECT_TRUE(pumpUntil([&] { return !item("compactToggle")->property("checked").toBool(); }));
    simulation.change(crowdedMachine(9));
    EXPECT_TRUE(pumpUntil([&] { return item("compactToggle")->property("checked").toBool(); }));
}

class WindowManyDisksDark : public WindowManyDisks
{
protected:
    WindowManyDisksDark() : WindowManyDisks(host::ThemeMode::Dark) {}
};

TEST_F(WindowManyDisksDark, German_TranslatesTheSearch)
{
    scene.language().setLanguage("de");
    EXPECT_EQ(text("compactToggle"), "Kompakt");
    EXPECT_EQ(item("searchField")->property("placeholderText"),
              QString::fromUtf8("Datenträger suchen: Name, Buchstabe, Bezeichnung, Dateisystem"));
    scene.window()->grabWindow();
    save("many-disks-dark-german.png");
}

} // namespace
