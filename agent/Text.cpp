#include "agent/Text.h"

#include <algorithm>
#include <numeric>

namespace zorcall {

namespace {

constexpr std::size_t kLineLimit = 1000;
constexpr std::size_t kNearlyAsNear = 2;

unsigned byteAt(const std::string& text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

std::string lowered(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// The range of the second byte shuts out overlong forms, surrogates and what lies above U+10FFFF.
struct LeadByte
{
    unsigned first, last;
    std::size_t length;
    unsigned secondFirst, secondLast;
};

constexpr LeadByte kLeadBytes[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

} // namespace

std::size_t utf8Length(const std::string& text, std::size_t position)
{
    const unsigned lead = byteAt(text, position);
    if (lead < 0x80)
        return 1;
    for (const LeadByte& row : kLeadBytes) {
        if (lead < row.first || lead > row.last)
            continue;
        if (position + row.length > text.size())
            return 0;
        const unsigned second = byteAt(text, position + 1);
        if (second < row.secondFirst || second > row.secondLast)
            return 0;
        for (std::size_t i = 2; i < row.length; ++i) {
            if ((byteAt(text, position + i) & 0xC0u) != 0x80u)
                return 0;
        }
        return row.length;
    }
    return 0;
}

bool isUtf8(const std::string& text)
{
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t length = utf8Length(text, position);
        if (length == 0)
            return false;
        position += length;
    }
    return true;
}

std::string oneLine(const std::string& text)
{
    std::string line;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t length = utf8Length(text, position);
        if (line.size() + length > kLineLimit)
            return line + "...";
        // Of the two-byte characters, those that begin with C2 and 80 to 9F are controls as well.
        const bool control = length == 0 ||
                             (length == 1 && (byteAt(text, position) < 0x20 || text[position] == 0x7F)) ||
                             (byteAt(text, position) == 0xC2 && byteAt(text, position + 1) < 0xA0);
        line += control ? std::string("?") : text.substr(position, length);
        position += length == 0 ? 1 : length;
    }
    return line;
}

std::string join(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string joined;
    for (const std::string& part : parts)
        joined += (joined.empty() ? std::string() : separator) + part;
    return joined;
}

std::vector<std::string> nearest(const std::string& name, const std::vector<std::string>& candidates)
{
    std::vector<std::pair<std::size_t, std::string>> ranked;
    ranked.reserve(candidates.size());
    for (const std::string& candidate : candidates)
        ranked.emplace_back(editDistance(lowered(name), lowered(candidate)), candidate);
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < ranked.size() && i < 3 && ranked[i].first <= ranked[0].first + kNearlyAsNear;
         ++i)
        names.push_back(ranked[i].second);
    return names;
}

std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[right.size()];
}

} // namespace zorcall
