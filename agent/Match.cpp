#include "agent/Match.h"

#include <algorithm>
#include <map>

namespace zorcall {

namespace {

// Null for a key of several items.
std::map<std::string, const Value*> itemsByKey(const std::vector<const Value*>& items, const Key& key)
{
    std::map<std::string, const Value*> found;
    for (const Value* item : items) {
        const std::string name = key(*item);
        if (name.empty())
            continue;
        const auto [place, isNew] = found.emplace(name, item);
        if (!isNew)
            place->second = nullptr;
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
    std::vector<const Value*> left = before;
    std::vector<const Value*> open = after;
    std::map<const Value*, const Value*> earlier;
    for (const Key& key : keys) {
        const auto candidates = itemsByKey(left, key);
        for (const auto& [name, now] : itemsByKey(open, key)) {
            const auto candidate = candidates.find(name);
            if (now == nullptr || candidate == candidates.end() || candidate->second == nullptr)
                continue;
            earlier[now] = candidate->second;
            erase(&left, candidate->second);
            erase(&open, now);
        }
    }
    std::vector<Pair> pairs;
    pairs.reserve(after.size() + left.size());
    for (const Value* now : after)
        pairs.emplace_back(earlier.count(now) != 0 ? earlier[now] : nullptr, now);
    for (const Value* was : left)
        pairs.emplace_back(was, nullptr);
    return pairs;
}

} // namespace zorcall
