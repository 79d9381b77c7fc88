#include "service/ToolProcessor.h"

#include "plugin/TsanAnnotations.h"
#include "service/ConnectionReport.h"
#include "service/StreamTransport.h"

#include <thrift/TApplicationException.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <exception>

namespace thrift = apache::thrift;
using thrift::protocol::TProtocol;
using thrift::transport::TMemoryBuffer;

namespace {

template <class Result> std::shared_ptr<const std::string> encoded(const Result& result)
{
    const auto buffer = std::make_shared<TMemoryBuffer>();
    thrift::protocol::TBinaryProtocolT<TMemoryBuffer> protocol(buffer);
    result.write(&protocol);
    return std::make_shared<const std::string>(buffer->getBufferAsString());
}

} // namespace

/// One call of a list read: reads its arguments and sends its reply.
class ToolProcessor::ListCall
{
public:
    ListCall(const ReplySource& source, TProtocol& in, TProtocol& out, const std::string& name,
             std::int32_t sequence)
        : source_(source), in_(in), out_(out), name_(name), sequence_(sequence)
    {
    }

    template <class Arguments> Arguments arguments() const
    {
        Arguments arguments;
        arguments.read(&in_);
        in_.readMessageEnd();
        in_.getTransport()->readEnd();
        return arguments;
    }

    /// Replies with the cached list, or with the one that @p read fills. An empty list is not kept, because a
    /// client could ask for any number of unknown disks.
    template <class Result, class Read> void reply(std::int32_t argument, const Read& read) const
    {
        const std::shared_ptr<ReplyCache> cache = source_.replyCache();
        ReplyCache::Bytes bytes = cache ? cache->find({name_, argument}) : nullptr;
        if (!bytes) {
            Result result;
            try {
                read(result.success);
            } catch (const std::exception& exception) {
                sendException(exception);
                return;
            }
            result.__isset.success = true;
            bytes = encoded(result);
            if (cache && !result.success.empty())
                cache->insert({name_, argument}, bytes);
        }
        out_.writeMessageBegin(name_, thrift::protocol::T_REPLY, sequence_);
        writeBody(*bytes);
        finish();
    }

private:
    void sendException(const std::exception& exception) const
    {
        const thrift::TApplicationException reply(exception.what());
        out_.writeMessageBegin(name_, thrift::protocol::T_EXCEPTION, sequence_);
        reply.write(&out_);
        finish();
    }
    void writeBody(const std::string& bytes) const
    {
        const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        const auto length = static_cast<std::uint32_t>(bytes.size());
        if (auto* stream = dynamic_cast<StreamTransport*>(out_.getTransport().get()))
            stream->writeBody(data, length);
        else
            out_.getTransport()->write(data, length);
    }
    void finish() const
    {
        out_.writeMessageEnd();
        out_.getTransport()->writeEnd();
        out_.getTransport()->flush();
    }

    const ReplySource& source_;
    TProtocol& in_;
    TProtocol& out_;
    const std::string& name_;
    const std::int32_t sequence_;
};

ToolProcessor::ToolProcessor(const std::shared_ptr<ZORNativePluginIf>& handler)
    : ZORNativePluginProcessor(handler), source_(dynamic_cast<const ReplySource*>(handler.get()))
{
}

// The runtime closes the connection for its own exceptions and terminates the process for any other. If
// memory runs out while a call is read, only that connection must be lost.
bool ToolProcessor::process(std::shared_ptr<TProtocol> in, std::shared_ptr<TProtocol> out, void* context)
{
    try {
        const bool goesOn = ZORNativePluginProcessor::process(in, out, context);
        TsanAnnotations::release();
        return goesOn;
    } catch (const thrift::TException&) {
        throw;
    } catch (const std::exception& exception) {
        throw thrift::TException(exception.what());
    }
}

bool ToolProcessor::dispatchCall(TProtocol* in, TProtocol* out, const std::string& name, int32_t sequence,
                                 void* context)
{
    const ConnectionReport::Call report(context, name);
    if (source_ != nullptr && answerList(name, ListCall(*source_, *in, *out, name, sequence)))
        return true;
    return ZORNativePluginProcessor::dispatchCall(in, out, name, sequence, context);
}

bool ToolProcessor::answerList(const std::string& name, const ListCall& call)
{
    if (name == "ListAllDisks") {
        call.arguments<ZORNativePlugin_ListAllDisks_args>();
        call.reply<ZORNativePlugin_ListAllDisks_result>(0, [&](auto& list) { iface_->ListAllDisks(list); });
    } else if (name == "GetAllPartitionInfo") {
        call.arguments<ZORNativePlugin_GetAllPartitionInfo_args>();
        call.reply<ZORNativePlugin_GetAllPartitionInfo_result>(
            0, [&](auto& list) { iface_->GetAllPartitionInfo(list); });
    } else if (name == "ListPartitionsOnDisk") {
        const int32_t disk = call.arguments<ZORNativePlugin_ListPartitionsOnDisk_args>().diskIndex;
        call.reply<ZORNativePlugin_ListPartitionsOnDisk_result>(
            disk, [&](auto& list) { iface_->ListPartitionsOnDisk(list, disk); });
    } else {
        return false;
    }
    return true;
}
