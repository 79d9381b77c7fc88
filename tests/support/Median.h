#pragma once

#include <QtCore/QtGlobal>

#include <algorithm>
#include <vector>

/// The median of a non-empty series. One slow round on a loaded machine does not change it.
inline qint64 median(std::vector<qint64> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
