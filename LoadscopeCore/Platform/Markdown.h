// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Markdown that is read by strangers' renderers: comments of pull requests, summaries of jobs. Thread-safe.
namespace loadscope::Markdown {

/// Text from outside on one line, in a form that no renderer takes for anything else: no markup, no HTML, no
/// mention, no link, no line break, no end of a table's cell; control characters are written out. What is
/// longer than `mostCharacters` is cut.
[[nodiscard]] std::string name(std::string_view text);

inline constexpr std::size_t mostCharacters = 200;

/// A sentence of our own with texts from outside in it: as `name`, but neither cut nor set as code.
[[nodiscard]] std::string sentence(std::string_view text);

struct Column {
    std::string title;
    bool isNumber = false;
};

/// A table with its rule; cells must be Markdown already. Ends with a line feed; without rows it is empty.
[[nodiscard]] std::string table(const std::vector<Column>& columns,
                                const std::vector<std::vector<std::string>>& rows);

/// A block that a reader unfolds. `content` is Markdown.
[[nodiscard]] std::string folded(std::string_view summary, std::string_view content);

} // namespace loadscope::Markdown
