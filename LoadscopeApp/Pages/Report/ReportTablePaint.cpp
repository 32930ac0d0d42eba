// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
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
        const Qt::Alignment side =
            QStyle::visualAlignment(layoutDirection(), isNumber ? Qt::AlignRight : Qt::AlignLeft);
        ReadingText::draw(painter, title.area,
                          static_cast<int>(Qt::AlignVCenter | side) | Qt::TextSingleLine | Qt::TextDontClip,
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
    const BrokenText text = layout_.broken(rows_[row].source, box.width());
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const double height = static_cast<double>(text.lines.size()) * layout_.bodyLineHeight();
    paintLines(painter, text, {box.x(), box.y() + (box.height() - height) / 2, box.width(), height});
}

void ReportTable::paintLines(QPainter& painter, const BrokenText& text, const QRectF& box,
                             const Selection* selection) const {
    const AppTheme& theme = AppTheme::current();
    double top = box.top();
    for (const BrokenText::Line& line : text.lines) {
        QTextLayout layout(text.shown.mid(line.start, line.length));
        shapeLine(layout, box.width());
        QVector<QTextLayout::FormatRange> marked;
        if (selection != nullptr) {
            const int from = std::max(std::min(selection->from, selection->to), line.start);
            const int to = std::min(std::max(selection->from, selection->to), line.start + line.length);
            QTextCharFormat format;
            format.setBackground(theme.color(ThemeColor::accent));
            format.setForeground(theme.color(ThemeColor::onAccent));
            if (from < to) marked.append({from - line.start, to - from, format});
        }
        layout.draw(&painter, {box.x(), top}, marked);
        top += layout_.bodyLineHeight();
    }
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
    painter.setPen(theme.color(ThemeColor::primaryText));
    paintLines(painter, layout_.broken(data.name, box.width()), box,
               selection_ && selection_->row == row ? &*selection_ : nullptr);
    if (data.detail.isEmpty()) return;
    painter.setFont(theme.font(TextStyle::caption));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const double height = painter.fontMetrics().height();
    const QString shown =
        painter.fontMetrics().elidedText(data.detail, Qt::ElideRight, static_cast<int>(box.width()));
    ReadingText::draw(
        painter, QRectF(box.x(), box.bottom() + 2, box.width(), height),
        static_cast<int>(Qt::AlignVCenter | QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
            Qt::TextSingleLine,
        shown);
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
