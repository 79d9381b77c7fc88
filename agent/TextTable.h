#pragma once

#include "agent/Display.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace zorcall {

/// A table in aligned columns. Control characters of the cells become '?'.
class TextTable
{
public:
    struct Column
    {
        std::string title;
        bool right = false; ///< aligned to the right
    };

    explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// @p cells: one per column.
    void add(const std::vector<std::string>& cells, Style style = Style::Plain);
    /// Gives one cell of the last row a style of its own.
    void setStyle(std::size_t column, Style style) { rows_.back().cells.at(column).style = style; }
    void write(std::ostream& out, const Display& display) const;

private:
    struct Cell
    {
        std::string text;
        Style style = Style::Plain;
    };
    struct Row
    {
        std::vector<Cell> cells;
    };

    std::vector<std::size_t> widths(bool headers) const;

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

} // namespace zorcall
