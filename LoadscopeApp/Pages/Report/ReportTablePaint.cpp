// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/AppTheme.h"
#include "LoadscopeApp/Components/FocusRing.h"
#include "LoadscopeApp/Components/NumberLabel.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/ThemeMetrics.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double dotSize = 8;

using Column = ReportTableLayout::Column;

} // namespace

void ReportTable::paintEvent(QPaintEvent* event) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect area = event->rect();
    if (area.top() < layout_.headerHeight()) paintHeader(painter);
    const Item first = layout_.rowAt(std::max<double>(area.top(), layout_.headerHeight()));
    for (std::size_t row = first.value_or(rows_.size()); row < rows_.size(); ++row) {
        const QRectF line = layout_.row(row);
        if (line.top() > area.bottom()) break;
        if (active() == Item(row)) painter.fillRect(line, theme.color(ThemeColor::muted));
        paintRow(painter, row);
        if (row + 1 < rows_.size())
            painter.fillRect(QRectF(0, std::floor(line.bottom()) - 1, width(), 1),
                             theme.color(ThemeColor::divider));
    }
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::barRadius);
}

void ReportTable::paintHeader(QPainter& painter) const {
    const AppTheme& theme = AppTheme::current();
    painter.setFont(theme.font(TextStyle::caption, QFont::DemiBold));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    for (std::size_t index = 0; index < columns(); ++index) {
        const Mark title = mark(index);
        const bool isNumber = index == Column::tokens || index == Column::share;
        painter.drawText(title.area,
                         Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip |
                             (isNumber ? Qt::AlignTrailing : Qt::AlignLeading),
                         title.name);
    }
    painter.fillRect(QRectF(0, layout_.headerHeight() - 1, width(), 1), theme.color(ThemeColor::divider));
}

void ReportTable::paintRow(QPainter& painter, std::size_t row) const {
    const AppTheme& theme = AppTheme::current();
    paintName(painter, row);
    if (columns() == 1) return;
    paintNumber(painter, row, Column::tokens);
    paintNumber(painter, row, Column::share);
    if (titles_.source.isEmpty()) return;
    const QRectF box = cell(row, Column::source);
    const auto text = wrapped(rows_[row].source, box.width());
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const double height = text->lineCount() * layout_.bodyLineHeight();
    text->draw(&painter, {box.x(), box.y() + (box.height() - height) / 2});
}

void ReportTable::paintName(QPainter& painter, std::size_t row) const {
    const AppTheme& theme = AppTheme::current();
    const ReportTableRow& data = rows_[row];
    const QRectF box = cell(row, Column::name);
    if (data.color) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.chartColor(*data.color));
        const double left = layoutDirection() == Qt::RightToLeft ? box.right() + layout_.dotInset() - dotSize
                                                                 : box.x() - layout_.dotInset();
        painter.drawEllipse(
            QRectF(left, box.y() + (layout_.bodyLineHeight() - dotSize) / 2, dotSize, dotSize));
    }
    QVector<QTextLayout::FormatRange> marked;
    if (selection_ && selection_->row == row && selection_->from != selection_->to) {
        QTextLayout::FormatRange range;
        range.start = std::min(selection_->from, selection_->to);
        range.length = std::abs(selection_->to - selection_->from);
        range.format.setBackground(theme.color(ThemeColor::accent));
        range.format.setForeground(theme.color(ThemeColor::onAccent));
        marked.append(range);
    }
    painter.setPen(theme.color(ThemeColor::primaryText));
    wrapped(data.name, box.width())->draw(&painter, box.topLeft(), marked);
    if (data.detail.isEmpty()) return;
    painter.setFont(theme.font(TextStyle::caption));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const double height = painter.fontMetrics().height();
    const QString shown =
        painter.fontMetrics().elidedText(data.detail, Qt::ElideRight, static_cast<int>(box.width()));
    painter.drawText(QRectF(box.x(), box.bottom() + 2, box.width(), height),
                     Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void ReportTable::paintNumber(QPainter& painter, std::size_t row, Column column) const {
    const AppTheme& theme = AppTheme::current();
    const QFont font = theme.font(TextStyle::body);
    const QFontMetricsF metrics(font);
    const QRectF box = cell(row, column);
    const QString text = cellText(row, column);
    const double slack =
        layoutDirection() == Qt::RightToLeft ? 0 : box.width() - TabularDigits::width(text, font);
    painter.setPen(theme.color(ThemeColor::primaryText));
    TabularDigits::paint(painter,
                         {box.x() + slack, box.center().y() + (metrics.ascent() - metrics.descent()) / 2},
                         text, font);
}

} // namespace loadscope
