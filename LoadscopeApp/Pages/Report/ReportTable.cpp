// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTable.h"

#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int usualWidth = 420;
constexpr int narrowest = 200;

using Column = ReportTableLayout::Column;

} // namespace

ReportTable::ReportTable(ReportTableTitles titles, std::vector<ReportTableRow> rows, const QString& name,
                         QWidget* parent)
    : MarkedWidget(QAccessible::Table, parent), titles_(std::move(titles)), rows_(std::move(rows)) {
    setAccessibleName(name);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    AppTheme::bind(this, [this] {
        isMeasured_ = false;
        if (isVisible()) measure();
        updateGeometry();
        update();
    });
}

void ReportTable::measure() const {
    if (isMeasured_) return;
    isMeasured_ = true;
    const AppTheme& theme = AppTheme::current();
    layout_.measure(titles_, rows_,
                    {theme.font(TextStyle::caption, QFont::DemiBold), theme.font(TextStyle::body),
                     theme.font(TextStyle::caption)});
    if (isVisible()) layout_.setWidth(width());
}

int ReportTable::heightForWidth(int width) const {
    measure();
    return static_cast<int>(std::ceil(layout_.heightFor(width)));
}

QSize ReportTable::sizeHint() const { return {usualWidth, static_cast<int>(std::ceil(layout_.height()))}; }

QSize ReportTable::minimumSizeHint() const { return {narrowest, 0}; }

void ReportTable::resizeEvent(QResizeEvent*) {
    measure();
    layout_.setWidth(width());
}

std::size_t ReportTable::columns() const {
    if (titles_.name.isEmpty()) return 1;
    return titles_.source.isEmpty() ? ReportTableLayout::columnCount - 1 : ReportTableLayout::columnCount;
}

QRectF ReportTable::mirrored(const QRectF& area) const {
    if (layoutDirection() == Qt::LeftToRight) return area;
    return {width() - area.right(), area.y(), area.width(), area.height()};
}

QRectF ReportTable::cell(std::size_t row, Column column) const {
    measure();
    if (column == Column::name) return mirrored(layout_.nameBox(row));
    const ReportTableLayout::Span span = layout_.column(column);
    const QRectF line = layout_.row(row);
    return mirrored({span.left, line.y(), span.width, line.height()});
}

QString ReportTable::cellText(std::size_t row, Column column) const {
    const ReportTableRow& data = rows_.at(row);
    switch (column) {
    case Column::tokens:
        return data.tokens;
    case Column::share:
        return data.share;
    case Column::source:
        return data.source;
    case Column::name:
        break;
    }
    return data.name;
}

QRect ReportTable::rowArea(std::size_t row) const { return layout_.row(row).toAlignedRect(); }

int ReportTable::markCount() const {
    return static_cast<int>((rows_.size() + (titles_.name.isEmpty() ? 0 : 1)) * columns());
}

MarkedWidget::Item ReportTable::markOf(std::size_t item) const {
    return (item + (titles_.name.isEmpty() ? 0 : 1)) * columns();
}

MarkedWidget::Mark ReportTable::mark(std::size_t index) const {
    const auto column = static_cast<Column>(index % columns());
    std::size_t row = index / columns();
    if (!titles_.name.isEmpty()) {
        if (row == 0) {
            const QString* texts[] = {&titles_.name, &titles_.tokens, &titles_.share, &titles_.source};
            const ReportTableLayout::Span span = layout_.column(column);
            return {*texts[column],
                    {},
                    mirrored({span.left, 0, span.width, layout_.headerHeight()}),
                    QAccessible::ColumnHeader};
        }
        --row;
    }
    const QString detail = column == Column::name ? rows_.at(row).detail : QString();
    return {cellText(row, column), detail, cell(row, column), QAccessible::Cell};
}

void ReportTable::activeMoved(Item before, std::optional<QPointF>) {
    if (before && *before < rows_.size()) update(rowArea(*before));
    if (active() && *active() < rows_.size()) update(rowArea(*active()));
}

void ReportTable::shapeLine(QTextLayout& layout, double width) const {
    QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    // A path keeps its slashes in place beside words that are read from right to left.
    option.setTextDirection(Qt::LayoutDirectionAuto);
    layout.setFont(AppTheme::current().font(TextStyle::body));
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine().setLineWidth(width);
    layout.endLayout();
}

int ReportTable::cursorAt(std::size_t row, QPointF point) const {
    const QRectF box = cell(row, Column::name);
    const BrokenText text = layout_.broken(rows_[row].name, box.width());
    const auto last = static_cast<double>(text.lines.size()) - 1;
    const double line = std::clamp(std::floor((point.y() - box.y()) / layout_.bodyLineHeight()), 0.0, last);
    const BrokenText::Line& range = text.lines[static_cast<std::size_t>(line)];
    QTextLayout layout(text.shown.mid(range.start, range.length));
    shapeLine(layout, box.width());
    return range.start + layout.lineAt(0).xToCursor(point.x() - box.x());
}

void ReportTable::select(const Selection& selection) {
    if (selection_) update(rowArea(selection_->row));
    selection_ = selection;
    update(rowArea(selection.row));
}

QString ReportTable::selectedText() const {
    if (!selection_) return {};
    const QString& name = rows_[selection_->row].name;
    const BrokenText text = layout_.broken(name, cell(selection_->row, Column::name).width());
    const int from = text.original(std::min(selection_->from, selection_->to));
    return name.mid(from, text.original(std::max(selection_->from, selection_->to)) - from);
}

void ReportTable::copy() const {
    const QString text = selectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
    else if (active())
        QGuiApplication::clipboard()->setText(rows_[*active()].name);
}

void ReportTable::mousePressEvent(QMouseEvent* event) {
    const Item row = itemAt(event->position());
    if (event->button() != Qt::LeftButton || !row) return;
    const int cursor = cursorAt(*row, event->position());
    select({*row, cursor, cursor});
}

void ReportTable::mouseMoveEvent(QMouseEvent* event) {
    if (selection_ && event->buttons().testFlag(Qt::LeftButton))
        select({selection_->row, selection_->from, cursorAt(selection_->row, event->position())});
    const Item row = itemAt(event->position());
    const bool onName = row && cell(*row, Column::name).contains(event->position());
    setCursor(onName ? Qt::IBeamCursor : Qt::ArrowCursor);
    MarkedWidget::mouseMoveEvent(event);
}

void ReportTable::mouseDoubleClickEvent(QMouseEvent* event) {
    const Item row = itemAt(event->position());
    if (!row) return;
    const BrokenText text = layout_.broken(rows_[*row].name, cell(*row, Column::name).width());
    select({*row, 0, static_cast<int>(text.shown.size())});
}

void ReportTable::contextMenuEvent(QContextMenuEvent* event) {
    const bool byPointer = event->reason() == QContextMenuEvent::Mouse;
    const Item row = byPointer ? itemAt(event->pos()) : active();
    if (!row) {
        event->ignore();
        return;
    }
    Q_EMIT menuRequested(*row, byPointer ? event->globalPos() : mapToGlobal(rowArea(*row).center()));
}

bool ReportTable::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return MarkedWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const Item row = itemAt(help->pos());
    const bool isCut = row && layout_.broken(rows_[*row].name, cell(*row, Column::name).width()).hidden > 0;
    PlainToolTip::show(help->globalPos(), isCut ? rows_[*row].name : QString(), this);
    return true;
}

void ReportTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)
        event->ignore(); // a row has nothing beside it
    else
        MarkedWidget::keyPressEvent(event);
}

} // namespace loadscope
