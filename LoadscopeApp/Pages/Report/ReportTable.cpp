// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTable.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Tables/TablePainter.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {

ReportTable::ReportTable(TableColumns columns, std::vector<TableRow> rows, const QString& name,
                         QWidget* parent)
    : DataTable(QAccessible::Table, std::move(columns), std::move(rows), {}, parent) {
    setAccessibleName(name);
    setSortable(name);
}

int ReportTable::cursorAt(std::size_t row, QPointF point) const {
    const QRectF box = cell(row, 0);
    const BrokenText text = shownName(row);
    const auto last = static_cast<double>(text.lines.size()) - 1;
    const double line = std::clamp(std::floor((point.y() - box.y()) / places().bodyLineHeight()), 0.0, last);
    const BrokenText::Line& range = text.lines[static_cast<std::size_t>(line)];
    QTextLayout layout(text.shown.mid(range.start, range.length));
    TablePainter::shape(layout, *this, box.width());
    return range.start + layout.lineAt(0).xToCursor(point.x() - box.x());
}

void ReportTable::select(const Selection& selection) {
    if (selection_) update(rowArea(selection_->row));
    selection_ = selection;
    update(rowArea(selection.row));
}

void ReportTable::selectFrom(std::size_t row, QPointF point) {
    const int cursor = cursorAt(row, point);
    select({row, cursor, cursor});
}

void ReportTable::selectTo(std::size_t, QPointF point) {
    if (selection_) select({selection_->row, selection_->from, cursorAt(selection_->row, point)});
}

DataTable::Selected ReportTable::selected(std::size_t row) const {
    if (!selection_ || selection_->row != row) return {};
    const auto [from, to] = std::minmax(selection_->from, selection_->to);
    return {false, from, to};
}

QString ReportTable::selectedText() const {
    if (!selection_) return {};
    const BrokenText text = shownName(selection_->row);
    const Selected piece = selected(selection_->row);
    const int from = text.original(piece.from);
    return rows()[selection_->row].name.mid(from, text.original(piece.to) - from);
}

ReportTable::Item ReportTable::firstFoundStop() const {
    const QString& wanted = arrangement().wanted();
    for (std::size_t stop = 0; stop < stopCount(); ++stop)
        if (rows()[itemAtStop(stop)].name.contains(wanted, Qt::CaseInsensitive)) return stop;
    return {};
}

QRect ReportTable::firstFound() const {
    const Item stop = firstFoundStop();
    return stop ? rowArea(itemAtStop(*stop)) : QRect();
}

void ReportTable::goToFound() {
    setFocus(Qt::ShortcutFocusReason);
    if (const Item stop = firstFoundStop()) walkTo(*stop);
}

QString ReportTable::copiedText() const {
    const QString text = selectedText();
    return text.isEmpty() && active() ? rows()[*active()].name : text;
}

void ReportTable::paintEvent(QPaintEvent* event) {
    DataTable::paintEvent(event);
    if (!FocusRing::isWanted(this)) return;
    QPainter painter(this);
    FocusRing::paint(painter, rect(), Metrics::barRadius);
}

void ReportTable::mouseMoveEvent(QMouseEvent* event) {
    DataTable::mouseMoveEvent(event);
    const Item row = rowAt(event->position());
    const bool onName = row && cell(*row, 0).contains(event->position());
    const bool onTitle = event->position().y() < places().headerHeight() && titleAt(event->position().x());
    setCursor(onTitle ? Qt::PointingHandCursor : onName ? Qt::IBeamCursor : Qt::ArrowCursor);
}

void ReportTable::mouseDoubleClickEvent(QMouseEvent* event) {
    const Item row = rowAt(event->position());
    if (!openFile(row) && row) select({*row, 0, static_cast<int>(shownName(*row).shown.size())});
}

} // namespace loadscope
