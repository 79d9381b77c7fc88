// Orders that wait for the consent of a person.
#include "host/machine/GuidedTasks.h"
#include "host/objects/HostCore.h"
#include "tests/host/AskingSimulation.h"
#include "tests/host/MachineText.h"
#include "tests/support/Threads.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

namespace {

using host::TaskQueue;

constexpr int kFormat = 15;
constexpr int kLabel = 31;
const QString kNoWindow = "This order destroys data on a disk and needs a confirmation in the window. Start "
                          "the host with a window, or with --unattended.";

class Confirmation : public testing::Test
{
protected:
    Confirmation()
    {
        host::Pace pace;
        pace.instant = true;
        simulation.setPace(pace);
    }

    host::ConfirmationRequest& request() { return core->orders().confirmation(); }
    bool isAsked()
    {
        return pumpUntil([&] { return request().isOpen(); });
    }
    bool finish()
    {
        return pumpUntil([&] { return !core->status().isBusy(); });
    }
    QString cell(int row, int role)
    {
        return core->tasks()->data(core->tasks()->index(row), role).toString();
    }
    QString state(int row = 0) { return cell(row, TaskQueue::StateRole); }
    QString fileSystem(const char* letter = "D") { return core->machine()->partition(letter)->fsString; }

    AskingSimulation& simulation = *new AskingSimulation(testMachine());
    std::unique_ptr<host::HostCore> core =
        std::make_unique<host::HostCore>(std::unique_ptr<host::Backend>(&simulation));
    const QVariantMap format{{"driveLetter", "D"},
                             {"fileSystem", "exFAT"},
                             {"label", "New"},
                             {"clusterSize", 0},
                             {"quickFormat", true}};
};

TEST_F(Confirmation, Order_WaitsAsTheRunningTaskAndKeepsTheHostBusy)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(state(), "running");
    EXPECT_TRUE(core->status().isBusy());
    // The gate would report a dialog instead of the task.
    EXPECT_FALSE(core->status().isPopuped());
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, Question_NamesTheOrderTheDiskAndTheData)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(request().operation(), "Format a partition");
    EXPECT_TRUE(request().disk().startsWith("/dev/sdx, Maker Stick, ")) << request().disk().toStdString();
    EXPECT_FALSE(request().isRisk());
    ASSERT_EQ(request().losses().size(), 1);
    for (const char* part : {"D: Data", "NTFS", " used, "})
        EXPECT_TRUE(request().losses()[0].contains(part)) << request().losses()[0].toStdString();
}

TEST_F(Confirmation, Confirmed_CarriesTheOrderOut)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    request().confirm();
    EXPECT_FALSE(request().isOpen());
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "done");
    EXPECT_EQ(fileSystem(), "exFAT");
}

TEST_F(Confirmation, Rejected_EndsAsCancelledAndChangesNothing)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    request().reject();
    EXPECT_FALSE(request().isOpen());
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "cancelled");
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, EachOrder_IsAskedSeparately)
{
    core->orders().order(kFormat, format);
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    request().confirm();
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(state(0), "done");
    EXPECT_EQ(state(1), "running");
    request().reject();
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(1), "cancelled");
}

TEST_F(Confirmation, CancelledTask_ClosesTheQuestion)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    core->tasks()->cancel(1);
    EXPECT_FALSE(request().isOpen());
    EXPECT_EQ(state(), "cancelled");
    request().confirm();
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, Shutdown_ClosesTheQuestionAndCancelsAllTasks)
{
    core->orders().order(kFormat, format);
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    core->status().setClosing();
    core->tasks()->cancelAll();
    EXPECT_FALSE(request().isOpen());
    EXPECT_EQ(state(0), "cancelled");
    EXPECT_EQ(state(1), "cancelled");
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, DataThatChangesMeanwhile_EndsTheOrder)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    host::Machine next = *core->machine();
    next.partition("D")->label = "Replaced";
    simulation.change(next);
    EXPECT_FALSE(request().isOpen());
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "failed");
    EXPECT_EQ(cell(0, TaskQueue::ErrorRole),
              "The disk changed while the confirmation was open. Nothing has been written.");
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, DiskReplacedWithoutASignal_IsNotChanged)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    simulation.model = "Other Stick";
    request().confirm();
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "failed");
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, ChangedSetting_KeepsTheQuestionOpen)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    core->setWin11Checker(!core->isWin11Checker());
    EXPECT_TRUE(request().isOpen());
    request().confirm();
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "done");
}

TEST_F(Confirmation, OrderThatKeepsAllData_IsNotAsked)
{
    QSignalSpy asked(&request(), &host::ConfirmationRequest::changed);
    core->orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "New"}});
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "done");
    EXPECT_EQ(asked.size(), 0);
}

TEST_F(Confirmation, OrderThatCanNoLongerRun_FailsWithoutAQuestion)
{
    QVariantMap other = format;
    other["driveLetter"] = "Q";
    core->orders().order(kFormat, other);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "failed");
}

TEST_F(Confirmation, WithoutAWindow_IsRejectedWithTheReason)
{
    core->orders().setConsent(host::Consent::Missing);
    QSignalSpy rejections(&core->orders(), &host::Orders::rejected);
    const host::Rejection reason = core->orders().rejection(kFormat, format);
    ASSERT_TRUE(reason);
    EXPECT_EQ(reason->english(), kNoWindow);
    EXPECT_EQ(rejections.size(), 1);
    EXPECT_FALSE(core->orders().rejection(kLabel, {{"driveLetter", "D"}, {"newLabel", "New"}}));
}

TEST_F(Confirmation, WithoutAWindow_AnOrderThatWasNotAskedForFails)
{
    core->orders().setConsent(host::Consent::Missing);
    core->orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "failed");
    EXPECT_EQ(cell(0, TaskQueue::ErrorRole), kNoWindow);
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(Confirmation, WithoutAWindow_AGuideOnlyInforms)
{
    core->orders().setConsent(host::Consent::Missing);
    QSignalSpy rejections(&core->orders(), &host::Orders::rejected);
    host::Guide guide;
    guide.title = QString("Check");
    guide.work = host::GuidedWork{host::Function::CheckFileSystem, {{"driveLetter", "D"}}};
    core->guides().open(guide);
    EXPECT_FALSE(core->guides().canStart());
    EXPECT_EQ(rejections.size(), 1);
    guide.work = host::GuidedWork{host::Function::ScanBadSectors, {{"driveLetter", "D"}}};
    core->guides().open(guide);
    EXPECT_TRUE(core->guides().canStart());
}

TEST_F(Confirmation, WaivedConsent_CarriesTheOrderOutAtOnce)
{
    core->orders().setConsent(host::Consent::Waived);
    EXPECT_FALSE(core->orders().rejection(kFormat, format));
    core->orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(), "done");
    EXPECT_EQ(fileSystem(), "exFAT");
}

TEST_F(Confirmation, QuestionAndAnswer_AreInTheTranscriptAndTheLog)
{
    QTemporaryDir folder;
    ASSERT_EQ(core->transcript().open(folder.filePath("t")), "");
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    request().reject();
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    request().confirm();
    ASSERT_TRUE(finish());
    QFile file(folder.filePath("t"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_EQ(text.count("\"action\":\"requested\""), 2);
    EXPECT_EQ(text.count("\"action\":\"rejected\""), 1);
    EXPECT_EQ(text.count("\"action\":\"confirmed\""), 1);
    EXPECT_EQ(text.count("\"operation\":\"Format a partition\""), 4);
    EXPECT_EQ(text.count("\"label\":\"Data\""), 4);
    const QString log = core->log()->stringList().join('\n');
    EXPECT_TRUE(log.contains(" confirmation requested: Format a partition (/dev/sdx, Maker Stick, "))
        << log.toStdString();
    EXPECT_TRUE(log.contains(" confirmation rejected: ")) << log.toStdString();
    EXPECT_TRUE(log.contains(" confirmation confirmed: ")) << log.toStdString();
}

TEST_F(Confirmation, EndOfTheHost_DiscardsAnOpenQuestion)
{
    core->orders().order(kFormat, format);
    ASSERT_TRUE(isAsked());
    core.reset();
}

} // namespace
