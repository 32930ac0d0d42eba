// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/RowButtonList.h"

#include "LoadscopeApp/Controls/RowButton.h"

#include <algorithm>

namespace loadscope {

bool RowButtonList::isFound(const RowButton& row) const {
    return wanted_.isEmpty() || row.subject().name.contains(wanted_, Qt::CaseInsensitive);
}

void RowButtonList::findRows(const QString& wanted) {
    if (wanted == wanted_) return;
    wanted_ = wanted;
    for (RowButton* row : rows_)
        row->setVisible(isFound(*row));
}

std::size_t RowButtonList::foundCount() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(rows_, [this](const RowButton* row) { return isFound(*row); }));
}

RowButton* RowButtonList::first() const {
    const auto row = std::ranges::find_if(rows_, [this](const RowButton* row) { return isFound(*row); });
    return row == rows_.end() ? nullptr : *row;
}

QRect RowButtonList::firstFound() const {
    const RowButton* row = first();
    return row == nullptr ? QRect() : QRect(row->mapTo(&card_, QPoint()), row->size());
}

void RowButtonList::goToFound() {
    if (RowButton* row = first()) row->setFocus(Qt::ShortcutFocusReason);
}

} // namespace loadscope
