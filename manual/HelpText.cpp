#include "manual/Manual.h"

#include <algorithm>
#include <sstream>

namespace manual {

namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kMaxColumn = 22;
constexpr std::size_t kMargin = 2;

// Breaks at spaces; every line after the first is indented. A longer word has a line of its own.
std::string wrapped(const std::string& text, std::size_t indent)
{
    std::istringstream words(text);
    std::string lines;
    std::size_t column = indent;
    for (std::string word; words >> word;) {
        const bool first = column == indent;
        if (!first && column + 1 + word.size() > kWidth) {
            lines += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (!first) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines + '\n';
}

std::size_t columnOf(const Section& section)
{
    std::size_t column = 0;
    for (const Row& row : section.rows)
        column = std::max(column, kMargin + row.term.size() + 2);
    return std::min(column, kMaxColumn);
}

std::string rowText(const Row& row, std::size_t column)
{
    const std::string term = std::string(kMargin, ' ') + row.term;
    const bool fits = term.size() + 2 <= column;
    const std::string gap = fits ? std::string(column - term.size(), ' ') : '\n' + std::string(column, ' ');
    return term + gap + wrapped(row.text, column);
}

} // namespace

std::string helpText(const Manual& manual)
{
    std::string text;
    for (const std::string& line : manual.usage)
        text += (text.empty() ? "usage: " : "       ") + manual.program + ' ' + line + '\n';
    text += '\n' + wrapped(manual.description, 0);
    for (const Section& section : manual.sections) {
        text += '\n' + section.title + ":\n";
        for (const Row& row : section.rows)
            text += rowText(row, columnOf(section));
    }
    return text;
}

} // namespace manual
