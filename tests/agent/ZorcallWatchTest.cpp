// zorcall watch, on the sandbox host.
#include "tests/agent/SandboxHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <csignal>

namespace {

/// A running zorcall.
class Watch
{
public:
    Watch(SandboxHost& host, const char* line)
    {
        process_.setProcessEnvironment(zorcallEnvironment({host.variable()}));
        process_.start(zorcallPath(), words(line));
    }
    ~Watch()
    {
        process_.kill();
        process_.waitForFinished();
    }

    bool waitFor(const QByteArray& text)
    {
        return pumpUntil([&] { return output().contains(text); }, 50000);
    }
    bool waitForEnd()
    {
        return pumpUntil([&] { return process_.state() == QProcess::NotRunning; }, 50000);
    }
    const QByteArray& output()
    {
        output_ += process_.readAllStandardOutput();
        return output_;
    }
    QByteArray errors() { return process_.readAllStandardError(); }
    int code() const { return process_.exitCode(); }

private:
    QProcess process_;
    QByteArray output_;
};

void rename(SandboxHost& host, const char* label)
{
    const QByteArray line =
        QByteArray("--gated --patient ChangePartitionLabel driveLetter=H newLabel=") + label;
    ASSERT_EQ(host.call(line.constData()).code, 0);
}

TEST(ZorcallWatch, Differences_ArePrintedInWordsAsTheyHappen)
{
    SandboxHost host;
    Watch watch(host, "--table watch --interval 0.1");
    ASSERT_TRUE(
        watch.waitFor("Watching the disks (4) and their partitions and unallocated regions (13). Press "
                      "Ctrl-C to end.\n"))
        << watch.output().constData();
    rename(host, "TRAVEL");
    EXPECT_TRUE(watch.waitFor("  changed  H: (disk 3): label \"STICK\" -> \"TRAVEL\"\n"))
        << watch.output().constData();
    ASSERT_EQ(host.call("--gated --patient DeletePartition driveLetter=H").code, 0);
    EXPECT_TRUE(watch.waitFor("  gone     H: (disk 3), TRAVEL, FAT32, 59.00 GB\n"))
        << watch.output().constData();
    EXPECT_TRUE(
        watch.waitFor("  changed  unallocated region (disk 3, byte 63351816192): rawCapacity 640 MB -> 59.63 "
                      "GB, startingOffset 63351816192 -> 1048576\n"))
        << watch.output().constData();
    ASSERT_EQ(host.call("--gated --patient CreatePartition diskIndex=3 capacity=1073741824 fileSystem=NTFS "
                        "label=New unallocatedIndex=-1")
                  .code,
              0);
    EXPECT_TRUE(watch.waitFor("  new      H: (disk 3), New, NTFS, 1.00 GB\n")) << watch.output().constData();
}

TEST(ZorcallWatch, InAPipe_PrintsTheInventoryAndThenJsonObjects)
{
    SandboxHost host;
    Watch watch(host, "watch --interval 0.1");
    ASSERT_TRUE(watch.waitFor("\n"));
    rename(host, "TRAVEL");
    ASSERT_TRUE(watch.waitFor("}\n{")) << watch.output().constData();
    ASSERT_TRUE(watch.waitFor("}}\n")) << watch.output().constData();
    const QList<QByteArray> lines = watch.output().split('\n');
    const QJsonObject first = QJsonDocument::fromJson(lines.at(0)).object();
    EXPECT_EQ(first.value("change"), QJsonValue("initial"));
    EXPECT_EQ(first.value("disks").toArray().size(), 4);
    EXPECT_EQ(first.value("partitions").toArray().size(), 13);
    const QJsonObject change = QJsonDocument::fromJson(lines.at(1)).object();
    EXPECT_EQ(change.value("change"), QJsonValue("changed"));
    EXPECT_EQ(change.value("item"), QJsonValue("partition"));
    EXPECT_EQ(change.value("fields"), QJsonValue(QJsonArray{"label"}));
    EXPECT_EQ(change.value("was").toObject().value("label"), QJsonValue("STICK"));
    EXPECT_EQ(change.value("now").toObject().value("label"), QJsonValue("TRAVEL"));
    EXPECT_EQ(change.value("now").toObject().value("rawCapacity").toDouble(), 63350767616.0);
    EXPECT_TRUE(QDateTime::fromString(change.value("time").toString(), Qt::ISODateWithMs).isValid());
}

TEST(ZorcallWatch, EndOfTheService_Code3)
{
    SandboxHost host;
    Watch watch(host, "watch --interval 0.1");
    ASSERT_TRUE(watch.waitFor("\n"));
    host.process().signal(SIGTERM);
    ASSERT_TRUE(watch.waitForEnd());
    EXPECT_EQ(watch.code(), 3);
    EXPECT_EQ(watch.errors().count('\n'), 1);
}

// The service serves three clients at a time.
TEST(ZorcallWatch, FourWatches_LeaveTheServiceFreeForACall)
{
    SandboxHost host;
    std::vector<std::unique_ptr<Watch>> watches;
    for (int i = 0; i < 4; ++i) {
        watches.push_back(std::make_unique<Watch>(host, "watch --interval 3600"));
        ASSERT_TRUE(watches.back()->waitFor("\n")) << i;
    }
    EXPECT_EQ(host.call("--timeout 20 Init"), (Ran{0, "true\n", ""}));
}

} // namespace
