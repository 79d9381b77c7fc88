// The guides, the pages that cover the window, and the recommendation card.
#include "tests/host/WindowTest.h"

#include "host/machine/Records.h"
#include "plugin/HostCall.h"
#include "tests/support/Threads.h"

namespace {

using WindowGuide = WindowTest;
using WindowDialog = WindowTest;
using WindowCard = WindowTest;

QVariantMap cloneResult(int step, const QString& rejection)
{
    const QVariantMap source{{"diskIndex", 1}, {"isDiskItem", true}, {"size", qlonglong(3298534883328)}};
    QVariantMap destination{{"diskIndex", 2}, {"isDiskItem", true}, {"cloneType", 2}};
    return {{"source", source}, {"destination", destination}, {"errMsg", rejection},
            {"cloneType", 2},   {"goToPageIndex", step},      {"defBoot", QVariantMap{{"diskIndex", -2}}}};
}

class WindowCloneSteps : public WindowTest, public testing::WithParamInterface<int>
{
};

TEST_P(WindowCloneSteps, CloneGuide_OpensAtItsStep)
{
    Q_EMIT bridge.sigCloneResult(cloneResult(GetParam(), QString()));
    ASSERT_NE(awaited("guidePane"), nullptr);
    const std::vector<QQuickItem*> steps = items("guideStep");
    ASSERT_EQ(steps.size(), 3u);
    for (int step = 1; step <= 3; ++step)
        EXPECT_EQ(steps[static_cast<std::size_t>(step - 1)]->property("current").toBool(),
                  step == GetParam());
    EXPECT_EQ(item("guideRejection"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, WindowCloneSteps, testing::Values(1, 2, 3));

TEST_F(WindowGuide, CloneGuide_ShowsTheRejection)
{
    Q_EMIT bridge.sigCloneResult(cloneResult(2, "The destination is too small."));
    ASSERT_NE(awaited("guidePane"), nullptr);
    EXPECT_EQ(item("guidePane")->property("title"), "Clone: disk 1 to disk 2");
    EXPECT_EQ(text("guideRejection"), "The destination is too small.");
    EXPECT_EQ(texts("factValue").value(0), "disk to disk");
    EXPECT_EQ(items("guideStep")[1]->property("tone"), "bad");
    EXPECT_FALSE(isPopuped());
}

TEST_F(WindowGuide, ConvertGuide_NamesTargetAndRejection)
{
    const QVariantMap disk{{"diskIndex", 0}, {"isDiskItem", true}};
    Q_EMIT bridge.sigConvertResult(QVariantMap{{"funIdx", 0}, {"info", disk}});
    ASSERT_NE(awaited("guidePane"), nullptr);
    EXPECT_EQ(item("guidePane")->property("title"), "Convert: disk 0 to GPT");
    EXPECT_EQ(texts("factValue"), QStringList({"disk 0", "GPT"}));
    EXPECT_EQ(text("guideRejection"), "The disk is already a GPT disk.");
}

QVariantMap convertDisk(const host::Machine& machine, int disk, int conversion)
{
    return {{"funIdx", conversion}, {"info", host::diskRecords(machine).value(disk).toMap()}};
}

TEST_F(WindowGuide, StartButton_QueuesTheWorkAndClosesTheGuide)
{
    Q_EMIT bridge.sigConvertResult(convertDisk(*scene.core().machine(), 1, 0));
    ASSERT_NE(awaited("guideStart"), nullptr);
    EXPECT_EQ(item("guideRejection"), nullptr);
    click(item("guideStart"));
    EXPECT_EQ(item("guidePane"), nullptr);
    ASSERT_TRUE(waitForText("taskState", "done"));
    EXPECT_EQ(items("taskTitle").size(), 1u);
    EXPECT_TRUE(scene.core().machine()->disk(1)->isGPT);
}

TEST_F(WindowGuide, StartButton_WorksByKeyboard)
{
    Q_EMIT bridge.sigConvertResult(convertDisk(*scene.core().machine(), 1, 0));
    ASSERT_NE(awaited("guideStart"), nullptr);
    ASSERT_TRUE(tabTo("guideStart"));
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForText("taskState", "done"));
}

TEST_F(WindowGuide, ImpossibleWork_HasNoStartButton)
{
    Q_EMIT bridge.sigConvertResult(convertDisk(*scene.core().machine(), 0, 0));
    ASSERT_NE(awaited("guideRejection"), nullptr);
    EXPECT_EQ(item("guideStart"), nullptr);
    EXPECT_NE(item("guideClose"), nullptr);
}

TEST_F(WindowGuide, CloseButton_ClosesIt)
{
    Q_EMIT bridge.sigCloneResult(cloneResult(3, QString()));
    ASSERT_NE(awaited("guideClose"), nullptr);
    click(item("guideClose"));
    EXPECT_EQ(item("guidePane"), nullptr);
    EXPECT_EQ(scene.core().guides().current(), nullptr);
}

TEST_F(WindowGuide, Escape_ClosesIt)
{
    Q_EMIT bridge.sigCloneResult(cloneResult(3, QString()));
    ASSERT_NE(awaited("guideClose"), nullptr);
    ASSERT_TRUE(tabTo("guideClose"));
    press(Qt::Key_Escape);
    EXPECT_EQ(item("guidePane"), nullptr);
}

TEST_F(WindowGuide, CloseGuideOfAnAgent_ClosesIt)
{
    Q_EMIT bridge.sigCloneResult(cloneResult(3, QString()));
    ASSERT_NE(awaited("guidePane"), nullptr);
    EXPECT_TRUE(callWindowMethod("closeGuide", QVariant()).toBool());
    EXPECT_EQ(item("guidePane"), nullptr);
}

TEST_F(WindowGuide, Recovery_OpensAGuideThatIsNoDialog)
{
    orderHost(mainPage(), "doprfunction", ConnectionRule::Call, QVariant(QVariantMap{{"diskIndex", 1}}));
    ASSERT_NE(item("guidePane"), nullptr);
    EXPECT_EQ(item("guidePane")->property("title"), "Partition recovery: disk 1");
    EXPECT_FALSE(isPopuped());
}

void openHealth(QObject* page, int disk)
{
    orderHost(page, "opendiskhealth", ConnectionRule::Call, QVariant(QVariantMap{{"diskIndex", disk}}));
}

TEST_F(WindowDialog, DiskHealth_CoversTheWindowUntilTheCloseButtonIsClicked)
{
    openHealth(mainPage(), 1);
    EXPECT_TRUE(isPopuped());
    ASSERT_TRUE(waitForText("dialogTitle", "Disk health: disk 1"));
    EXPECT_TRUE(texts("factValue").contains("the disk reports errors"));
    ASSERT_TRUE(pumpUntil([&] { return focused() == "dialogClose"; }));
    click(item("dialogClose"));
    EXPECT_FALSE(isPopuped());
    EXPECT_TRUE(pumpUntil([&] { return item("dialogTitle") == nullptr; }));
}

TEST_F(WindowDialog, EnterAndEscape_CloseIt)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space}) {
        openHealth(mainPage(), 0);
        ASSERT_TRUE(pumpUntil([&] { return focused() == "dialogClose"; }));
        press(key);
        EXPECT_FALSE(isPopuped()) << key;
        ASSERT_TRUE(pumpUntil([&] { return item("dialogTitle") == nullptr; }));
    }
}

TEST_F(WindowDialog, Tab_StaysInIt)
{
    openHealth(mainPage(), 0);
    ASSERT_TRUE(pumpUntil([&] { return focused() == "dialogClose"; }));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "dialogClose");
}

TEST_F(WindowDialog, ClickOutside_ClosesIt)
{
    openHealth(mainPage(), 0);
    ASSERT_TRUE(pumpUntil([&] { return focused() == "dialogClose"; }));
    click(item("machineName"));
    EXPECT_TRUE(pumpUntil([&] { return !isPopuped(); }));
}

TEST_F(WindowDialog, CloseGuideOfAnAgent_ClosesIt)
{
    openHealth(mainPage(), 0);
    ASSERT_NE(awaited("dialogTitle"), nullptr);
    EXPECT_TRUE(callWindowMethod("closeGuide", QVariant()).toBool());
    EXPECT_FALSE(isPopuped());
    EXPECT_TRUE(pumpUntil([&] { return item("dialogTitle") == nullptr; }));
}

TEST_F(WindowDialog, BootMediaAndToolbox_AreDialogs)
{
    orderHost(mainPage(), "dobmfunction", ConnectionRule::Call,
              QVariant(QVariantMap{{"usbDriveLetter", "F"}}));
    ASSERT_TRUE(waitForText("dialogTitle", "Boot media: USB disk"));
    EXPECT_TRUE(texts("factValue").contains("drive F"));
    EXPECT_TRUE(isPopuped());
    callHost<QVariant>(mainPage(), "doToolBox", ConnectionRule::Call, QVariant(2), QVariant(QVariantMap()));
    ASSERT_TRUE(waitForText("dialogTitle", "Toolbox: bootRepair"));
    EXPECT_TRUE(isPopuped());
}

TEST_F(WindowDialog, StartButton_QueuesTheWorkAndClosesIt)
{
    orderHost(mainPage(), "dobmfunction", ConnectionRule::Call,
              QVariant(QVariantMap{{"usbDriveLetter", "F"}}));
    ASSERT_NE(awaited("dialogStart"), nullptr);
    ASSERT_TRUE(pumpUntil([&] { return focused() == "dialogClose"; }));
    click(item("dialogStart"));
    EXPECT_FALSE(isPopuped());
    ASSERT_TRUE(waitForText("taskState", "done"));
    EXPECT_EQ(text("taskTitle"), "CreateBootMedia");
}

TEST_F(WindowDialog, DiskHealth_HasNoStartButton)
{
    openHealth(mainPage(), 0);
    ASSERT_NE(awaited("dialogClose"), nullptr);
    EXPECT_EQ(item("dialogStart"), nullptr);
}

TEST_F(WindowDialog, ClickAfter_ClosesItWithoutAUser)
{
    scene.core().guideView().setClickAfter(0);
    openHealth(mainPage(), 0);
    EXPECT_TRUE(isPopuped());
    EXPECT_TRUE(pumpUntil([&] { return !isPopuped(); }));
    EXPECT_FALSE(scene.core().guideView().isOpen());
}

TEST_F(WindowDialog, ClickAfter_LeavesAGuideOpen)
{
    scene.core().guideView().setClickAfter(0);
    Q_EMIT bridge.sigCloneResult(cloneResult(3, QString()));
    openHealth(mainPage(), 0);
    ASSERT_TRUE(pumpUntil([&] { return !isPopuped(); }));
    Q_EMIT bridge.sigCloneResult(cloneResult(3, QString()));
    int turns = 0;
    pumpUntil([&] { return ++turns > 3; });
    EXPECT_TRUE(scene.core().guideView().isOpen());
}

void recommend(AIBridge& bridge)
{
    Q_EMIT bridge.sigRecScanResult(QVariantMap{
        {"msg", "Convert disk 1."}, {"buttons", QVariantList{"Accept", "Cancel"}}, {"default", 0}});
}

TEST_F(WindowCard, Recommendation_ShowsItsTextAndItsButtons)
{
    EXPECT_EQ(item("recommendationCard"), nullptr);
    recommend(bridge);
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    EXPECT_EQ(text("recommendationText"), "Convert disk 1.");
    EXPECT_EQ(texts("recommendationButton"), QStringList({"Accept", "Cancel"}));
}

QString lastLogLine(host::Scene& scene)
{
    const host::HostLog* log = scene.core().log();
    return log->data(log->index(log->rowCount() - 1), Qt::DisplayRole).toString();
}

TEST_F(WindowCard, EachButton_AnswersWithItsNumber)
{
    for (const int button : {0, 1}) {
        recommend(bridge);
        ASSERT_NE(awaited("recommendationCard"), nullptr);
        scene.window()->grabWindow();
        click(items("recommendationButton")[static_cast<std::size_t>(button)]);
        EXPECT_TRUE(lastLogLine(scene).endsWith(QString("answered with button %1").arg(button)));
        EXPECT_EQ(item("recommendationCard"), nullptr);
    }
}

TEST_F(WindowCard, ScanWithoutFindings_IsReportedUntilItIsClosed)
{
    for (const bool byKeyboard : {false, true}) {
        QMetaObject::invokeMethod(&scene.link(), "onScanFinished", Qt::DirectConnection);
        ASSERT_NE(awaited("recommendationCard"), nullptr);
        scene.window()->grabWindow();
        EXPECT_EQ(text("recommendationText"), "The scan found nothing to recommend.");
        EXPECT_EQ(texts("recommendationButton"), QStringList("Close"));
        if (byKeyboard) {
            ASSERT_TRUE(tabTo("recommendationButton"));
            press(Qt::Key_Escape);
        } else {
            click(items("recommendationButton")[0]);
        }
        EXPECT_EQ(item("recommendationCard"), nullptr);
        EXPECT_FALSE(lastLogLine(scene).contains("answered"));
    }
}

TEST_F(WindowCard, Buttons_WorkByKeyboard)
{
    recommend(bridge);
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    ASSERT_TRUE(tabTo("recommendationButton"));
    press(Qt::Key_Return);
    EXPECT_TRUE(lastLogLine(scene).endsWith("answered with button 0"));
    recommend(bridge);
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    ASSERT_TRUE(tabTo("recommendationButton"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(lastLogLine(scene).endsWith("answered with button 1"));
}

} // namespace
