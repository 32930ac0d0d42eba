// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/TableRow.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace loadscope {

/// Which rows of a table stand below which, by their levels, and which of them are open. At first none is.
class RowOutline {
public:
    RowOutline() = default;
    explicit RowOutline(const std::vector<TableRow>& rows);

    /// No row has another below it.
    [[nodiscard]] bool isFlat() const { return isFlat_; }
    /// The row has others below it.
    [[nodiscard]] bool opens(std::size_t row) const { return ends_[row] > row + 1; }
    [[nodiscard]] bool isOpen(std::size_t row) const { return open_[row]; }
    void setOpen(std::size_t row, bool open) { open_[row] = open; }
    /// The first row behind those that stand below this one.
    [[nodiscard]] std::size_t endOf(std::size_t row) const { return ends_[row]; }
    /// The row that has to be open for this one to be seen; nothing for one at the top.
    [[nodiscard]] std::optional<std::size_t> parentOf(std::size_t row) const { return parents_[row]; }

private:
    bool isFlat_ = true;
    std::vector<std::size_t> ends_; ///< the first row behind those that stand below each
    std::vector<std::optional<std::size_t>> parents_;
    std::vector<bool> open_;
};

} // namespace loadscope
