// Files that the program writes: paths that are not regular files, and devices without space.
#include "tests/host/ZorhostProcess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

constexpr unsigned kMemoryMajor = 1;
constexpr unsigned kFullMinor = 7;
const char* const kOutputs[] = {"--save", "--screenshot", "--transcript"};

// A device that reports a full disk. Root could replace the system's own node, so root gets a copy.
bool makeFullDevice(const QString& path)
{
    const QByteArray name = path.toLocal8Bit();
    if (geteuid() != 0)
        return symlink("/dev/full", name.constData()) == 0;
    if (mknod(name.constData(), S_IFCHR | 0666, makedev(kMemoryMajor, kFullMinor)) != 0)
        return false;
    return QFile(path).open(QIODevice::WriteOnly | QIODevice::ExistingOnly);
}

bool isFullDevice(const QString& path)
{
    struct stat status = {};
    return stat(path.toLocal8Bit().constData(), &status) == 0 && S_ISCHR(status.st_mode) &&
           status.st_rdev == makedev(kMemoryMajor, kFullMinor);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

void expectOneErrorLine(ZorhostProcess& host, const QByteArray& error)
{
    EXPECT_EQ(host.exitCode(), 2) << host.errors().constData();
    EXPECT_EQ(host.errors().toStdString(), "zorhost: " + error.toStdString() + "\n");
    EXPECT_EQ(host.output().toStdString(), "");
}

TEST(ZorhostFiles, FullDevice_IsOneLineWithExitCode2AndStaysADevice)
{
    for (const QByteArray option : kOutputs) {
        ZorhostProcess host;
        if (!makeFullDevice(host.file("full")))
            GTEST_SKIP() << "not permitted to create a device node";
        host.start({"--headless", option, "full", "--agent", "true", "--exit-with-agent"});
        const QByteArray reason = option == "--transcript"
                                      ? "No space left on device; no further events are written"
                                      : "not a regular file";
        expectOneErrorLine(host, option.mid(2) + " full: " + reason);
        EXPECT_TRUE(isFullDevice(host.file("full"))) << option.constData();
    }
}

TEST(ZorhostFiles, FolderInPlaceOfAFile_IsOneLineWithExitCode2)
{
    for (const QByteArray option : kOutputs) {
        ZorhostProcess host;
        ASSERT_TRUE(QDir().mkdir(host.file("folder")));
        host.start({"--headless", option, "folder"});
        expectOneErrorLine(host, option.mid(2) + " folder: not a regular file");
        EXPECT_TRUE(QFileInfo(host.file("folder")).isDir());
    }
}

// Opening a pipe without a reader would hang.
TEST(ZorhostFiles, PipeInPlaceOfAFile_IsRejectedAndStaysAPipe)
{
    for (const QByteArray option : {"--save", "--screenshot"}) {
        ZorhostProcess host;
        const QByteArray pipe = host.file("pipe").toLocal8Bit();
        ASSERT_EQ(mkfifo(pipe.constData(), 0666), 0);
        host.start({"--headless", option, "pipe"});
        expectOneErrorLine(host, option.mid(2) + " pipe: not a regular file");
        struct stat status = {};
        EXPECT_EQ(stat(pipe.constData(), &status), 0);
        EXPECT_TRUE(S_ISFIFO(status.st_mode)) << option.constData();
    }
}

TEST(ZorhostFiles, TranscriptToStandardOutput_IsPrinted)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady(
        {"--headless", "--transcript", "/dev/stdout", "--agent", "true", "--exit-with-agent"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(host.output().contains("\"kind\":\"end\"")) << host.output().constData();
}

TEST(ZorhostFiles, SymbolicLink_KeepsLeadingToTheSavedFile)
{
    ZorhostProcess host;
    host.write("target.json", "old");
    ASSERT_TRUE(QFile::link("target.json", host.file("link.json")));
    ASSERT_TRUE(
        host.startReady({"--headless", "--save", "link.json", "--agent", "true", "--exit-with-agent"}));
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(QFileInfo(host.file("link.json")).isSymLink());
    EXPECT_TRUE(contentOf(host.file("target.json")).contains("\"disks\""));
}

// A killed host must not leave the machine of its start in place of an older result.
TEST(ZorhostFiles, SavedMachine_IsReplacedAtTheEndOnly)
{
    ZorhostProcess host;
    host.write("after.json", "old");
    ASSERT_TRUE(host.startReady({"--headless", "--save", "after.json", "--agent",
                                 "test \"$(cat after.json)\" = old", "--exit-with-agent"}));
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(contentOf(host.file("after.json")).contains("\"disks\""));
    EXPECT_EQ(QDir(QFileInfo(host.file("after.json")).path()).entryList({"after.json*"}).size(), 1);
}

} // namespace
