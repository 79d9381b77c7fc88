#include "host/objects/BarLayout.h"

#include <algorithm>

namespace host {

namespace {

// Repeated until no piece is below the minimum, because each widened piece makes the others narrower.
std::vector<double> widthsOf(const std::vector<qint64>& sizes, double room, double least)
{
    std::vector<double> widths(sizes.size(), 0.0);
    std::vector<bool> isLeast(sizes.size(), false);
    for (bool again = true; again;) {
        again = false;
        double shared = room;
        double total = 0;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            shared -= isLeast[i] ? least : 0;
            total += isLeast[i] ? 0 : static_cast<double>(sizes[i]);
        }
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            widths[i] = isLeast[i] ? least : total > 0 ? shared * static_cast<double>(sizes[i]) / total : 0;
            if (widths[i] < least && !isLeast[i])
                isLeast[i] = again = true;
        }
    }
    return widths;
}

constexpr double kGapShare = 0.2;
constexpr double kLeastShare = 0.5;

} // namespace

std::vector<BarPiece> layoutBar(const std::vector<qint64>& sizes, double width, double least, double gap)
{
    if (sizes.empty())
        return {};
    const double count = static_cast<double>(sizes.size());
    if ((least + gap) * count - gap > width) {
        gap = std::min(gap, kGapShare * width / count);
        least = kLeastShare * (width - gap * (count - 1)) / count;
    }
    const double room = width - gap * (count - 1);
    const std::vector<double> widths = widthsOf(sizes, room, least);
    std::vector<BarPiece> pieces;
    double x = 0;
    for (const double piece : widths) {
        pieces.push_back({x, piece});
        x += piece + gap;
    }
    return pieces;
}

} // namespace host
