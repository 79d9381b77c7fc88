// The window as a screen reader sees it: names, roles, descriptions, values, focus and actions.
#include "tests/host/WindowTest.h"

#include "host/machine/Records.h"
#include "host/objects/TaskQueue.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAccessible>

#include <functional>

namespace {

class WindowAccess : public WindowTest
{
protected:
    void SetUp() override
    {
        QAccessible::setActive(true);
        WindowTest::SetUp();
        scene.window()->grabWindow();
    }
    void TearDown() override
    {
        scene.core().tasks()->cancelAll();
        EXPECT_TRUE(pumpUntil([&] { return !scene.core().tasks()->isAtWork(); }));
        WindowTest::TearDown();
        QAccessible::setActive(false);
    }

    using Visit = std::function<void(QAccessibleInterface*)>;
    static void visit(QAccessibleInterface* parent, const Visit& each)
    {
        for (int i = 0; i < parent->childCount(); ++i) {
            QAccessibleInterface* child = parent->child(i);
            if (child == nullptr || child->state().invisible)
                continue;
            each(child);
            visit(child, each);
        }
    }
    QAccessibleInterface* root() { return QAccessible::queryAccessibleInterface(scene.window()); }

    std::vector<QAccessibleInterface*> all(QAccessible::Role role)
    {
        std::vector<QAccessibleInterface*> found;
        visit(root(), [&](QAccessibleInterface* each) {
            if (each->role() == role)
                found.push_back(each);
        });
        return found;
    }
    QAccessibleInterface* find(QAccessible::Role role, const QString& name)
    {
        for (QAccessibleInterface* each : all(role)) {
            if (each->text(QAccessible::Name) == name)
                return each;
        }
        return nullptr;
    }
    QAccessibleInterface* awaitedAccess(QAccessible::Role role, const QString& name)
    {
        pumpUntil([&] { return find(role, name) != nullptr; });
        return find(role, name);
    }
    QStringList names(QAccessible::Role role)
    {
        QStringList found;
        for (QAccessibleInterface* each : all(role))
            found.append(each->text(QAccessible::Name));
        return found;
    }
    static QString details(QAccessibleInterface* item) { return item->text(QAccessible::Description); }
    QAccessibleInterface* focusedItem()
    {
        return QAccessible::queryAccessibleInterface(scene.window()->activeFocusItem());
    }
    static QStringList childNames(QAccessibleInterface* parent, QAccessible::Role role)
    {
        QStringList found;
        visit(parent, [&](QAccessibleInterface* each) {
            if (each->role() == role)
                found.append(each->text(QAccessible::Name));
        });
        return found;
    }

    void openGuide()
    {
        const QVariantList records = host::diskRecords(*scene.core().machine());
        Q_EMIT bridge.sigCloneResult(QVariantMap{{"source", records.value(2)},
                                                 {"destination", records.value(1)},
                                                 {"errMsg", ""},
                                                 {"cloneType", 2},
                                                 {"goToPageIndex", 3}});
        ASSERT_NE(awaited("guidePane"), nullptr);
    }
};

TEST_F(WindowAccess, EachDisk_IsAnItemWithItsPartitions)
{
    QAccessibleInterface* list = find(QAccessible::List, "Disks");
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->state().focusable);
    const QStringList disks = {"Disk 0, 200 GB", "Disk 1, 3 TB", "Disk 2, 59.6 GB",
                               "Disk 3, 1 TB",   "Disk 4, 1 TB", "Disk 5, 1 GB"};
    for (const QString& disk : disks)
        EXPECT_NE(find(QAccessible::ListItem, disk), nullptr) << disk.toStdString();
    QAccessibleInterface* first = find(QAccessible::ListItem, disks.first());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(details(first), QString("NVMe %1 SSD %1 GPT").arg(QChar(0xB7)));
    EXPECT_EQ(childNames(first, QAccessible::ListItem),
              QStringList({"EFI system", "C: Windows", "D: Data", "Free"}));
}

TEST_F(WindowAccess, EachPartition_HasItsDetails)
{
    QAccessibleInterface* partition = find(QAccessible::ListItem, "D: Data");
    ASSERT_NE(partition, nullptr);
    for (const char* part : {"NTFS", "50 GB", "10 GB used", "from sector"})
        EXPECT_TRUE(details(partition).contains(part)) << part << " " << details(partition).toStdString();
}

TEST_F(WindowAccess, Arrows_MoveTheFocusToTheSelectedPartition)
{
    ASSERT_TRUE(tabTo("diskList"));
    press(Qt::Key_Right);
    ASSERT_NE(focusedItem(), nullptr);
    EXPECT_EQ(focusedItem()->text(QAccessible::Name), "C: Windows");
    EXPECT_TRUE(focusedItem()->state().focused);
    EXPECT_TRUE(focusedItem()->state().selected);
    press(Qt::Key_Down);
    ASSERT_NE(focusedItem(), nullptr);
    EXPECT_EQ(focusedItem()->text(QAccessible::Name), "E:");
    press(Qt::Key_Tab);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_NE(focusedItem(), nullptr);
    EXPECT_EQ(focusedItem()->text(QAccessible::Name), "E:");
}

TEST_F(WindowAccess, PressAction_SelectsThePartition)
{
    QAccessibleInterface* partition = find(QAccessible::ListItem, "D: Data");
    ASSERT_NE(partition, nullptr);
    ASSERT_NE(partition->actionInterface(), nullptr);
    partition->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(text("details").contains("D: Data"));
    EXPECT_TRUE(partition->state().selected);
}

TEST_F(WindowAccess, RunningTask_HasAProgressBarAndANamedCancelButton)
{
    host::TimedWork work;
    work.plan = [] {
        host::TaskPlan plan;
        plan.milliseconds = 24 * 3600 * 1000;
        return plan;
    };
    work.finish = [] { return QString(); };
    work.interrupt = [](double) {};
    scene.core().tasks()->add({"FormatPartition", "driveLetter=D",
                               [work] { return std::make_unique<host::TimedExecution>(work); }});
    ASSERT_NE(find(QAccessible::List, "Tasks"), nullptr);
    QAccessibleInterface* task = awaitedAccess(QAccessible::ListItem, "FormatPartition");
    ASSERT_NE(task, nullptr);
    EXPECT_TRUE(pumpUntil([&] { return details(task).contains("0 %"); })) << details(task).toStdString();
    EXPECT_TRUE(details(task).contains("driveLetter=D"));
    QAccessibleInterface* bar = find(QAccessible::ProgressBar, "FormatPartition");
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(details(bar), "0 %");
    QAccessibleInterface* cancel = find(QAccessible::Button, "Cancel");
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(details(cancel), "FormatPartition");
    cancel->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitForText("taskState", "cancelled"));
}

TEST_F(WindowAccess, FailedTask_HasItsReason)
{
    scene.core().orders().order(16, {{"driveLetter", "C"}});
    ASSERT_TRUE(waitForText("taskState", "failed"));
    QAccessibleInterface* task = find(QAccessible::ListItem, "DeletePartition");
    ASSERT_NE(task, nullptr);
    EXPECT_TRUE(details(task).contains("failed"));
    EXPECT_TRUE(details(task).contains("The drive holds the running system."));
}

TEST_F(WindowAccess, CallOfTheAgent_HasArgumentsResultAndReason)
{
    Q_EMIT bridge.sigAbout2CallFun("DeletePartition driveLetter=C");
    scene.core().orders().rejection(16, {{"driveLetter", "C"}});
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    ASSERT_NE(find(QAccessible::List, "Calls of the agent"), nullptr);
    QAccessibleInterface* call = awaitedAccess(QAccessible::ListItem, "DeletePartition");
    ASSERT_NE(call, nullptr);
    EXPECT_TRUE(pumpUntil([&] { return details(call).contains(answers::notValid); }));
    for (const char* part : {"driveLetter=C", "The drive holds the running system."})
        EXPECT_TRUE(details(call).contains(part)) << part << " " << details(call).toStdString();
}

TEST_F(WindowAccess, Log_HasALineForEachEntry)
{
    for (int line = 0; line < 100; ++line)
        scene.core().log()->write(QString("entry number %1").arg(line));
    click(item("logButton"));
    ASSERT_NE(find(QAccessible::List, "Log"), nullptr);
    const auto isRead = [&] {
        return names(QAccessible::ListItem).filter(QRegularExpression("entry number \\d+$")).size() == 100;
    };
    EXPECT_TRUE(pumpUntil(isRead));
}

TEST_F(WindowAccess, Recommendation_IsAnAlertWithButtons)
{
    Q_EMIT bridge.sigRecScanResult(
        QVariantMap{{"msg", "Convert disk 1."}, {"buttons", QVariantList{"Accept", "Cancel"}}});
    QAccessibleInterface* alert = awaitedAccess(QAccessible::AlertMessage, "Convert disk 1.");
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(childNames(alert, QAccessible::Button), QStringList({"Accept", "Cancel"}));
}

TEST_F(WindowAccess, Guide_HasItsTitleFieldsStepsLossesAndButtons)
{
    openGuide();
    QAccessibleInterface* guide = find(QAccessible::Grouping, "Clone: disk 2 to disk 1");
    ASSERT_NE(guide, nullptr);
    EXPECT_EQ(childNames(guide, QAccessible::Button), QStringList({"Start", "Close"}));
    const QStringList texts = childNames(guide, QAccessible::StaticText);
    EXPECT_TRUE(texts.contains("Kind: disk to disk")) << texts.join("; ").toStdString();
    EXPECT_EQ(texts.filter("This order destroys this data permanently:").size(), 1);
    const QStringList rows = childNames(guide, QAccessible::ListItem);
    EXPECT_TRUE(rows.contains("3  Start")) << rows.join("; ").toStdString();
    EXPECT_EQ(rows.filter("Disk 1").size(), 1) << rows.join("; ").toStdString();
}

TEST_F(WindowAccess, PageThatCoversTheWindow_IsADialog)
{
    orderHost(mainPage(), "opendiskhealth", ConnectionRule::Call, QVariant(QVariantMap{{"diskIndex", 1}}));
    QAccessibleInterface* dialog = awaitedAccess(QAccessible::Dialog, "Disk health: disk 1");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(childNames(dialog, QAccessible::Button), QStringList({"Close"}));
}

TEST_F(WindowAccess, Switch_IsACheckBoxThatAScreenReaderToggles)
{
    QAccessibleInterface* box = find(QAccessible::CheckBox, "Dialog open");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->state().checkable);
    EXPECT_FALSE(box->state().checked);
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(box->state().checked);
    EXPECT_TRUE(isPopuped());
}

TEST_F(WindowAccess, Header_HasTheMachineAndTheStateOfTheService)
{
    scene.core().setServiceAddress("localhost:9090");
    EXPECT_NE(find(QAccessible::StaticText, "test"), nullptr);
    EXPECT_NE(find(QAccessible::StaticText, "6 disks, 5.3 TB"), nullptr)
        << names(QAccessible::StaticText).join("; ").toStdString();
    EXPECT_NE(find(QAccessible::StaticText, "agent service on localhost:9090"), nullptr);
}

TEST_F(WindowAccess, SmallWindow_HasTabsThatAScreenReaderSelects)
{
    scene.window()->resize(640, 480);
    ASSERT_NE(awaited("tasksTab"), nullptr);
    scene.window()->grabWindow(); // lays out the tabs
    ASSERT_NE(awaitedAccess(QAccessible::PageTab, "Tasks"), nullptr)
        << names(QAccessible::PageTabList).join("; ").toStdString();
    EXPECT_EQ(names(QAccessible::PageTab), QStringList({"Disks", "Tasks", "Agent", "Testing"}));
    EXPECT_TRUE(find(QAccessible::PageTab, "Disks")->state().selected);
    find(QAccessible::PageTab, "Tasks")
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(pumpUntil([&] { return find(QAccessible::PageTab, "Tasks")->state().selected; }));
    EXPECT_NE(find(QAccessible::List, "Tasks"), nullptr);
}

// Everything that Tab reaches is read with a name and a role, in both languages.
TEST_F(WindowAccess, EachTabStop_HasANameAndARole)
{
    for (const char* language : {"en", "de"}) {
        scene.language().setLanguage(language);
        QStringList order;
        press(Qt::Key_Tab);
        while (!order.contains(focused())) {
            order.append(focused());
            ASSERT_NE(focusedItem(), nullptr) << focused().toStdString();
            EXPECT_NE(focusedItem()->text(QAccessible::Name), "") << focused().toStdString();
            EXPECT_NE(focusedItem()->role(), QAccessible::NoRole) << focused().toStdString();
            EXPECT_NE(focusedItem()->role(), QAccessible::Client) << focused().toStdString();
            EXPECT_TRUE(focusedItem()->state().focusable) << focused().toStdString();
            EXPECT_TRUE(focusedItem()->state().focused) << focused().toStdString();
            press(Qt::Key_Tab);
        }
        EXPECT_GE(order.size(), 6);
    }
    EXPECT_NE(find(QAccessible::List, "Datenträger"), nullptr);
    EXPECT_NE(find(QAccessible::List, "Aufgaben"), nullptr);
}

} // namespace
