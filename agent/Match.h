#pragma once

#include "agent/Value.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zorcall {

/// The same item in both lists; null if a list does not contain it.
using Pair = std::pair<const Value*, const Value*>;

/// Returns the property that identifies an item. The empty string matches no item.
using Key = std::function<std::string(const Value& value)>;

/// Pairs the items that have the same key; the keys are tried in order. If two items of a list have the same
/// key, this key pairs neither. The result has the order of @p after, followed by the items that are only in
/// @p before.
std::vector<Pair> pairItems(const std::vector<const Value*>& before, const std::vector<const Value*>& after,
                            const std::vector<Key>& keys);

} // namespace zorcall
