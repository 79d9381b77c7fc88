#include "plugin/ReplyCache.h"

ReplyCache::Bytes ReplyCache::find(const Call& call) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = replies_.find(call);
    return found == replies_.end() ? nullptr : found->second;
}

void ReplyCache::insert(const Call& call, const Bytes& reply)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (reply->size() > kMaxBytes - byteCount_)
        return;
    if (replies_.emplace(call, reply).second)
        byteCount_ += reply->size();
}

std::size_t ReplyCache::byteCount() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return byteCount_;
}
