#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

/// Encoded replies to the list reads of one inventory: each list is encoded for the first call that reads it,
/// and later calls send the same bytes. Empty lists are not kept (ToolProcessor). A change of the inventory
/// replaces the cache, not its content.
///
/// Every member can be called on any thread. The lock is never held while a reply is encoded or sent.
class ReplyCache
{
public:
    /// Limit of byteCount. A list of 10,000 partitions has about 4 MB.
    static constexpr std::size_t kMaxBytes = std::size_t(32) * 1024 * 1024;

    using Bytes = std::shared_ptr<const std::string>;
    /// The tool's name and its integer argument; 0 for a tool without one.
    using Call = std::pair<std::string, std::int32_t>;

    /// The reply to @p call; null if it is not in the cache.
    Bytes find(const Call& call) const;
    /// Keeps @p reply, unless the limit would be exceeded or another thread was faster.
    void insert(const Call& call, const Bytes& reply);
    /// Size of all replies.
    std::size_t byteCount() const;

private:
    mutable std::mutex mutex_;
    std::map<Call, Bytes> replies_;
    std::size_t byteCount_ = 0;
};

/// A handler of tools whose list reads depend only on an inventory.
class ReplySource
{
public:
    virtual ~ReplySource() = default;

    /// The cache of the current inventory; null if replies must not be kept. A list that is read after this
    /// call is at least as new as the inventory of the cache.
    virtual std::shared_ptr<ReplyCache> replyCache() const = 0;
};
