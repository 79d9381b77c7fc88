#pragma once

#include "agent/Value.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zorcall {

/// The same item in two lists; null where it does not exist.
using Pair = std::pair<const Value*, const Value*>;

/// Gives the property by which an item is recognised. The empty string matches nothing.
using Key = std::function<std::string(const Value& value)>;

/// Pairs the items with equal keys, one key after another. A key that two items of one list share pairs
/// neither. The order is that of @p after; the items that are only in @p before follow.
std::vector<Pair> pairItems(const std::vector<const Value*>& before, const std::vector<const Value*>& after,
                            const std::vector<Key>& keys);

} // namespace zorcall
