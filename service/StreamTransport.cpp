#include "service/StreamTransport.h"

using apache::thrift::transport::TBufferedTransport;
using apache::thrift::transport::TTransport;

const std::uint8_t* StreamTransport::borrowSlow(std::uint8_t* buffer, std::uint32_t* length)
{
    checkReadBytesAvailable(*length);
    return TBufferedTransport::borrowSlow(buffer, length);
}

std::uint32_t StreamTransport::readEnd()
{
    resetConsumedMessageSize();
    return TBufferedTransport::readEnd();
}

std::shared_ptr<TTransport> StreamTransportFactory::getTransport(std::shared_ptr<TTransport> connection)
{
    return std::make_shared<StreamTransport>(connection);
}
