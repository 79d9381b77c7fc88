#pragma once

#include <QtCore/QtGlobal>

#include <vector>

namespace host {

/// A piece of a bar, in the bar's units.
struct BarPiece
{
    double x;
    double width;

    bool operator==(const BarPiece& other) const { return x == other.x && width == other.width; }
};

/// Divides a bar of @p width to scale among pieces of the given sizes (bytes), @p gap apart and at least @p
/// least wide; the larger pieces shrink in proportion. If the minimum widths do not fit, the gaps take at
/// most a fifth of the bar, and each piece is at least half as wide as the average piece.
std::vector<BarPiece> layoutBar(const std::vector<qint64>& sizes, double width, double least, double gap);

} // namespace host
