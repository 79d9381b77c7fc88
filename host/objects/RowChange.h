#pragma once

#include <algorithm>
#include <cstddef>

namespace host {

/// The difference between two lists: after @p first equal elements, @p removed elements are replaced by @p
/// inserted elements; the rest is equal.
struct RowChange
{
    int first = 0;
    int removed = 0;
    int inserted = 0;
};

/// The change from one list to another; @p same compares two elements.
template <class List, class Same> RowChange findRowChange(const List& from, const List& to, Same same)
{
    const std::size_t shorter = std::min(from.size(), to.size());
    std::size_t front = 0;
    while (front < shorter && same(from[front], to[front]))
        ++front;
    std::size_t back = 0;
    while (back < shorter - front && same(from[from.size() - 1 - back], to[to.size() - 1 - back]))
        ++back;
    return {static_cast<int>(front), static_cast<int>(from.size() - front - back),
            static_cast<int>(to.size() - front - back)};
}

} // namespace host
