#include "service/StreamTransport.h"

#include <thrift/transport/TTransportException.h>

#include <algorithm>

using apache::thrift::transport::TBufferedTransport;
using apache::thrift::transport::TTransport;
using apache::thrift::transport::TTransportException;

namespace {

constexpr std::size_t kPiece = 16 * 1024;

} // namespace

const std::uint8_t* StreamTransport::borrowSlow(std::uint8_t* buffer, std::uint32_t* length)
{
    checkReadBytesAvailable(*length);
    if (*length <= rBufSize_)
        return TBufferedTransport::borrowSlow(buffer, length);
    std::vector<std::uint8_t> bytes(rBase_, rBound_);
    while (bytes.size() < *length) {
        const std::size_t had = bytes.size();
        bytes.resize(std::min<std::size_t>(*length, had + kPiece));
        const std::uint32_t came =
            transport_->read(bytes.data() + had, static_cast<std::uint32_t>(bytes.size() - had));
        if (came == 0)
            throw TTransportException(TTransportException::END_OF_FILE,
                                      "the client has gone within a string");
        bytes.resize(had + came);
    }
    long_.swap(bytes);
    setReadBuffer(long_.data(), *length);
    return long_.data();
}

std::uint32_t StreamTransport::readEnd()
{
    resetConsumedMessageSize();
    if (isReadingLong() && rBase_ == rBound_)
        setReadBuffer(rBuf_.get(), 0);
    if (!isReadingLong())
        std::vector<std::uint8_t>().swap(long_);
    return TBufferedTransport::readEnd();
}

bool StreamTransport::isReadingLong() const
{
    return !long_.empty() && rBound_ == long_.data() + long_.size();
}

std::shared_ptr<TTransport> StreamTransportFactory::getTransport(std::shared_ptr<TTransport> connection)
{
    return std::make_shared<StreamTransport>(connection);
}
