// The arrangement of the window: sizes follow the font, and everything can be reached in every size. The
// pictures remain in build/screenshots.
#include "host/machine/Records.h"
#include "host/objects/TaskQueue.h"
#include "host/objects/WindowSize.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowGeometry.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItemGrabResult>
#include <QtTest/QTest>

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

// The name is wider than the smallest width of the header's texts.
class WideWindow : public WindowTest
{
protected:
    WideWindow() : WindowTest(machine(), host::ThemeMode::Light) {}

    static host::Machine machine()
    {
        host::Machine machine = testMachine();
        machine.name = QStringLiteral("desktop");
        return machine;
    }
};

TEST_F(WideWindow, Header_ElidesNothing)
{
    ASSERT_TRUE(pumpUntil([&] { return item("machineName")->width() > 0; }));
    EXPECT_FALSE(item("machineName")->property("truncated").toBool());
    EXPECT_FALSE(item("machineSummary")->property("truncated").toBool());
    EXPECT_FALSE(item("serviceBadge")->property("truncated").toBool());
}

TEST(WindowSize, WindowAndFrame_FitTheScreen)
{
    EXPECT_EQ(host::fittingSize({1280, 720}, {1920, 1040}), QSize(1280, 720));
    EXPECT_EQ(host::fittingSize({1280, 720}, {1366, 728}), QSize(1280, 680));
    EXPECT_EQ(host::fittingSize({1280, 720}, {800, 600}), QSize(784, 552));
    EXPECT_EQ(host::fittingSize({1280, 720}, {960, 540}), QSize(944, 492));
}

TEST(WindowSize, SmallScreen_LimitsTheMinimumSizeToo)
{
    QWindow window;
    window.setMinimumSize({640, 480});
    window.resize(1280, 720);
    host::fitScreen(window, 2.0);
    const QSize available = window.screen()->availableSize();
    EXPECT_LE(window.width(), available.width() - 16);
    EXPECT_LE(window.height(), available.height() - 48);
    EXPECT_LE(window.minimumWidth(), window.width());
    EXPECT_LE(window.minimumHeight(), window.height());
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

const QString kLongName =
    QStringLiteral("workstation-of-the-laboratory-for-measurements-number-twenty-four-on-the-second-floor");
const QString kLongLabel = QStringLiteral("Photographs and recordings of the years 1990 to 2026");
const QString kRecommendation = QStringLiteral("The state of disk 1 shows an irregularity that can lead to "
                                               "the loss of data within a short time. We recommend to "
                                               "check the disk as soon as possible, to copy its data to "
                                               "another disk, and to replace it afterwards. If the disk "
                                               "holds the running system, create boot media first, because "
                                               "the computer may no longer start without them.");
constexpr int kDisks = 24;

host::Machine longMachine()
{
    host::Machine machine = testMachine();
    machine.name = kLongName;
    const host::Disk model = *machine.disk(1);
    for (host::Partition& partition : machine.disk(1)->partitions) {
        if (!partition.unallocated)
            partition.label = kLongLabel;
    }
    for (int index = static_cast<int>(machine.disks.size()); index < kDisks; ++index) {
        host::Disk disk = model;
        disk.diskIndex = index;
        for (host::Partition& partition : disk.partitions) {
            partition.diskIndex = index;
            partition.driveLetter.clear();
            partition.label = kLongLabel;
        }
        machine.disks.push_back(disk);
    }
    return machine;
}

// A simulation that reports a problem on request.
class TroubledSimulation : public host::Simulation
{
public:
    using host::Simulation::Simulation;

    host::Rejection unavailability() const override { return problem_; }
    void report(const char* problem)
    {
        problem_ = host::Text(problem);
        Q_EMIT availabilityChanged();
    }

private:
    host::Rejection problem_;
};

struct Place
{
    int width;
    int height;
    const char* language;
};

std::ostream& operator<<(std::ostream& stream, const Place& place)
{
    return stream << place.width << "x" << place.height << " " << place.language;
}

std::string nameOfPlace(const testing::TestParamInfo<Place>& info)
{
    return std::to_string(info.param.width) + "x" + std::to_string(info.param.height) + "_" +
           info.param.language;
}

class WindowLayout : public WindowTest, public testing::WithParamInterface<Place>
{
protected:
    WindowLayout() : WindowTest(std::make_unique<TroubledSimulation>(longMachine()), themeOfTest()) {}

    // German is drawn in dark colours.
    static host::ThemeMode themeOfTest()
    {
        return GetParam().language == std::string("de") ? host::ThemeMode::Dark : host::ThemeMode::Light;
    }

    void SetUp() override
    {
        WindowTest::SetUp();
        ASSERT_FALSE(HasFatalFailure());
        scene.language().setLanguage(GetParam().language);
        scene.core().setServiceAddress("localhost:9090");
        resize();
    }
    void TearDown() override
    {
        scene.core().tasks()->cancelAll();
        EXPECT_TRUE(pumpUntil([&] { return !scene.core().tasks()->isAtWork(); }));
        WindowTest::TearDown();
    }
    // Only the window's own minimum size limits it, as a window manager would.
    void resize()
    {
        const QSize size(GetParam().width, GetParam().height);
        EXPECT_LE(scene.window()->minimumWidth(), size.width());
        EXPECT_LE(scene.window()->minimumHeight(), size.height());
        scene.window()->resize(size);
        ASSERT_TRUE(pumpUntil([&] { return scene.window()->contentItem()->size() == size; }));
        scene.window()->grabWindow();
    }

    void runTask()
    {
        host::TimedWork work;
        work.plan = [] {
            host::TaskPlan plan;
            plan.milliseconds = 24 * 3600 * 1000;
            return plan;
        };
        work.finish = [] { return QString(); };
        work.interrupt = [](double) {};
        for (int i = 0; i < 12; ++i)
            scene.core().tasks()->add({"FormatPartition",
                                       "driveLetter=E newLabel=" + kLongLabel + " fileSystem=NTFS",
                                       [work] { return std::make_unique<host::TimedExecution>(work); }});
    }
    void makeCalls()
    {
        for (int i = 0; i < 12; ++i) {
            Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=" + kLongLabel);
            scene.core().orders().rejection(16, {{"driveLetter", "C"}});
            Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
        }
    }
    void openGuide()
    {
        const QVariantList records = host::diskRecords(*scene.core().machine());
        Q_EMIT bridge.sigCloneResult(QVariantMap{
            {"source", records.value(2)},
            {"destination", records.value(1)},
            {"errMsg", "The destination disk is too small for all partitions of the source disk."},
            {"cloneType", 2},
            {"goToPageIndex", 3}});
        ASSERT_NE(awaited("guidePane"), nullptr);
    }
    void recommend()
    {
        const QVariantList buttons{"Check the state of the disk now", "Cancel"};
        Q_EMIT bridge.sigRecScanResult(QVariantMap{{"msg", kRecommendation}, {"buttons", buttons}});
        ASSERT_TRUE(pumpUntil([&] { return scene.link().property("message") == kRecommendation; }));
    }
    void fill()
    {
        runTask();
        makeCalls();
        openGuide();
        recommend();
        scene.core().setDialogOpen(true);
        static_cast<TroubledSimulation&>(simulation)
            .report("The disk service is not running. Orders are rejected until it answers again.");
    }

    // The offscreen platform cannot grab a window on a display with a scale factor.
    QImage drawn()
    {
        QQuickItem* content = scene.window()->contentItem();
        const QSize size = scene.window()->size() * qApp->devicePixelRatio();
        const QSharedPointer<QQuickItemGrabResult> grabbed = content->grabToImage(size);
        bool ready = grabbed == nullptr;
        QObject::connect(grabbed.data(), &QQuickItemGrabResult::ready, [&ready] { ready = true; });
        scene.window()->update();
        pumpUntil([&] { return ready; });
        return grabbed == nullptr ? QImage() : grabbed->image();
    }

    bool isTabbed() { return item("paneTabs") != nullptr; }
    void show(const QString& pane)
    {
        if (isTabbed())
            click(item(pane + "Tab"));
    }
    void check(const QString& situation)
    {
        scene.window()->grabWindow(); // lays out new items
        EXPECT_EQ(geometry::misplaced(*scene.window()).join("\n").toStdString(), "")
            << situation.toStdString();
        EXPECT_EQ(geometry::overlapping(*scene.window()).join("\n").toStdString(), "")
            << situation.toStdString();
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        const QString name = QStringLiteral("screenshots/layout-%1x%2-scale-%3-%4-%5.png")
                                 .arg(GetParam().width)
                                 .arg(GetParam().height)
                                 .arg(qApp->devicePixelRatio())
                                 .arg(GetParam().language, situation);
        const QImage picture = drawn();
        EXPECT_EQ(picture.size(), scene.window()->size() * qApp->devicePixelRatio());
        EXPECT_TRUE(picture.save(folder.filePath(name)));
    }
    void expectVisible(const QString& pane, const QStringList& names)
    {
        show(pane);
        for (const QString& name : names)
            EXPECT_NE(item(name), nullptr) << name.toStdString();
        check(pane);
    }
};

TEST_P(WindowLayout, FullWindow_KeepsEverythingReachable)
{
    fill();
    expectVisible("guide", {"guidePane", "guideWarning", "guideLoss", "guideRejection", "guideClose"});
    expectVisible("recommendation", {"recommendationText", "recommendationButton"});
    expectVisible("disks", {"diskList", "diskName", "details"});
    expectVisible("tasks", {"taskList", "taskTitle", "taskState", "cancelButton"});
    expectVisible("agent", {"timelineList", "callTool", "callReason", "logButton"});
    click(item("logButton"));
    expectVisible("agent", {"logList"});
    expectVisible("testing", {"win11Toggle", "dialogToggle"});
    for (const char* name : {"machineName", "modeMark", "serviceBadge", "busyBadge", "problemBadge",
                             "popupBadge", "languageButton", "scanButton"})
        EXPECT_NE(item(name), nullptr) << name;
}

TEST_P(WindowLayout, ElidedBadge_ShowsItsTextInATip)
{
    fill();
    const char* kProblem = "The disk service is not running. Orders are rejected until it answers again.";
    show("disks");
    QQuickItem* badge = item("problemBadge");
    ASSERT_NE(badge, nullptr);
    if (badge->width() >= badge->implicitWidth())
        return;
    QTest::mouseMove(scene.window(), placeOf(badge).center());
    ASSERT_TRUE(waitForText("tipText", kProblem));
    check("tip");
}

TEST_P(WindowLayout, WindowWithoutGuide_KeepsEverythingReachable)
{
    expectVisible("disks", {"diskList", "diskName", "details"});
    expectVisible("tasks", {});
    expectVisible("agent", {"timelineList"});
}

TEST_P(WindowLayout, Keyboard_ReachesEachDiskAndAllTexts)
{
    fill();
    show("disks");
    ASSERT_TRUE(tabTo("diskList"));
    for (int presses = 0; presses < kDisks; ++presses)
        press(Qt::Key_Down);
    EXPECT_TRUE(text("details").contains("23"));
    EXPECT_TRUE(text("details").contains(kLongLabel) || !text("details").isEmpty());
    check("last-disk");
}

TEST_P(WindowLayout, Dialogs_FitTheWindow)
{
    const QVariantMap disk{{"diskIndex", 1}};
    orderHost(mainPage(), "opendiskhealth", ConnectionRule::Call, QVariant(disk));
    ASSERT_NE(awaited("dialogClose"), nullptr);
    check("dialog");
}

INSTANTIATE_TEST_SUITE_P(Sizes, WindowLayout,
                         testing::Values(Place{640, 480, "en"}, Place{640, 480, "de"}, Place{800, 600, "en"},
                                         Place{800, 600, "de"}, Place{960, 540, "en"}, Place{960, 540, "de"},
                                         Place{960, 600, "en"}, Place{960, 600, "de"}, Place{1280, 720, "en"},
                                         Place{1280, 720, "de"}, Place{1920, 1080, "en"},
                                         Place{1920, 1080, "de"}),
                         nameOfPlace);

} // namespace
