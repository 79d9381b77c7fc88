#pragma once

#include <QtCore/QtGlobal>

#include <vector>

namespace host {

/// A piece of a bar, in its units of length.
struct BarPiece
{
    double x;
    double width;

    bool operator==(const BarPiece& other) const { return x == other.x && width == other.width; }
};

/// Divides a bar of @p width among pieces of the given sizes (bytes), @p gap apart: to scale, but none under
/// @p least; what the small ones get too much is taken from the others in proportion. Where even the least
/// widths do not fit, all are equal.
std::vector<BarPiece> layoutBar(const std::vector<qint64>& sizes, double width, double least, double gap);

} // namespace host
