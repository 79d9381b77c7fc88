// Clones that fail or are cancelled, and read tests: the source stays unchanged, and the destination is not
// recognised as a file system.
#include "host/udisks/ReadTestExecution.h"
#include "tests/host/udisks/CloneFixture.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

using host::Execution;
using host::Function;

class CloneFailure : public CloneFixture
{
protected:
    void prepare(qint64 size = 40 * kMiB)
    {
        partition(image, QString("label: gpt\\nstart=2048,size=%1M\\n").arg(size / kMiB));
        partition(copy, QString("label: gpt\\nstart=2048,size=%1M\\n").arg(size / kMiB));
        put(volume(size, "mkfs.ntfs", {"-q", "-F", "-L", "Source"}), image, kMiB);
        put(volume(size, "mkfs.ext4", {"-q", "-L", "Old"}), copy, kMiB);
        before = sumOfStart(image);
        openBoth(1);
        ASSERT_TRUE(pumpUntil([&] { return partitionsOf(1).size() == 1; }, kTestMs));
    }

    QVariantMap params() const { return fromTo(entryAt(0, kMiB), entryAt(1, kMiB)); }

    // Starts a clone and calls @p interrupt when the copy has begun. Returns the outcome.
    void run(const std::function<void(Execution&)>& interrupt)
    {
        EXPECT_TRUE(PrivateDiskService::loopDeviceOf(copy).startsWith("/dev/loop"));
        const auto execution = backend->execute(static_cast<int>(Function::ClonePartition), params());
        QObject::connect(execution.get(), &Execution::ended, execution.get(),
                         [&](Execution::Outcome end, const host::Text& text) {
                             outcome = end;
                             error = text.english();
                         });
        execution->start();
        EXPECT_TRUE(pumpUntil([&] { return outcome || execution->progress() > 0; }, kTestMs));
        EXPECT_FALSE(outcome.has_value());
        interrupt(*execution);
        EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    }

    QString copyType() { return tag(extract(copy, kMiB, 40 * kMiB), "TYPE"); }

    QString before;
    std::optional<Execution::Outcome> outcome;
    QString error;
};

TEST_F(CloneFailure, Cancelled_LeavesTheDestinationWithoutAFileSystem)
{
    image = service.image("large.img", 502 * kMiB);
    copy = service.image("largeCopy.img", 502 * kMiB);
    prepare(500 * kMiB);
    run([](Execution& execution) { execution.cancel(); });
    EXPECT_EQ(outcome, Execution::Outcome::Cancelled);
    EXPECT_EQ(error, "");
    EXPECT_EQ(drive("E").fsString, "RAW");
    backend.reset();
    EXPECT_EQ(copyType(), "");
    EXPECT_EQ(sumOfStart(image), before);
}

TEST_F(CloneFailure, ServiceKilled_LeavesTheDestinationWithoutAFileSystem)
{
    image = service.image("large.img", 502 * kMiB);
    copy = service.image("largeCopy.img", 502 * kMiB);
    prepare(500 * kMiB);
    run([&](Execution&) { service.stop(); });
    EXPECT_EQ(outcome, Execution::Outcome::Failed);
    EXPECT_EQ(error, "The disk service is not running.");
    for (const QString& file : {image, copy})
        outputOf("losetup", {"--detach", PrivateDiskService::loopDeviceOf(file)});
    EXPECT_EQ(copyType(), "");
    EXPECT_EQ(sumOfStart(image), before);
}

TEST_F(CloneFailure, UnreadableSource_FailsWithThePosition)
{
    prepare();
    // The kernel reports an error when a loop device reads beyond the end of its file.
    QFile(image).resize(21 * kMiB);
    EXPECT_EQ(clone(Function::ClonePartition, params()),
              "The source cannot be read after byte 17825792 of the partition: Input/output error.");
    QFile(image).resize(128 * kMiB);
    EXPECT_EQ(drive("E").fsString, "RAW");
    backend.reset();
    EXPECT_EQ(copyType(), "");
}

TEST_F(CloneFailure, FullFileSystemOfTheImage_FailsWithThePosition)
{
    // A sparse image on a file system that is smaller than the copy.
    const QTemporaryDir place;
    outputOf("mount", {"-t", "tmpfs", "-o", "size=24M", "tmpfs", place.path()});
    copy = place.path() + "/copy.img";
    QFile file(copy);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.resize(128 * kMiB);
    file.close();
    partition(image, "label: gpt\\nstart=2048,size=40M\\n");
    partition(copy, "label: gpt\\nstart=2048,size=40M\\n");
    put(randomFile(40 * kMiB), image, kMiB);
    before = sumOfStart(image);
    openBoth(1);
    const std::string failure = clone(Function::ClonePartition, params());
    EXPECT_EQ(failure.find("The destination cannot be written after byte "), 0u) << failure;
    EXPECT_EQ(drive("E").fsString, "RAW");
    backend.reset();
    EXPECT_EQ(sumOfStart(image), before);
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(copy).isEmpty(); }, kTestMs));
    outputOf("umount", {place.path()});
}

// The tool that changes the identifier of the copy first checks it.
TEST_F(CloneFailure, DamagedFileSystem_LeavesTheDestinationWithoutAFileSystem)
{
    prepare();
    backend.reset();
    const QString damaged = volume(40 * kMiB, "mkfs.ext4", {"-q", "-L", "Source"});
    outputOf("debugfs", {"-w", "-R", "clri <2>", damaged});
    put(damaged, image, kMiB);
    before = sumOfStart(image);
    openBoth(1);
    const std::string failure = clone(Function::ClonePartition, params());
    EXPECT_EQ(failure.find("The identifier of the copy cannot be changed: "), 0u) << failure;
    EXPECT_NE(failure.find("RUN fsck MANUALLY"), std::string::npos) << failure;
    EXPECT_EQ(drive("E").fsString, "RAW");
    backend.reset();
    EXPECT_EQ(copyType(), "");
    EXPECT_EQ(sumOfStart(image), before);
}

TEST_F(CloneFailure, SourceHeldByAnotherProgram_IsNotCloned)
{
    prepare();
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    const int held = ::open(device.toLocal8Bit().constData(), O_RDONLY | O_EXCL | O_CLOEXEC);
    ASSERT_GE(held, 0);
    const std::string failure = clone(Function::ClonePartition, params());
    ::close(held);
    EXPECT_NE(failure.find("Device or resource busy"), std::string::npos) << failure;
    backend.reset();
    EXPECT_EQ(sumOfStart(image), before);
}

class ReadTest : public CloneFixture
{
protected:
    void prepare()
    {
        partition(image, "label: gpt\\nstart=2048,size=40M\\n");
        partition(copy, "label: gpt\\n");
        put(volume(40 * kMiB, "mkfs.ntfs", {"-q", "-F"}), image, kMiB);
        before = sumOfStart(image);
        openBoth(1);
    }

    QString before;
};

TEST_F(ReadTest, ReadableDisk_Succeeds)
{
    prepare();
    EXPECT_EQ(clone(Function::ScanBadSectors, {{"diskIndex", 0}}), "");
    EXPECT_EQ(clone(Function::ScanBadSectors, {{"driveLetter", "D"}}), "");
    backend.reset();
    EXPECT_EQ(sumOfStart(image), before);
}

TEST_F(ReadTest, UnreadableSectors_AreReportedWithTheirPositionsOnTheDisk)
{
    prepare();
    // Sectors from 83968 on: 41 MiB is the end of the partition.
    QFile(image).resize(40 * kMiB + 512 * 1024);
    EXPECT_EQ(
        clone(Function::ScanBadSectors, {{"driveLetter", "D"}}),
        "Unreadable sectors: 1024. The first one is sector 82944 of the disk, the last one is sector 83967.");
    EXPECT_EQ(clone(Function::ScanBadSectors, {{"diskIndex", 0}}),
              "Unreadable sectors: 179200. The first one is sector 82944 of the disk, the last one is sector "
              "262143.");
    QFile(image).resize(128 * kMiB);
}

TEST_F(ReadTest, Cancelled_EndsBeforeTheEndOfTheDisk)
{
    image = service.image("large.img", 4000 * kMiB);
    prepare();
    const auto execution = backend->execute(static_cast<int>(Function::ScanBadSectors), {{"diskIndex", 0}});
    std::optional<Execution::Outcome> outcome;
    QObject::connect(execution.get(), &Execution::ended, execution.get(),
                     [&](Execution::Outcome end) { outcome = end; });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return outcome || execution->progress() > 0; }, kTestMs));
    EXPECT_LT(execution->progress(), 1);
    execution->cancel();
    EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    EXPECT_EQ(outcome, Execution::Outcome::Cancelled);
    EXPECT_LT(execution->progress(), 1);
}

} // namespace
