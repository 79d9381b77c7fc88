// The encoded lists of an inventory: their limit, and that they disappear with their inventory.
#include "plugin/ReplyCache.h"
#include "inventory/Inventory.h"

#include <gtest/gtest.h>

namespace {

TEST(ReplyCache, Limit_CountsAllReplies)
{
    ReplyCache cache;
    const auto half = std::make_shared<const std::string>(ReplyCache::kMaxBytes / 2, 'x');
    cache.insert({"A", 0}, half);
    cache.insert({"A", 0}, half);
    EXPECT_EQ(cache.byteCount(), ReplyCache::kMaxBytes / 2);
    cache.insert({"A", 1}, half);
    cache.insert({"B", 0}, std::make_shared<const std::string>("x"));
    EXPECT_EQ(cache.byteCount(), ReplyCache::kMaxBytes);
    EXPECT_EQ(cache.find({"A", 1}), half);
    EXPECT_EQ(cache.find({"B", 0}), nullptr);
}

TEST(ReplyCache, RefillWithTheSameDisks_DiscardsTheReplies)
{
    Inventory inventory;
    inventory.setDiskInfo(nullptr, {});
    const std::weak_ptr<ReplyCache> cache = inventory.replyCache();
    EXPECT_EQ(inventory.replyCache(), cache.lock());
    inventory.replyCache()->insert({"ListAllDisks", 0}, std::make_shared<const std::string>("x"));
    inventory.setDiskInfo(nullptr, {});
    EXPECT_TRUE(cache.expired());
    EXPECT_EQ(inventory.replyCache()->byteCount(), 0U);
}

TEST(ReplyCache, AddedPartitions_DiscardTheReplies)
{
    Inventory inventory;
    const std::weak_ptr<ReplyCache> cache = inventory.replyCache();
    inventory.parsePartitionInfo(nullptr, {QVariantMap{{"diskIndex", 1}}});
    EXPECT_TRUE(cache.expired());
}

// A cache that is discarded earlier could be followed by one with the old lists.
TEST(ReplyCache, Replies_AreDiscardedAfterTheChangeAndWithoutTheLock)
{
    Inventory inventory;
    std::size_t disks = 0;
    const auto discard = [&](const std::string* reply) {
        std::vector<DiskInfo> records;
        inventory.getDiskInfo(records);
        disks = records.size();
        delete reply;
    };
    inventory.replyCache()->insert({"ListAllDisks", 0}, ReplyCache::Bytes(new std::string("x"), discard));
    inventory.setDiskInfo(nullptr, {QVariantMap(), QVariantMap()});
    EXPECT_EQ(disks, 2U);
}

TEST(ReplyCache, ReplyThatIsBeingSent_OutlivesItsInventory)
{
    Inventory inventory;
    inventory.replyCache()->insert({"ListAllDisks", 0}, std::make_shared<const std::string>("bytes"));
    const ReplyCache::Bytes reply = inventory.replyCache()->find({"ListAllDisks", 0});
    inventory.setDiskInfo(nullptr, {});
    ASSERT_NE(reply, nullptr);
    EXPECT_EQ(*reply, "bytes");
}

} // namespace
