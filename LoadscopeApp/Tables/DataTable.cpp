// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/DataTable.h"

#include "LoadscopeApp/Tables/TableHeader.h"
#include "LoadscopeApp/Tables/TablePainter.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
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

/// The orders that tables were put in, by their names. They last as long as the program.
QHash<QString, TableSort>& keptSorts() {
    static QHash<QString, TableSort> kept;
    return kept;
}

} // namespace

DataTable::DataTable(QAccessible::Role role, TableColumns columns, std::vector<TableRow> rows,
                     TableStyle style, QWidget* parent)
    : MarkedWidget(role, parent),
      columns_(std::move(columns)),
      rows_(std::move(rows)),
      outline_(rows_),
      arrangement_(columns_, rows_, outline_),
      places_(columns_, rows_, style) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    if (!outline_.isFlat()) places_.show(arrangement_.shown());
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
    rearrange();
    AccessibleMarks::tellExpanded(this, static_cast<int>(markOf(row).value_or(0)));
    Q_EMIT openChanged(row, open);
}

void DataTable::rearrange() { showRows(arrangement_.shown()); }

void DataTable::setSortable(const QString& name) {
    if (!columns_.hasHeader() || rows_.empty()) return;
    sortName_ = name;
    header_ = new TableHeader(*this);
    const auto kept = keptSorts().constFind(name);
    if (kept == keptSorts().constEnd() || kept->column >= columns_.count()) return;
    arrangement_.setSort(*kept);
    rearrange();
}

void DataTable::forgetSorts() { keptSorts().clear(); }

void DataTable::setSort(std::optional<TableSort> sort) {
    if (sort == arrangement_.sort()) return;
    if (sort)
        keptSorts()[sortName_] = *sort;
    else
        keptSorts().remove(sortName_);
    arrangement_.setSort(sort);
    const Item active = this->active();
    rearrange();
    if (active) setActive(active);
    if (header_ != nullptr) header_->update();
    AccessibleMarks::tellReordered(this);
}

void DataTable::find(const QString& wanted) {
    if (wanted == arrangement_.wanted()) return;
    arrangement_.find(wanted);
    rearrange();
    AccessibleMarks::tellReordered(this);
}

MarkedWidget::Item DataTable::titleAt(double x) const {
    if (sortName_.isEmpty()) return {};
    for (std::size_t column = 0; column < columns_.count(); ++column) {
        // A click beside a short title is meant for it, and so is one in the gap before a number.
        const QRectF area =
            headerCell(column).adjusted(column == 0 ? 0 : -places_.style().columnGap, 0, 0, 0);
        if (x >= area.left() && x <= area.right()) return column;
    }
    return {};
}

void DataTable::sortAt(double x) {
    if (const Item title = titleAt(x)) setSort(arrangement_.nextSort(*title));
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
    if (header_ != nullptr) header_->follow();
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
        if (line == 0)
            return {columns_.title(column), sortText(column), headerCell(column), QAccessible::ColumnHeader};
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
    state.expanded = arrangement_.isOpen(*row);
    state.collapsed = !state.expanded;
}

bool DataTable::canToggleMark(int mark) const { return openingRowOf(mark).has_value(); }

void DataTable::toggleMark(int mark) {
    if (const Item row = openingRowOf(mark)) setOpen(*row, !outline_.isOpen(*row));
}

QString DataTable::sortText(std::size_t column) const {
    const auto& sort = arrangement_.sort();
    if (!sort || sort->column != column) return {};
    if (columns_.isNumber(column))
        return sort->isDescending ? QStringLiteral("largest first") : QStringLiteral("smallest first");
    return sort->isDescending ? QStringLiteral("from Z to A") : QStringLiteral("from A to Z");
}

bool DataTable::canOpenMark(int mark) const {
    const bool isTitle = columns_.hasHeader() && mark < static_cast<int>(columns_.count());
    return isTitle ? !sortName_.isEmpty() : MarkedWidget::canOpenMark(mark);
}

void DataTable::openMark(int mark) {
    const bool isTitle = columns_.hasHeader() && mark < static_cast<int>(columns_.count());
    if (!isTitle)
        MarkedWidget::openMark(mark);
    else if (!sortName_.isEmpty())
        setSort(arrangement_.nextSort(static_cast<std::size_t>(mark)));
}

int DataTable::currentMark() const {
    return activeTitle_ ? static_cast<int>(*activeTitle_) : MarkedWidget::currentMark();
}

void DataTable::setActiveTitle(Item title) {
    if (title == activeTitle_) return;
    activeTitle_ = title;
    update();
    if (!title) return;
    setActive(std::nullopt);
    bringIntoView(headerCell(*title));
    AccessibleMarks::tellCurrent(this);
}

bool DataTable::walkTitles(const QKeyEvent& event) {
    const int key = event.key();
    if (!activeTitle_) {
        const bool isFirst = active() && stopOf(*active()) == Item(0);
        if (key != Qt::Key_Up || sortName_.isEmpty() || !isFirst) return false;
        setActiveTitle(arrangement_.sort() ? arrangement_.sort()->column : 0);
        return true;
    }
    const bool isForward = key == (layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right);
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const std::size_t count = columns_.count();
        setActiveTitle((*activeTitle_ + (isForward ? 1 : count - 1)) % count);
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        setSort(arrangement_.nextSort(*activeTitle_));
        AccessibleMarks::tellCurrent(this);
    } else {
        setActiveTitle(std::nullopt);
        if (key == Qt::Key_Down && stopCount() > 0) walkTo(0);
        return key == Qt::Key_Down || key == Qt::Key_Escape;
    }
    return true;
}

void DataTable::showEvent(QShowEvent* event) {
    MarkedWidget::showEvent(event);
    if (header_ != nullptr) header_->follow();
}

void DataTable::focusOutEvent(QFocusEvent* event) {
    setActiveTitle(std::nullopt);
    MarkedWidget::focusOutEvent(event);
}

int DataTable::roomAbove() const {
    // The mark of a row is its name, which has room above.
    return header_ != nullptr ? static_cast<int>(places_.headerHeight() + places_.style().rowInset) : 0;
}

bool DataTable::isOnChevron(std::size_t row, QPointF point) const {
    if (!outline_.opens(row)) return false;
    const QRectF name = cell(row, 0);
    return layoutDirection() == Qt::RightToLeft ? point.x() > name.right() : point.x() < name.x();
}

bool DataTable::walkOutline(bool inward) {
    if (!active() || outline_.isFlat()) return false;
    const std::size_t row = *active();
    if (outline_.opens(row) && arrangement_.isOpen(row) != inward) {
        setOpen(row, inward);
        return true;
    }
    if (inward && !outline_.opens(row)) return false;
    const Item below = stopOf(row) ? Item(*stopOf(row) + 1) : Item();
    const Item above = outline_.parentOf(row) ? places_.positionOf(*outline_.parentOf(row)) : Item();
    const Item next = inward ? below : above;
    if (!next || *next >= stopCount()) return false;
    walkTo(*next);
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
    if (event->button() == Qt::LeftButton && !row && event->position().y() < places_.headerHeight())
        sortAt(event->position().x());
    else if (event->button() == Qt::LeftButton && row && isOnChevron(*row, event->position()))
        setOpen(*row, !arrangement_.isOpen(*row));
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
    } else if (walkTitles(*event)) {
        return;
    } else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        const Qt::Key inward = layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right;
        event->setAccepted(walkOutline(event->key() == inward)); // else a row has nothing beside it
    } else if (active() && outline_.opens(*active()) &&
               (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                event->key() == Qt::Key_Space)) {
        setOpen(*active(), !arrangement_.isOpen(*active()));
    } else {
        MarkedWidget::keyPressEvent(event);
    }
}

} // namespace loadscope
