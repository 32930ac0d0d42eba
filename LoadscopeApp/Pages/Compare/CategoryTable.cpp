// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CategoryTable.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QKeyEvent>

#include <algorithm>

namespace loadscope {
namespace {

constexpr TableStyle compact{3.5, 12, false, false};
constexpr int usualWidth = 200;
constexpr int narrowest = 120;

std::vector<TableRow> rowsOf(const std::vector<CategoryTable::Line>& lines) {
    std::vector<TableRow> rows;
    rows.reserve(lines.size());
    for (const CategoryTable::Line& line : lines)
        rows.push_back({{}, line.name, {}, {line.number}});
    return rows;
}

} // namespace

CategoryTable::CategoryTable(const std::vector<Line>& lines, QWidget* parent)
    : DataTable(QAccessible::List, {{}, {QString()}, {}}, rowsOf(lines), compact, parent) {
    setAccessibleName(QStringLiteral("Categories"));
    setFocusPolicy(Qt::ClickFocus);
    setCursor(Qt::IBeamCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CategoryTable::sizeHint() const { return {usualWidth, heightForWidth(usualWidth)}; }

QSize CategoryTable::minimumSizeHint() const { return {narrowest, sizeHint().height()}; }

MarkedWidget::Mark CategoryTable::mark(std::size_t index) const {
    const TableRow& row = rows().at(index);
    const std::string spoken = TokenTexts::named(row.name.toStdString(), row.cells.front().toStdString());
    return {DisplayText::own(spoken), {}, QRectF(rowArea(index)), QAccessible::ListItem};
}

DataTable::Selected CategoryTable::selected(std::size_t row) const {
    if (!selection_) return {};
    const auto [first, last] = std::minmax(selection_->first, selection_->second);
    return {row >= first && row <= last};
}

QString CategoryTable::selectedText() const {
    QStringList lines;
    for (std::size_t row = 0; row < rows().size(); ++row) {
        if (!selection_ || selected(row).isWhole)
            lines.append(rows()[row].name + QLatin1Char('\t') + rows()[row].cells.front());
    }
    return lines.join(QLatin1Char('\n'));
}

void CategoryTable::select(std::size_t first, std::size_t last) {
    selection_ = {first, last};
    update();
}

void CategoryTable::selectTo(std::size_t row, QPointF) {
    if (selection_) select(selection_->first, row);
}

void CategoryTable::clearSelection() {
    selection_.reset();
    update();
}

void CategoryTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::SelectAll) && !rows().empty())
        select(0, rows().size() - 1);
    else
        DataTable::keyPressEvent(event);
}

void CategoryTable::focusOutEvent(QFocusEvent* event) {
    clearSelection();
    DataTable::focusOutEvent(event);
}

} // namespace loadscope
