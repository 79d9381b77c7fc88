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
    void add(const std::vector<std::string>& cells, Ink ink = Ink::Plain);
    /// Gives one cell of the last row an ink of its own.
    void paint(std::size_t column, Ink ink) { rows_.back().cells.at(column).ink = ink; }
    void write(std::ostream& out, const Display& display) const;

private:
    struct Cell
    {
        std::string text;
        Ink ink = Ink::Plain;
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
