// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"

#include <cstddef>
#include <string>
#include <vector>

namespace loadscope {

/// Rows under a header in aligned columns. Widths are those that a terminal shows, so wide characters and
/// combining marks keep the columns straight; control characters of cells are made visible.
class Table {
public:
    enum class Alignment { left, right };
    struct Column {
        std::string title;
        Alignment alignment = Alignment::left;
    };
    struct Cell {
        Cell(const std::string& content, TextStyle style = TextStyle::plain);
        Cell(const char* text) : Cell(std::string(text)) {}

        /// Text of our own, whose mark of direction a terminal is to obey.
        static Cell own(std::string text);

        std::string text; ///< visible
        TextStyle style;
    };

    explicit Table(std::vector<Column> columns);

    /// One cell per column.
    void addRow(std::vector<Cell> cells);

    /// The lines of the table, each ended by a line feed. On a terminal with a known width the last column
    /// is cut to what is left of it when `cutsLastColumn`.
    [[nodiscard]] std::string text(const Terminal& terminal, bool cutsLastColumn = false) const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> rows_;
};

} // namespace loadscope
