// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/RowOutline.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace loadscope {

/// By which column the rows of a table are in order.
struct TableSort {
    std::size_t column = 0;
    bool isDescending = false;

    bool operator==(const TableSort&) const = default;
};

/// Which rows of a table are shown, and in which order: those that are open, or those whose names have a text
/// in them with what they stand below; as they were given, or sorted among those that stand below the same
/// row. Numbers are compared by their values, texts without regard to case; of equals the first given stays
/// first.
class RowArrangement {
public:
    /// All three must outlive it.
    RowArrangement(const TableColumns& columns, const std::vector<TableRow>& rows, const RowOutline& outline);

    [[nodiscard]] const std::optional<TableSort>& sort() const { return sort_; }
    void setSort(std::optional<TableSort> sort);
    /// What a click on the title of a column changes the order to: the one that is looked for most, the
    /// other, then as given.
    [[nodiscard]] std::optional<TableSort> nextSort(std::size_t column) const;

    [[nodiscard]] const QString& wanted() const { return wanted_; }
    /// Looks for a text in the names; an empty one shows all.
    void find(const QString& wanted);
    /// How many names have it in them: all when nothing is looked for.
    [[nodiscard]] std::size_t matchCount() const { return matchCount_; }

    /// What stands below the row can be seen, because it was opened or because it was looked for.
    [[nodiscard]] bool isOpen(std::size_t row) const;
    [[nodiscard]] std::vector<std::size_t> shown() const;

private:
    [[nodiscard]] std::vector<std::size_t> siblings(std::size_t from, std::size_t end) const;
    [[nodiscard]] bool comesBefore(std::size_t left, std::size_t right) const;
    void add(std::vector<std::size_t>& shown, std::size_t from, std::size_t end, bool isWithinMatch) const;

    const TableColumns& columns_;
    const std::vector<TableRow>& rows_;
    const RowOutline& outline_;
    std::optional<TableSort> sort_;
    QString wanted_;
    std::size_t matchCount_;
    std::vector<bool> matches_;      ///< of each row; empty when nothing is looked for
    std::vector<bool> matchesBelow_; ///< likewise
};

} // namespace loadscope
