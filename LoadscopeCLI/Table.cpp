// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Table.h"

#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <utility>

namespace loadscope {
namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowestCut = 10; ///< a column that has less room than this is not cut

/// The longest beginning of `text` that takes at most `width` columns, with "…" when something is missing.
std::string cut(const std::string& text, std::size_t width) {
    if (Text::terminalWidth(text) <= width) return text;
    std::size_t characters = std::min(Text::characterCount(text), width);
    while (characters > 0 && Text::terminalWidth(Text::prefix(text, characters)) + 1 > width)
        --characters;
    return std::string(Text::prefix(text, characters)) + "…";
}

} // namespace

Table::Cell::Cell(const std::string& content, TextStyle cellStyle)
    : text(Text::visible(content)), style(cellStyle) {}

Table::Cell Table::Cell::own(std::string text) {
    Cell cell("");
    cell.text = std::move(text);
    return cell;
}

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)) {
    std::vector<Cell> titles;
    for (const Column& column : columns_)
        titles.emplace_back(column.title, TextStyle::bold);
    rows_.push_back(std::move(titles));
}

void Table::addRow(std::vector<Cell> cells) {
    cells.resize(columns_.size(), Cell(""));
    rows_.push_back(std::move(cells));
}

std::string Table::text(const Terminal& terminal, bool cutsLastColumn) const {
    const std::size_t last = columns_.size() - 1;
    std::vector<std::size_t> widths(columns_.size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Text::terminalWidth(row[i].text));
    std::size_t before = 0;
    for (std::size_t i = 0; i < last; ++i)
        before += widths[i] + gap;
    const auto terminalWidth = terminal.width();
    const bool cuts = cutsLastColumn && terminalWidth && *terminalWidth >= before + narrowestCut;

    std::string result;
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string content =
                i == last && cuts ? cut(row[i].text, *terminalWidth - before) : row[i].text;
            const std::size_t width = Text::terminalWidth(content);
            const std::string padding(widths[i] - std::min(widths[i], width), ' ');
            const bool right = columns_[i].alignment == Alignment::right;
            if (right) result += padding;
            result += terminal.styled(row[i].style, content);
            if (i == last) break;
            if (!right) result += padding;
            result.append(gap, ' ');
        }
        result.erase(result.find_last_not_of(' ') + 1);
        result += '\n';
    }
    return result;
}

} // namespace loadscope
