// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace loadscope {

/// One row of a table. Texts are shown as they are.
struct TableRow {
    std::optional<std::size_t> color; ///< entry of the chart palette for the dot before the name
    QString name;
    QString detail;             ///< below the name
    std::vector<QString> cells; ///< beside the name: the numbers, then the text
    int level = 0;              ///< how many steps the name stands in
    /// What the numbers are, to be put in order by: one of each column, or one that stands for all of them.
    std::vector<std::int64_t> values{};

    /// Of a column of numbers. What has no number is less than all that have one.
    [[nodiscard]] std::int64_t value(std::size_t column) const {
        if (values.empty()) return std::numeric_limits<std::int64_t>::min();
        return values.size() == 1 ? values.front() : values.at(column - 1);
    }
};

/// The titles of a table's columns. A table whose names have no title has no header.
struct TableColumns {
    QString name;
    std::vector<QString> numbers;
    std::optional<QString> text; ///< of a last column, which shares the room with the names

    [[nodiscard]] std::size_t count() const { return 1 + numbers.size() + (text ? 1 : 0); }
    [[nodiscard]] QString title(std::size_t column) const {
        if (column == 0) return name;
        return column <= numbers.size() ? numbers[column - 1] : text.value_or(QString());
    }
    [[nodiscard]] bool isNumber(std::size_t column) const { return column > 0 && column <= numbers.size(); }
    [[nodiscard]] bool hasHeader() const { return !name.isEmpty(); }
};

/// How close together the things in a table are.
struct TableStyle {
    double rowInset = 8; ///< above and below what is in a row
    double columnGap = 20;
    bool wraps = true; ///< else a name too long for its line is cut at its end
    bool hasDividers = true;
};

} // namespace loadscope
