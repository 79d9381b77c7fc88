#include "host/udisks/SurfaceTest.h"

#include <algorithm>

namespace host {

namespace {

constexpr qint64 kBlock = qint64(1) << 20;

} // namespace

BadSectors findBadSectors(BlockIo& device, qint64 size, int sectorSize, WorkControl& control)
{
    BlockBuffer buffer(kBlock);
    BadSectors bad;
    const auto testSectors = [&](qint64 begin, qint64 end) {
        for (qint64 offset = begin; offset < end && !control.cancelled; offset += sectorSize) {
            if (device.read(buffer.data(), sectorSize, offset) == 0)
                continue;
            ++bad.count;
            bad.last = offset / sectorSize;
            bad.first = bad.first < 0 ? bad.last : bad.first;
        }
    };
    for (qint64 offset = 0; offset < size && !control.cancelled; offset += kBlock) {
        const qint64 length = std::min(kBlock, size - offset);
        if (device.read(buffer.data(), length, offset) != 0)
            testSectors(offset, offset + length);
        control.doneBytes += length;
    }
    return bad;
}

} // namespace host
