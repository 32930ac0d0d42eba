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

/// The cells of a line, as they are written. A bar behind a backslash belongs to its cell when `isEscaped`.
std::vector<std::string_view> cellsOf(std::string_view line, bool isEscaped) {
    constexpr std::size_t usualCells = 4;
    std::vector<std::string_view> cells;
    cells.reserve(usualCells);
    const std::string_view text = inner(line);
    std::size_t begin = 0;
    for (std::size_t bar = text.find('|');; bar = text.find('|', bar + 1)) {
        const bool isLast = bar == std::string_view::npos;
        if (!isLast && isEscaped && bar > 0 && text[bar - 1] == '\\') continue;
        cells.push_back(Text::trimmedHorizontally(text.substr(begin, isLast ? bar : bar - begin)));
        if (isLast) return cells;
        begin = bar + 1;
    }
}

/// What a cell says, without the backslashes before its bars when it is escaped.
std::string textOf(std::string_view cell, bool isEscaped) {
    std::string text;
    for (std::size_t end = 0; isEscaped && (end = cell.find("\\|")) != std::string_view::npos;) {
        text.append(cell.substr(0, end)) += '|';
        cell.remove_prefix(end + 2);
    }
    return text.append(cell);
}

bool isRule(const std::vector<std::string_view>& cells) {
    return std::ranges::all_of(
        cells, [](std::string_view cell) { return cell.find_first_not_of("-: ") == std::string_view::npos; });
}

} // namespace

std::optional<ContextTable> ContextTable::fromHeader(std::string_view line) {
    std::vector<std::string> titles;
    for (const std::string_view cell : cellsOf(line, false))
        titles.push_back(Text::lowercased(cell));
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
    bool isEscaped = true;
    std::vector<std::string_view> cells = cellsOf(line, isEscaped);
    if (cells.size() < columns_) { // a name that ends in a backslash is no escaped bar
        isEscaped = false;
        cells = cellsOf(line, isEscaped);
    }
    if (cells.size() < columns_ || isRule(cells)) return std::nullopt;
    const std::size_t surplus = cells.size() - columns_;
    const auto cell = [&](std::size_t column) {
        return textOf(cells[column > name_ ? column + surplus : column], isEscaped);
    };
    Row row{cell(name_), group_ ? cell(*group_) : std::string(), cell(count_)};
    for (std::size_t i = 1; i <= surplus; ++i)
        row.name += '|' + textOf(cells[name_ + i], isEscaped);
    if (row.name.empty() || row.count.empty()) return std::nullopt;
    return row;
}

} // namespace loadscope
