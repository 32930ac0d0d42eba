// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/RowArrangement.h"

#include <algorithm>

namespace loadscope {

RowArrangement::RowArrangement(const TableColumns& columns, const std::vector<TableRow>& rows,
                               const RowOutline& outline)
    : columns_(columns), rows_(rows), outline_(outline), matchCount_(rows.size()) {}

void RowArrangement::setSort(std::optional<TableSort> sort) { sort_ = sort; }

std::optional<TableSort> RowArrangement::nextSort(std::size_t column) const {
    const bool largestFirst = columns_.isNumber(column);
    if (!sort_ || sort_->column != column) return TableSort{column, largestFirst};
    if (sort_->isDescending == largestFirst) return TableSort{column, !largestFirst};
    return std::nullopt;
}

void RowArrangement::find(const QString& wanted) {
    wanted_ = wanted;
    matchCount_ = rows_.size();
    matches_.clear();
    matchesBelow_.clear();
    if (wanted.isEmpty()) return;
    matches_.resize(rows_.size());
    matchesBelow_.resize(rows_.size());
    matchCount_ = 0;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (!rows_[row].name.contains(wanted, Qt::CaseInsensitive)) continue;
        matches_[row] = true;
        ++matchCount_;
        for (auto above = outline_.parentOf(row); above && !matchesBelow_[*above];
             above = outline_.parentOf(*above))
            matchesBelow_[*above] = true;
    }
}

bool RowArrangement::isOpen(std::size_t row) const {
    return outline_.isOpen(row) || (!matchesBelow_.empty() && matchesBelow_[row]);
}

bool RowArrangement::comesBefore(std::size_t left, std::size_t right) const {
    const std::size_t column = sort_->column;
    if (columns_.isNumber(column)) {
        const auto leftValue = rows_[left].value(column);
        const auto rightValue = rows_[right].value(column);
        return sort_->isDescending ? leftValue > rightValue : leftValue < rightValue;
    }
    const auto text = [&](std::size_t row) -> const QString& {
        return column == 0 ? rows_[row].name : rows_[row].cells.at(column - 1);
    };
    const int order = text(left).compare(text(right), Qt::CaseInsensitive);
    return sort_->isDescending ? order > 0 : order < 0;
}

std::vector<std::size_t> RowArrangement::siblings(std::size_t from, std::size_t end) const {
    std::vector<std::size_t> rows;
    for (std::size_t row = from; row < end; row = outline_.endOf(row))
        rows.push_back(row);
    if (sort_)
        std::ranges::stable_sort(
            rows, [this](std::size_t left, std::size_t right) { return comesBefore(left, right); });
    return rows;
}

void RowArrangement::add(std::vector<std::size_t>& shown, std::size_t from, std::size_t end,
                         bool isWithinMatch) const {
    for (const std::size_t row : siblings(from, end)) {
        const bool matches = matches_.empty() || isWithinMatch || matches_[row];
        if (!matches && !matchesBelow_[row]) continue;
        shown.push_back(row);
        // Below a row that was looked for stands all of it, unless more of it was looked for.
        const bool isWhole = matches && (matchesBelow_.empty() || !matchesBelow_[row]);
        if (isOpen(row)) add(shown, row + 1, outline_.endOf(row), isWhole);
    }
}

std::vector<std::size_t> RowArrangement::shown() const {
    std::vector<std::size_t> rows;
    add(rows, 0, rows_.size(), false);
    return rows;
}

} // namespace loadscope
