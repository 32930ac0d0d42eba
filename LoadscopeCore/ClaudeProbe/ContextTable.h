// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// The header of a Markdown table whose rows have a name, at most one group and a count of tokens, and the
/// reading of such rows. Names are not escaped by every version of the tool: a pipe in one makes more cells
/// than the header has columns, and the name takes them up.
class ContextTable {
public:
    struct Row {
        std::string name;
        std::string group;
        std::string count;
    };

    /// From the cells of the header line; nothing when it has no "Tokens" column or no column before it.
    [[nodiscard]] static std::optional<ContextTable> fromHeader(std::string_view line);

    /// Whether a line has as many cells as the header, so that its row does not go on in the next line.
    [[nodiscard]] bool isWhole(std::string_view line) const;

    /// The row that a line holds; nothing for the rule below the header and for a line without a name or a
    /// count.
    [[nodiscard]] std::optional<Row> row(std::string_view line) const;

private:
    std::size_t columns_ = 0;
    std::size_t name_ = 0;
    std::optional<std::size_t> group_;
    std::size_t count_ = 0;
};

} // namespace loadscope
