#include "agent/Match.h"

#include <algorithm>
#include <map>

namespace zorcall {

namespace {

// The value is null if several items have the key.
std::map<std::string, const Value*> itemsByKey(const std::vector<const Value*>& items, const Key& key)
{
    std::map<std::string, const Value*> found;
    for (const Value* item : items) {
        const std::string name = key(*item);
        if (name.empty())
            continue;
        const auto [entry, isNew] = found.emplace(name, item);
        if (!isNew)
            entry->second = nullptr;
    }
    return found;
}

void erase(std::vector<const Value*>* items, const Value* item)
{
    items->erase(std::remove(items->begin(), items->end(), item), items->end());
}

} // namespace

std::vector<Pair> pairItems(const std::vector<const Value*>& before, const std::vector<const Value*>& after,
                            const std::vector<Key>& keys)
{
    std::vector<const Value*> unpairedBefore = before;
    std::vector<const Value*> unpairedAfter = after;
    std::map<const Value*, const Value*> partners;
    for (const Key& key : keys) {
        const auto candidates = itemsByKey(unpairedBefore, key);
        for (const auto& [name, now] : itemsByKey(unpairedAfter, key)) {
            const auto candidate = candidates.find(name);
            if (now == nullptr || candidate == candidates.end() || candidate->second == nullptr)
                continue;
            partners[now] = candidate->second;
            erase(&unpairedBefore, candidate->second);
            erase(&unpairedAfter, now);
        }
    }
    std::vector<Pair> pairs;
    pairs.reserve(after.size() + unpairedBefore.size());
    for (const Value* now : after)
        pairs.emplace_back(partners.count(now) != 0 ? partners[now] : nullptr, now);
    for (const Value* was : unpairedBefore)
        pairs.emplace_back(was, nullptr);
    return pairs;
}

} // namespace zorcall
