#include "host/udisks/BlockIo.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>

namespace host {

namespace {

constexpr std::size_t kAlignment = 4096;

// Repeats a transfer until it is complete. A transfer of 0 bytes is the end of the device.
template <class Transfer> int transferAll(qint64 size, Transfer transfer)
{
    for (qint64 done = 0; done < size;) {
        const ssize_t count = transfer(done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? errno : EIO;
        done += count;
    }
    return 0;
}

} // namespace

DescriptorIo::DescriptorIo(int reader, int writer) : reader_(reader), writer_(writer)
{
    // Without support of the device, flush() discards the cache instead.
    for (const int descriptor : {reader_, writer_})
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_DIRECT);
}

int DescriptorIo::read(char* buffer, qint64 size, qint64 offset)
{
    return transferAll(size, [&](qint64 done) {
        return ::pread(reader_, buffer + done, static_cast<std::size_t>(size - done), offset + done);
    });
}

int DescriptorIo::write(const char* buffer, qint64 size, qint64 offset)
{
    return transferAll(size, [&](qint64 done) {
        return ::pwrite(writer_, buffer + done, static_cast<std::size_t>(size - done), offset + done);
    });
}

int DescriptorIo::flush()
{
    if (::fdatasync(writer_) != 0)
        return errno;
    return ::posix_fadvise(reader_, 0, 0, POSIX_FADV_DONTNEED);
}

BlockBuffer::BlockBuffer(qint64 size)
    : data_(static_cast<char*>(std::aligned_alloc(kAlignment, static_cast<std::size_t>(size)))), size_(size)
{
    if (!data_)
        throw std::bad_alloc();
    std::memset(data_.get(), 0, static_cast<std::size_t>(size));
}

Text errorText(int error)
{
    return qt_error_string(error);
}

} // namespace host
