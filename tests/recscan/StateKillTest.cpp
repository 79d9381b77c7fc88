// A process that is killed while it saves the state: the file that it leaves, and the state that a reader
// gets from it.
#include "recscan/ScanStateFile.h"
#include "tests/support/ScratchApplication.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Moment
{
    const char* name;
    bool dies;
    QByteArray left; ///< the file afterwards; it held index 3 before, index 7 is saved
};

// For the name of the test.
void PrintTo(const Moment& moment, std::ostream* out)
{
    *out << moment.name;
}

const QByteArray kOld("\0\0\0\3\0", 5);
const QByteArray kNew("\0\0\0\7\1", 5);

class StateKill : public testing::TestWithParam<Moment>
{
protected:
    void save()
    {
        const QString program = application.folder() + "/state_saver";
        ScratchApplication::write(application.folder() + "/recscan.info", kOld);
        ASSERT_TRUE(QFile::copy(STATE_SAVER, program));
        process.start(program, {"7", GetParam().name});
        ASSERT_TRUE(process.waitForFinished(60000));
    }

    ScratchApplication application;
    QProcess process;
};

TEST_P(StateKill, LeavesTheOldFileAnEmptyOneOrTheNew)
{
    save();
    EXPECT_EQ(process.exitStatus() == QProcess::CrashExit, GetParam().dies);
    EXPECT_EQ(ScratchApplication::read(application.folder() + "/recscan.info"), GetParam().left);
}

TEST_P(StateKill, ReaderSeesTheOldStateAFirstScanOrTheNewState)
{
    save();
    const ScanState seen = readScanState();
    const QByteArray& left = GetParam().left;
    EXPECT_EQ(seen.nextCaseIndex, left.isEmpty() ? 0 : left == kOld ? 3 : 7);
    EXPECT_EQ(seen.referralDone, left == kNew);
}

INSTANTIATE_TEST_SUITE_P(All, StateKill,
                         testing::Values(Moment{"before-open", true, kOld}, Moment{"after-open", true, {}},
                                         Moment{"before-write", true, {}}, Moment{"after-write", true, kNew},
                                         Moment{"before-close", true, kNew},
                                         Moment{"after-close", true, kNew}, Moment{"never", false, kNew}),
                         [](const auto& row) { return QString(row.param.name).remove('-').toStdString(); });

} // namespace
