#pragma once

#include "plugin/ReplyCache.h"

#include "ZORNativePlugin.h"

/// The generated processor, with exceptions turned into those that the runtime handles, reports of each call
/// to the host (ConnectionReport), and list reads from the cache of a handler that is a ReplySource. The
/// replies have the same bytes as those of the generated processor.
class ToolProcessor : public ZORNativePluginProcessor
{
public:
    explicit ToolProcessor(const std::shared_ptr<ZORNativePluginIf>& handler);

    bool process(std::shared_ptr<apache::thrift::protocol::TProtocol> in,
                 std::shared_ptr<apache::thrift::protocol::TProtocol> out, void* context) override;

protected:
    bool dispatchCall(apache::thrift::protocol::TProtocol* in, apache::thrift::protocol::TProtocol* out,
                      const std::string& name, int32_t sequence, void* context) override;

private:
    class ListCall;

    /// Answers the call if it is a list read. Returns whether it did.
    bool answerList(const std::string& name, const ListCall& call);

    const ReplySource* source_; // the handler; null if it keeps no replies
};
