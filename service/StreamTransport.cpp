#include "service/StreamTransport.h"

#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

#include <algorithm>

using apache::thrift::transport::TTransport;
using apache::thrift::transport::TTransportException;

namespace {

constexpr std::size_t kChunkBytes = std::size_t(16) * 1024;
// The runtime's default. Most calls fit into one read.
constexpr std::uint32_t kReadBufferBytes = 512;
// Most replies fit into one write to the socket.
constexpr std::uint32_t kWriteBufferBytes = 64 * 1024;

} // namespace

const std::uint8_t* StreamTransport::borrowSlow(std::uint8_t* buffer, std::uint32_t* length)
{
    checkReadBytesAvailable(*length);
    if (*length <= rBufSize_)
        return TBufferedTransport::borrowSlow(buffer, length);
    std::vector<std::uint8_t> bytes(rBase_, rBound_);
    while (bytes.size() < *length) {
        const std::size_t offset = bytes.size();
        bytes.resize(std::min<std::size_t>(*length, offset + kChunkBytes));
        const std::uint32_t received =
            transport_->read(bytes.data() + offset, static_cast<std::uint32_t>(bytes.size() - offset));
        if (received == 0)
            throw TTransportException(TTransportException::END_OF_FILE,
                                      "the client has gone within a string");
        bytes.resize(offset + received);
    }
    oversizeBuffer_.swap(bytes);
    setReadBuffer(oversizeBuffer_.data(), *length);
    return oversizeBuffer_.data();
}

std::uint32_t StreamTransport::readEnd()
{
    resetConsumedMessageSize();
    if (isReadingOversizeBuffer() && rBase_ == rBound_)
        setReadBuffer(rBuf_.get(), 0);
    if (!isReadingOversizeBuffer())
        std::vector<std::uint8_t>().swap(oversizeBuffer_);
    return TBufferedTransport::readEnd();
}

void StreamTransport::writeBody(const std::uint8_t* bytes, std::uint32_t length)
{
    auto* socket = dynamic_cast<ConnectionSocket*>(transport_.get());
    const auto room = static_cast<std::uint32_t>(wBound_ - wBase_);
    if (socket == nullptr || length <= room) {
        write(bytes, length);
        return;
    }
    const auto buffered = static_cast<std::uint32_t>(wBase_ - wBuf_.get());
    // Before the write: after an exception the buffer must be empty.
    wBase_ = wBuf_.get();
    socket->writeTogether(wBuf_.get(), buffered, bytes, length);
}

bool StreamTransport::isReadingOversizeBuffer() const
{
    return !oversizeBuffer_.empty() && rBound_ == oversizeBuffer_.data() + oversizeBuffer_.size();
}

std::shared_ptr<TTransport> StreamTransportFactory::getTransport(std::shared_ptr<TTransport> connection)
{
    return std::make_shared<StreamTransport>(connection, kReadBufferBytes, kWriteBufferBytes);
}
