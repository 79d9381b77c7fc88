#include "agent/TextTable.h"

#include "agent/Text.h"

#include <QtCore/QVector>

#include <algorithm>
#include <ostream>

namespace zorcall {

namespace {

constexpr const char* kGap = "  ";

// In characters: counting bytes would misalign the columns after a label with an umlaut.
std::size_t widthOf(const std::string& text)
{
    return static_cast<std::size_t>(decodeUtf8(text).string.toUcs4().size());
}

} // namespace

void TextTable::add(const std::vector<std::string>& cells, Style style)
{
    Row row;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        row.cells.push_back({oneLine(cells.at(i)), style});
    rows_.push_back(row);
}

std::vector<std::size_t> TextTable::widths(bool headers) const
{
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::size_t width = headers ? columns_[i].title.size() : 0;
        for (const Row& row : rows_)
            width = std::max(width, widthOf(row.cells[i].text));
        widths.push_back(width);
    }
    return widths;
}

void TextTable::write(std::ostream& out, const Display& display) const
{
    const std::vector<std::size_t> width = widths(display.headers);
    const auto writeRow = [&](const Row& row) {
        std::string blanks;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const Cell& cell = row.cells[i];
            const std::string padding(width[i] - widthOf(cell.text), ' ');
            if (columns_[i].right)
                blanks += padding;
            // No trailing spaces.
            if (!cell.text.empty()) {
                out << blanks << styled(cell.text, cell.style, display);
                blanks.clear();
            }
            blanks += (columns_[i].right ? std::string() : padding) + kGap;
        }
        out << '\n';
    };
    if (display.headers) {
        Row titles;
        for (const Column& column : columns_)
            titles.cells.push_back({column.title, Style::Bold});
        writeRow(titles);
    }
    for (const Row& row : rows_)
        writeRow(row);
}

} // namespace zorcall
