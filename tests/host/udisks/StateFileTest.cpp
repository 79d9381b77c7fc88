// The host's state files when they cannot be written or are not files. No disk service is needed.
#include "host/udisks/StateFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using host::StateFile;

// Writes beyond this size fail, as on a full disk. The lock file is smaller.
class LargestFile
{
public:
    explicit LargestFile(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit = {bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~LargestFile()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit old_ = {};
};

class StateFiles : public testing::Test
{
protected:
    StateFiles()
    {
        qputenv("XDG_STATE_HOME", folder_.path().toLocal8Bit());
        QDir().mkpath(folder_.filePath("zorhost"));
    }
    ~StateFiles() override { qputenv("XDG_STATE_HOME", old_); }

    static QMap<QString, QString> read(const StateFile& file)
    {
        host::Rejection problem;
        return file.read(problem);
    }

private:
    QByteArray old_ = qgetenv("XDG_STATE_HOME");
    QTemporaryDir folder_;
};

TEST_F(StateFiles, DiskThatIsFull_KeepsTheOldFileAndIsReported)
{
    const StateFile file("letters.json");
    ASSERT_EQ(file.write({{"volume", "D:"}}), host::kAccepted);
    {
        const LargestFile limit(512);
        const host::Rejection rejection = file.write({{"other", QString(1000, 'x')}});
        ASSERT_TRUE(rejection.has_value());
        EXPECT_EQ(rejection->english(), "The file " + file.path() + " cannot be written: File too large.");
    }
    EXPECT_EQ(read(file), (QMap<QString, QString>{{"volume", "D:"}}));
    EXPECT_EQ(QFileInfo(file.path()).dir().entryList(QDir::Files), QStringList("letters.json"));
}

TEST_F(StateFiles, PipeInPlaceOfTheFile_IsNeitherReadNorReplaced)
{
    const StateFile file("images.json");
    ASSERT_EQ(mkfifo(file.path().toLocal8Bit().constData(), 0666), 0);
    host::Rejection problem;
    EXPECT_TRUE(file.read(problem).isEmpty());
    ASSERT_TRUE(problem.has_value());
    EXPECT_EQ(problem->english(), "The file " + file.path() + " cannot be read: not a regular file.");
    const host::Rejection rejection = file.write({{"volume", "D:"}});
    ASSERT_TRUE(rejection.has_value());
    EXPECT_EQ(rejection->english(), "The file " + file.path() + " cannot be written: not a regular file.");
    struct stat status = {};
    ASSERT_EQ(stat(file.path().toLocal8Bit().constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

} // namespace
