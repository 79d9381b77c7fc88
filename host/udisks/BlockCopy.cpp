#include "host/udisks/BlockCopy.h"

#include <algorithm>
#include <cstring>

namespace host {

namespace {

constexpr qint64 kBlock = qint64(4) << 20;
constexpr qint64 kHead = qint64(1) << 20;

Text withPosition(const char* pattern, qint64 offset)
{
    return {pattern, {QString::number(offset)}};
}

Text withPosition(const char* pattern, qint64 offset, int error)
{
    return {pattern, {QString::number(offset), errorText(error)}};
}

class Copy
{
public:
    Copy(BlockIo& source, BlockIo& target, WorkControl& control)
        : source_(source), target_(target), control_(control)
    {
    }

    Rejection clear(qint64 begin, qint64 end)
    {
        std::memset(first_.data(), 0, static_cast<std::size_t>(kBlock));
        return eachBlock(begin, end, [&](qint64 offset, qint64 size) { return write(offset, size); });
    }

    // Writes a range and compares it. Between both, the caches are discarded.
    Rejection copyAndCompare(qint64 begin, qint64 end)
    {
        Rejection error = eachBlock(begin, end, [&](qint64 offset, qint64 size) {
            const Rejection unreadable = read(offset, size);
            return unreadable ? unreadable : write(offset, size);
        });
        if (!error)
            error = flush(begin);
        if (!error)
            error = eachBlock(begin, end, [&](qint64 offset, qint64 size) { return compare(offset, size); });
        return error;
    }

    Rejection flush(qint64 offset)
    {
        source_.flush();
        const int error = target_.flush();
        return error == 0 ? kAccepted : Rejection(writeError(offset, error));
    }

private:
    template <class Work> Rejection eachBlock(qint64 begin, qint64 end, Work work)
    {
        for (qint64 offset = begin; offset < end && !control_.cancelled; offset += kBlock) {
            const qint64 size = std::min(kBlock, end - offset);
            if (const Rejection error = work(offset, size))
                return error;
            control_.doneBytes += size;
        }
        return kAccepted;
    }

    Rejection read(qint64 offset, qint64 size)
    {
        const int error = source_.read(first_.data(), size, offset);
        if (error == 0)
            return kAccepted;
        return withPosition(
            QT_TRANSLATE_NOOP("Sandbox", "The source cannot be read after byte %1 of the partition: %2."),
            offset, error);
    }

    Rejection write(qint64 offset, qint64 size)
    {
        const int error = target_.write(first_.data(), size, offset);
        return error == 0 ? kAccepted : Rejection(writeError(offset, error));
    }

    static Text writeError(qint64 offset, int error)
    {
        return withPosition(
            QT_TRANSLATE_NOOP("Sandbox",
                              "The destination cannot be written after byte %1 of the partition: %2."),
            offset, error);
    }

    Rejection compare(qint64 offset, qint64 size)
    {
        if (const Rejection unreadable = read(offset, size))
            return unreadable;
        const int error = target_.read(second_.data(), size, offset);
        if (error != 0)
            return withPosition(
                QT_TRANSLATE_NOOP("Sandbox", "The copy cannot be read after byte %1 of the partition: %2."),
                offset, error);
        const char* end = first_.data() + size;
        const auto difference = std::mismatch(first_.data(), first_.data() + size, second_.data());
        if (difference.first == end)
            return kAccepted;
        return withPosition(
            QT_TRANSLATE_NOOP("Sandbox", "The copy differs from the source at byte %1 of the partition."),
            offset + (difference.first - first_.data()));
    }

    BlockIo& source_;
    BlockIo& target_;
    WorkControl& control_;
    BlockBuffer first_{kBlock};
    BlockBuffer second_{kBlock};
};

} // namespace

Rejection copyBlocks(BlockIo& source, BlockIo& target, qint64 size, WorkControl& control)
{
    const qint64 head = std::min(kHead, size);
    Copy copy(source, target, control);
    Rejection error = copy.clear(0, head);
    if (!error)
        error = copy.flush(0);
    control.doneBytes = 0;
    if (!error)
        error = copy.copyAndCompare(head, size);
    if (error || control.cancelled)
        return error;
    error = copy.copyAndCompare(0, head);
    if (error || control.cancelled)
        discardCopy(target, size);
    return error;
}

void discardCopy(BlockIo& target, qint64 size)
{
    const qint64 head = std::min(kHead, size);
    BlockBuffer zeros(head);
    target.write(zeros.data(), head, 0);
    target.flush();
}

} // namespace host
