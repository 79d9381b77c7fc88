#pragma once

#include "host/machine/Text.h"

#include <QtCore/QtGlobal>

#include <atomic>
#include <cstdlib>
#include <memory>

namespace host {

/// A device by position. Results are errno values; 0 is success. One thread at a time.
class BlockIo
{
public:
    virtual ~BlockIo() = default;

    /// @p buffer, @p size and @p offset are multiples of the sector size.
    virtual int read(char* buffer, qint64 size, qint64 offset) = 0;
    virtual int write(const char* buffer, qint64 size, qint64 offset) = 0;
    /// Writes cached data to the device and discards the cache, so that the next read comes from the device.
    virtual int flush() = 0;
};

/// Descriptors of one device for reading and for writing, which can be the same and must outlive the object.
/// Switches them to direct input and output where the device supports it, so that a write error is reported
/// with its position.
class DescriptorIo : public BlockIo
{
public:
    DescriptorIo(int reader, int writer);

    int read(char* buffer, qint64 size, qint64 offset) override;
    int write(const char* buffer, qint64 size, qint64 offset) override;
    int flush() override;

private:
    int reader_;
    int writer_;
};

/// Shared by the worker thread and the application thread.
struct WorkControl
{
    std::atomic<bool> cancelled{false};
    std::atomic<qint64> doneBytes{0};
};

/// Memory with the alignment that direct input and output requires.
class BlockBuffer
{
public:
    explicit BlockBuffer(qint64 size);

    char* data() { return data_.get(); }
    qint64 size() const { return size_; }

private:
    struct Free
    {
        void operator()(char* memory) const { std::free(memory); }
    };

    std::unique_ptr<char, Free> data_;
    qint64 size_;
};

/// The system's description of an errno value.
Text errorText(int error);

} // namespace host
