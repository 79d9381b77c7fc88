// The boot checker program: its output, its exit code, and a program that does not end.
#include "recscan/BootChecker.h"

#include "tests/recscan/ScanFixture.h"
#include "tests/support/Processes.h"

#include <QtCore/QFile>
#include <QtCore/QThread>

namespace {

// Keeps a program running as long as its file exists.
const char kWaitWhileThere[] = "while [ -e \"$0\" ]; do sleep 0.1; done\n";

class BootChecker : public testing::Test
{
protected:
    void install(const QByteArray& body) { application.script(program(), body); }
    QString program() const { return application.root() + "/BootRepair/BootRepair_Console.exe"; }

    ScratchApplication application;
};

TEST_F(BootChecker, NonZeroExitAndTheWord_IsAFinding)
{
    install("echo before\necho xxFindErrorItemxx\nexit 1\n");
    EXPECT_TRUE(bootCheckerFindsError());
}

TEST_F(BootChecker, ZeroExitWithTheWord_IsNotAFinding)
{
    install("echo FindErrorItem\nexit 0\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, NonZeroExitWithoutTheWord_HasNoResult)
{
    install("echo finderroritem\nexit 1\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, TheWordOnStandardError_DoesNotCount)
{
    install("echo FindErrorItem >&2\nexit 1\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, MissingProgram_HasNoResult)
{
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, FileThatIsNotAProgram_HasNoResult)
{
    application.write(program(), "FindErrorItem");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, Program_ReceivesOneArgumentAndTheCurrentFolder)
{
    install("echo \"$#\" \"$1\" > seen\n");
    bootCheckerFindsError();
    EXPECT_EQ(application.read(application.current() + "/seen"), "1 checkBCD\n");
}

TEST_F(BootChecker, LongOutput_IsReadCompletely)
{
    install("i=0\nwhile [ $i -lt 20000 ]; do echo 0123456789012345678901234567890; i=$((i+1)); done\n"
            "echo FindErrorItem\nexit 2\n");
    EXPECT_TRUE(bootCheckerFindsError());
}

TEST_F(BootChecker, StillRunningAtTheTimeout_HasNoResultAndIsNotTerminated)
{
    install(QByteArray("echo FindErrorItem\necho ") + kOwnProcess +
            " > \"$0.pid.new\"\nmv \"$0.pid.new\" \"$0.pid\"\n" + kWaitWhileThere);
    EXPECT_FALSE(bootCheckerFindsError(500));
    QByteArray pid;
    for (int i = 0; i < 200 && pid.isEmpty(); ++i) {
        pid = application.read(program() + ".pid").trimmed();
        QThread::msleep(50);
    }
    ASSERT_FALSE(pid.isEmpty());
    EXPECT_TRUE(processRuns(pid));
    EXPECT_TRUE(endProcess(pid));
}

TEST(BootCheckerLimit, IsThirtySeconds)
{
    EXPECT_EQ(kBootCheckerTimeoutMs, 30000);
}

} // namespace
