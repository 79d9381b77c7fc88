// The boot checker as a program: what it prints, how it ends, and when it does not.
#include "recscan/BootChecker.h"

#include "tests/recscan/ScanFixture.h"
#include "tests/support/Processes.h"

#include <QtCore/QFile>
#include <QtCore/QThread>

namespace {

// Keeps a program from ending as long as its own file is there.
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

TEST_F(BootChecker, ZeroExitWithTheWord_IsTheAllClear)
{
    install("echo FindErrorItem\nexit 0\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, NonZeroExitWithoutTheWord_SaysNothing)
{
    install("echo finderroritem\nexit 1\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, TheWordOnStandardError_DoesNotCount)
{
    install("echo FindErrorItem >&2\nexit 1\n");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, ProgramThatIsNotThere_SaysNothing)
{
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, FileThatIsNoProgram_SaysNothing)
{
    application.write(program(), "FindErrorItem");
    EXPECT_FALSE(bootCheckerFindsError());
}

TEST_F(BootChecker, Program_GetsOneArgumentAndTheCurrentFolder)
{
    install("echo \"$#\" \"$1\" > seen\n");
    bootCheckerFindsError();
    EXPECT_EQ(application.read(application.current() + "/seen"), "1 checkBCD\n");
}

TEST_F(BootChecker, MuchOutput_IsReadWhole)
{
    install("i=0\nwhile [ $i -lt 20000 ]; do echo 0123456789012345678901234567890; i=$((i+1)); done\n"
            "echo FindErrorItem\nexit 2\n");
    EXPECT_TRUE(bootCheckerFindsError());
}

TEST_F(BootChecker, StillRunningAtTheLimit_SaysNothingAndIsNotEnded)
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
    EXPECT_EQ(kBootCheckerLimitMs, 30000);
}

} // namespace
