// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextTable.h"

#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>

namespace loadscope {
namespace {

constexpr std::array<std::string_view, 4> groupTitles{"server", "source", "type", "plugin"};

/// The text between the bars at both ends of a line.
std::string_view inner(std::string_view line) {
    line = Text::trimmedHorizontally(line);
    if (line.starts_with('|')) line.remove_prefix(1);
    if (line.ends_with('|') && !line.ends_with("\\|")) line.remove_suffix(1);
    return line;
}

/// The cells of a line. A bar behind a backslash belongs to its cell when `unescapes`.
std::vector<std::string> cellsOf(std::string_view line, bool unescapes) {
    std::vector<std::string> cells(1);
    const std::string_view text = inner(line);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (unescapes && text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '|') {
            cells.back() += '|';
            ++i;
        } else if (text[i] == '|') {
            cells.emplace_back();
        } else {
            cells.back() += text[i];
        }
    }
    for (std::string& cell : cells)
        cell = std::string(Text::trimmedHorizontally(cell));
    return cells;
}

bool isRule(const std::vector<std::string>& cells) {
    return std::ranges::all_of(
        cells, [](const std::string& cell) { return cell.find_first_not_of("-: ") == std::string::npos; });
}

/// The cells with as many of them joined, from `first` on, as are too many.
void joinSurplus(std::vector<std::string>& cells, std::size_t first, std::size_t columns) {
    const std::size_t surplus = cells.size() - columns;
    for (std::size_t i = 1; i <= surplus; ++i)
        cells[first] += '|' + cells[first + i];
    const auto begin = cells.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    cells.erase(begin, begin + static_cast<std::ptrdiff_t>(surplus));
}

} // namespace

std::optional<ContextTable> ContextTable::fromHeader(std::string_view line) {
    std::vector<std::string> titles = cellsOf(line, false);
    for (std::string& title : titles)
        title = Text::lowercased(title);
    ContextTable table;
    table.columns_ = titles.size();
    table.count_ = static_cast<std::size_t>(std::ranges::find(titles, "tokens") - titles.begin());
    if (table.count_ == 0 || table.count_ == titles.size()) return std::nullopt;

    const auto isGroup = [](const std::string& title) {
        return std::ranges::find(groupTitles, title) != groupTitles.end();
    };
    const auto texts = titles.begin() + static_cast<std::ptrdiff_t>(table.count_);
    const auto name = std::find_if_not(titles.begin(), texts, isGroup);
    if (name != texts) table.name_ = static_cast<std::size_t>(name - titles.begin());
    for (std::size_t i = 0; i < table.count_ && !table.group_; ++i) {
        if (i != table.name_ && isGroup(titles[i])) table.group_ = i;
    }
    if (!table.group_ && table.count_ > 1) table.group_ = table.name_ == 0 ? 1 : 0;
    return table;
}

bool ContextTable::isWhole(std::string_view line) const {
    const auto bars = static_cast<std::size_t>(std::ranges::count(line, '|'));
    return bars >= columns_;
}

std::optional<ContextTable::Row> ContextTable::row(std::string_view line) const {
    std::vector<std::string> cells = cellsOf(line, true);
    // A name that ends in a backslash is no escaped bar.
    if (cells.size() < columns_) cells = cellsOf(line, false);
    if (isRule(cells)) return std::nullopt;
    if (cells.size() > columns_) joinSurplus(cells, name_, columns_);
    if (cells.size() < columns_) return std::nullopt;
    if (cells[name_].empty() || cells[count_].empty()) return std::nullopt;
    return Row{cells[name_], group_ ? cells[*group_] : std::string(), cells[count_]};
}

} // namespace loadscope
