// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/DataTable.h"

#include "LoadscopeApp/Tables/TablePainter.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int usualWidth = 420;
constexpr int narrowest = 200;

} // namespace

DataTable::DataTable(QAccessible::Role role, TableColumns columns, std::vector<TableRow> rows,
                     TableStyle style, QWidget* parent)
    : MarkedWidget(role, parent),
      columns_(std::move(columns)),
      rows_(std::move(rows)),
      outline_(rows_),
      places_(columns_, rows_, style) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    if (!outline_.isFlat()) places_.show(outline_.visible());
    AppTheme::bind(this, [this] {
        isMeasured_ = false;
        if (isVisible()) measure();
        updateGeometry();
        update();
    });
}

void DataTable::measure() const {
    if (isMeasured_) return;
    isMeasured_ = true;
    const AppTheme& theme = AppTheme::current();
    places_.measure({theme.font(TextStyle::caption, QFont::DemiBold), theme.font(TextStyle::body),
                     theme.font(TextStyle::caption)});
    if (isVisible()) places_.setWidth(width());
}

void DataTable::showRows(std::vector<std::size_t> rows) {
    places_.show(std::move(rows));
    if (isMeasured_) places_.setWidth(width());
    clearSelection();
    if (active() && !places_.positionOf(*active())) setActive(std::nullopt);
    updateGeometry();
    update();
}

void DataTable::setOpen(std::size_t row, bool open) {
    if (!outline_.opens(row) || outline_.isOpen(row) == open) return;
    outline_.setOpen(row, open);
    showRows(outline_.visible());
    AccessibleMarks::tellExpanded(this, static_cast<int>(markOf(row).value_or(0)));
    Q_EMIT openChanged(row, open);
}

int DataTable::heightForWidth(int width) const {
    measure();
    return static_cast<int>(std::ceil(places_.heightFor(width)));
}

QSize DataTable::sizeHint() const { return {usualWidth, static_cast<int>(std::ceil(places_.height()))}; }

QSize DataTable::minimumSizeHint() const { return {narrowest, 0}; }

void DataTable::resizeEvent(QResizeEvent*) {
    measure();
    places_.setWidth(width());
}

QRectF DataTable::mirrored(const QRectF& area) const {
    if (layoutDirection() == Qt::LeftToRight) return area;
    return {width() - area.right(), area.y(), area.width(), area.height()};
}

QRect DataTable::rowArea(std::size_t row) const { return places_.row(row).toAlignedRect(); }

QRectF DataTable::cell(std::size_t row, std::size_t column) const {
    measure();
    if (column == 0) return mirrored(places_.nameBox(row));
    const TableLayout::Span span = places_.column(column);
    const QRectF line = places_.row(row);
    return mirrored({span.left, line.y(), span.width, line.height()});
}

QRectF DataTable::headerCell(std::size_t column) const {
    const TableLayout::Span span = places_.column(column);
    return mirrored({span.left, 0, span.width, places_.headerHeight()});
}

int DataTable::markCount() const {
    return static_cast<int>((places_.shown().size() + (columns_.hasHeader() ? 1 : 0)) * columns_.count());
}

MarkedWidget::Item DataTable::markOf(std::size_t item) const {
    const Item position = places_.positionOf(item);
    if (!position) return {};
    return (*position + (columns_.hasHeader() ? 1 : 0)) * columns_.count();
}

MarkedWidget::Mark DataTable::mark(std::size_t index) const {
    const std::size_t column = index % columns_.count();
    std::size_t line = index / columns_.count();
    if (columns_.hasHeader()) {
        if (line == 0) return {columns_.title(column), {}, headerCell(column), QAccessible::ColumnHeader};
        --line;
    }
    const std::size_t row = places_.shown().at(line);
    const TableRow& data = rows_[row];
    if (column == 0) return {data.name, data.detail, cell(row, 0), QAccessible::Cell};
    return {data.cells.at(column - 1), {}, cell(row, column), QAccessible::Cell};
}

MarkedWidget::Item DataTable::openingRowOf(int mark) const {
    const Item row = itemOf(static_cast<std::size_t>(mark));
    return row && outline_.opens(*row) ? row : Item();
}

MarkedWidget::Item DataTable::itemOf(std::size_t mark) const {
    const std::size_t line = mark / columns_.count();
    const std::size_t header = columns_.hasHeader() ? 1 : 0;
    if (mark % columns_.count() != 0 || line < header) return {}; // the name stands for its row
    if (line - header >= places_.shown().size()) return {};
    return places_.shown()[line - header];
}

MarkSubject DataTable::subject(std::size_t item) const {
    const TableRow& row = rows_.at(item);
    return {row.name, row.cells.empty() ? QString() : row.cells.front()};
}

void DataTable::describeMark(int mark, QAccessible::State& state) const {
    const Item row = openingRowOf(mark);
    if (!row) return;
    state.expandable = true;
    state.expanded = outline_.isOpen(*row);
    state.collapsed = !state.expanded;
}

bool DataTable::canToggleMark(int mark) const { return openingRowOf(mark).has_value(); }

void DataTable::toggleMark(int mark) {
    if (const Item row = openingRowOf(mark)) setOpen(*row, !outline_.isOpen(*row));
}

bool DataTable::isOnChevron(std::size_t row, QPointF point) const {
    if (!outline_.opens(row)) return false;
    const QRectF name = cell(row, 0);
    return layoutDirection() == Qt::RightToLeft ? point.x() > name.right() : point.x() < name.x();
}

bool DataTable::walkOutline(bool inward) {
    if (!active() || outline_.isFlat()) return false;
    const std::size_t row = *active();
    if (outline_.opens(row) && outline_.isOpen(row) != inward) {
        setOpen(row, inward);
        return true;
    }
    const Item next = inward ? Item(row + 1) : outline_.parentOf(row);
    if (!next || (inward && !outline_.opens(row))) return false;
    walkTo(*places_.positionOf(*next));
    return true;
}

void DataTable::activeMoved(Item before, std::optional<QPointF>) {
    if (before) update(rowArea(*before));
    if (active()) update(rowArea(*active()));
}

BrokenText DataTable::shownName(std::size_t row) const {
    return places_.broken(rows_[row].name, cell(row, 0).width());
}

MarkedWidget::Item DataTable::rowAt(QPointF point) const {
    const Item position = places_.positionAt(point.y());
    return position ? Item(places_.shown()[*position]) : std::nullopt;
}

void DataTable::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    TablePainter(painter, *this).paint(event->rect());
}

void DataTable::mousePressEvent(QMouseEvent* event) {
    const Item row = rowAt(event->position());
    if (event->button() == Qt::LeftButton && row && isOnChevron(*row, event->position()))
        setOpen(*row, !outline_.isOpen(*row));
    else if (event->button() == Qt::LeftButton && row)
        selectFrom(*row, event->position());
    else
        MarkedWidget::mousePressEvent(event);
}

void DataTable::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton) && places_.height() > places_.headerHeight()) {
        const double y = std::clamp(event->position().y(), places_.headerHeight(), places_.height() - 1);
        if (const Item row = rowAt({0, y})) selectTo(*row, event->position());
    }
    MarkedWidget::mouseMoveEvent(event);
}

bool DataTable::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return MarkedWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const Item row = rowAt(help->pos());
    const bool isCut = row && shownName(*row).hidden > 0;
    PlainToolTip::show(help->globalPos(), isCut ? rows_[*row].name : QString(), this);
    return true;
}

void DataTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        const QString text = copiedText();
        if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
    } else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        const Qt::Key inward = layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right;
        event->setAccepted(walkOutline(event->key() == inward)); // else a row has nothing beside it
    } else if (active() && outline_.opens(*active()) &&
               (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                event->key() == Qt::Key_Space)) {
        setOpen(*active(), !outline_.isOpen(*active()));
    } else {
        MarkedWidget::keyPressEvent(event);
    }
}

} // namespace loadscope
