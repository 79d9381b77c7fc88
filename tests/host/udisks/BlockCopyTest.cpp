// Copying and reading blocks of devices in memory that fail at a known position.
#include "host/udisks/BlockCopy.h"
#include "host/udisks/SurfaceTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <set>
#include <vector>

namespace {

constexpr qint64 kMiB = 1024 * 1024;

class MemoryDevice : public host::BlockIo
{
public:
    explicit MemoryDevice(qint64 size) : bytes(static_cast<std::size_t>(size)) {}

    // Random bytes, the same in every run.
    static MemoryDevice filled(qint64 size)
    {
        MemoryDevice device(size);
        unsigned state = 1;
        for (char& byte : device.bytes)
            byte = static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
        return device;
    }

    int read(char* buffer, qint64 size, qint64 offset) override
    {
        const auto bad = badBytes.lower_bound(offset);
        if (bad != badBytes.end() && *bad < offset + size)
            return EIO;
        std::memcpy(buffer, &bytes[static_cast<std::size_t>(offset)], static_cast<std::size_t>(size));
        return 0;
    }

    int write(const char* buffer, qint64 size, qint64 offset) override
    {
        onWrite(offset);
        if (offset + size > room)
            return ENOSPC;
        std::memcpy(&bytes[static_cast<std::size_t>(offset)], buffer, static_cast<std::size_t>(size));
        if (lostByte >= offset && lostByte < offset + size)
            bytes[static_cast<std::size_t>(lostByte)] ^= 1;
        return 0;
    }

    int flush() override
    {
        ++flushes;
        return 0;
    }

    bool isHeadZero() const
    {
        return std::all_of(bytes.begin(), bytes.begin() + kMiB, [](char byte) { return byte == 0; });
    }

    std::vector<char> bytes;
    std::set<qint64> badBytes;
    qint64 room = 1 << 30;
    qint64 lostByte = -1; ///< written wrongly
    int flushes = 0;
    std::function<void(qint64)> onWrite = [](qint64) {};
};

QString errorOf(const host::Rejection& error)
{
    return error ? error->english() : QString();
}

class BlockCopy : public testing::Test
{
protected:
    QString copy() { return errorOf(host::copyBlocks(source, target, size, control)); }

    const qint64 size = 9 * kMiB + 512;
    MemoryDevice source = MemoryDevice::filled(size);
    MemoryDevice target{10 * kMiB};
    host::WorkControl control;
};

TEST_F(BlockCopy, EveryByteIsCopiedAndNoFurtherByteIsWritten)
{
    std::fill(target.bytes.begin(), target.bytes.end(), 'x');
    EXPECT_EQ(copy(), "");
    EXPECT_TRUE(std::equal(source.bytes.begin(), source.bytes.end(), target.bytes.begin()));
    EXPECT_EQ(std::count(target.bytes.begin() + size, target.bytes.end(), 'x'), 10 * kMiB - size);
    EXPECT_EQ(control.doneBytes, 2 * size);
}

TEST_F(BlockCopy, LessThanAMebibyte_IsCopied)
{
    EXPECT_EQ(errorOf(host::copyBlocks(source, target, 4096, control)), "");
    EXPECT_TRUE(std::equal(source.bytes.begin(), source.bytes.begin() + 4096, target.bytes.begin()));
    EXPECT_EQ(target.bytes[4096], 0);
}

TEST_F(BlockCopy, FirstMebibyte_IsClearedFirstAndWrittenLast)
{
    std::fill(target.bytes.begin(), target.bytes.end(), 'x');
    std::vector<qint64> offsets;
    target.onWrite = [&](qint64 offset) {
        if (!offsets.empty() && offset != 0) {
            EXPECT_TRUE(target.isHeadZero());
        }
        offsets.push_back(offset);
    };
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(offsets, (std::vector<qint64>{0, kMiB, 5 * kMiB, 9 * kMiB, 0}));
}

TEST_F(BlockCopy, UnreadableSource_IsAnErrorWithThePosition)
{
    source.badBytes = {6 * kMiB};
    EXPECT_EQ(copy(), "The source cannot be read after byte 5242880 of the partition: Input/output error.");
    EXPECT_TRUE(target.isHeadZero());
}

TEST_F(BlockCopy, FullDestination_IsAnErrorWithThePosition)
{
    target.room = 9 * kMiB;
    EXPECT_EQ(copy(), "The destination cannot be written after byte 9437184 of the partition: "
                      "No space left on device.");
    EXPECT_TRUE(target.isHeadZero());
}

TEST_F(BlockCopy, ByteThatDiffers_IsAnErrorWithItsPosition)
{
    target.lostByte = 7 * kMiB + 3;
    EXPECT_EQ(copy(), "The copy differs from the source at byte 7340035 of the partition.");
    EXPECT_TRUE(target.isHeadZero());
}

TEST_F(BlockCopy, DifferenceInTheFirstMebibyte_DiscardsTheCopy)
{
    const char zero = 0;
    target.onWrite = [&](qint64 offset) {
        // Only the copy itself is written wrongly.
        target.lostByte = offset == 0 && target.flushes == 2 ? 100 : -1;
    };
    EXPECT_EQ(copy(), "The copy differs from the source at byte 100 of the partition.");
    EXPECT_EQ(target.bytes[0], zero);
    EXPECT_TRUE(target.isHeadZero());
}

TEST_F(BlockCopy, CopyThatCannotBeRead_IsAnErrorWithThePosition)
{
    target.badBytes = {kMiB};
    EXPECT_EQ(copy(), "The copy cannot be read after byte 1048576 of the partition: Input/output error.");
}

TEST_F(BlockCopy, Cancelled_EndsAtTheNextBlockWithoutAFileSystem)
{
    std::vector<qint64> offsets;
    target.onWrite = [&](qint64 offset) {
        offsets.push_back(offset);
        control.cancelled = offset == kMiB;
    };
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(offsets, (std::vector<qint64>{0, kMiB}));
    EXPECT_TRUE(target.isHeadZero());
}

TEST_F(BlockCopy, CancelledInTheLastWrite_DiscardsTheCopy)
{
    target.onWrite = [&](qint64 offset) { control.cancelled = offset == 0 && target.flushes == 2; };
    EXPECT_EQ(copy(), "");
    EXPECT_TRUE(target.isHeadZero());
}

TEST(SurfaceTest, ReadableDevice_HasNoBadSector)
{
    MemoryDevice device(3 * kMiB + 512);
    host::WorkControl control;
    EXPECT_EQ(host::findBadSectors(device, 3 * kMiB + 512, 512, control).count, 0);
    EXPECT_EQ(control.doneBytes, 3 * kMiB + 512);
}

TEST(SurfaceTest, UnreadableSectors_AreCountedWithTheirPositions)
{
    MemoryDevice device(4 * kMiB);
    device.badBytes = {5 * 512, 6 * 512 + 100, 6 * 512 + 200, 3 * kMiB + 511};
    host::WorkControl control;
    const host::BadSectors bad = host::findBadSectors(device, 4 * kMiB, 512, control);
    EXPECT_EQ(bad.count, 3);
    EXPECT_EQ(bad.first, 5);
    EXPECT_EQ(bad.last, 6144);
}

TEST(SurfaceTest, SectorsOf4096Bytes_AreTestedAsAWhole)
{
    MemoryDevice device(2 * kMiB);
    device.badBytes = {4096, 5000, 9000};
    host::WorkControl control;
    const host::BadSectors bad = host::findBadSectors(device, 2 * kMiB, 4096, control);
    EXPECT_EQ(bad.count, 2);
    EXPECT_EQ(bad.first, 1);
    EXPECT_EQ(bad.last, 2);
}

} // namespace
