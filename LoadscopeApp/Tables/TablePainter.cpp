// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/TablePainter.h"

#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double dotSize = 8;
constexpr double selectionOpacity = 0.16;
constexpr double chevronSize = 4; ///< from its middle to its point
constexpr double chevronLine = 1.6;
constexpr double sortSize = 3.5;
constexpr double sortGap = 9; ///< from a title to the middle of its arrow

} // namespace

TablePainter::TablePainter(QPainter& painter, const DataTable& table)
    : painter_(painter), table_(table), places_(table.places()), theme_(AppTheme::current()) {
    painter_.setRenderHint(QPainter::Antialiasing);
}

void TablePainter::paint(const QRect& area) {
    const std::vector<std::size_t>& shown = places_.shown();
    if (area.top() < places_.headerHeight()) paintHeader();
    const auto first = places_.positionAt(std::max<double>(area.top(), places_.headerHeight()));
    for (std::size_t position = first.value_or(shown.size()); position < shown.size(); ++position) {
        const QRectF line = places_.row(shown[position]);
        if (line.top() > area.bottom()) break;
        paintRow(shown[position]);
        if (places_.style().hasDividers && position + 1 < shown.size())
            painter_.fillRect(QRectF(0, std::floor(line.bottom()) - 1, table_.width(), 1),
                              theme_.color(ThemeColor::divider));
    }
}

void TablePainter::paintHeader() {
    painter_.setFont(theme_.font(TextStyle::caption, QFont::DemiBold));
    painter_.setPen(theme_.color(ThemeColor::secondaryText));
    for (std::size_t column = 0; column < table_.columns().count(); ++column) {
        const Qt::Alignment side = QStyle::visualAlignment(
            table_.layoutDirection(), table_.columns().isNumber(column) ? Qt::AlignRight : Qt::AlignLeft);
        ReadingText::draw(painter_, table_.headerCell(column),
                          static_cast<int>(Qt::AlignVCenter | side) | Qt::TextSingleLine | Qt::TextDontClip,
                          table_.columns().title(column));
        paintSort(column, side);
    }
    painter_.fillRect(QRectF(0, places_.headerHeight() - 1, table_.width(), 1),
                      theme_.color(ThemeColor::divider));
}

void TablePainter::paintSort(std::size_t column, Qt::Alignment side) {
    const QRectF cell = table_.headerCell(column);
    const double title = painter_.fontMetrics().horizontalAdvance(table_.columns().title(column));
    const bool isRight = side.testFlag(Qt::AlignRight);
    if (table_.activeTitle() == DataTable::Item(column)) {
        const QRectF line(isRight ? cell.right() - title : cell.left(), cell.bottom() - 3, title, 2);
        painter_.fillRect(line, theme_.color(ThemeColor::accent));
    }
    const auto& sort = table_.arrangement().sort();
    if (!sort || sort->column != column) return;
    // In the gap between the columns, so that none moves.
    const double x = isRight ? cell.right() - title - sortGap : cell.left() + title + sortGap;
    const double up = sort->isDescending ? -1 : 1;
    const double y = cell.center().y();
    const QPointF points[] = {{x - sortSize, y + up * sortSize / 2},
                              {x, y - up * sortSize / 2},
                              {x + sortSize, y + up * sortSize / 2}};
    painter_.save();
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(theme_.color(ThemeColor::secondaryText), chevronLine, Qt::SolidLine, Qt::RoundCap,
                         Qt::RoundJoin));
    painter_.drawPolyline(points, 3);
    painter_.restore();
}

void TablePainter::paintRow(std::size_t row) {
    if (table_.active() == MarkedWidget::Item(row))
        painter_.fillRect(places_.row(row), theme_.color(ThemeColor::muted));
    if (table_.selected(row).isWhole)
        painter_.fillRect(places_.row(row), theme_.color(ThemeColor::accent, selectionOpacity));
    paintName(row);
    const std::vector<QString>& cells = table_.rows()[row].cells;
    for (std::size_t column = 1; column < table_.columns().count(); ++column) {
        const QRectF box = table_.cell(row, column);
        if (table_.columns().isNumber(column))
            paintNumber(cells.at(column - 1), box);
        else
            paintText(cells.at(column - 1), box);
    }
}

void TablePainter::paintChevron(std::size_t row, const QRectF& name) {
    if (!table_.outline().opens(row)) return;
    const bool isMirrored = table_.layoutDirection() == Qt::RightToLeft;
    const double before = places_.dotInset() + places_.chevronRoom() / 2 + 2;
    painter_.save();
    painter_.translate(isMirrored ? name.right() + before : name.x() - before,
                       name.y() + places_.bodyLineHeight() / 2);
    if (isMirrored) painter_.scale(-1, 1);
    if (table_.arrangement().isOpen(row)) painter_.rotate(90);
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(theme_.color(ThemeColor::secondaryText), chevronLine, Qt::SolidLine, Qt::RoundCap,
                         Qt::RoundJoin));
    const QPointF points[] = {
        {-chevronSize / 2, -chevronSize}, {chevronSize / 2, 0}, {-chevronSize / 2, chevronSize}};
    painter_.drawPolyline(points, 3);
    painter_.restore();
}

void TablePainter::paintDot(std::size_t row, const QRectF& name) {
    if (!table_.rows()[row].color) return;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(theme_.chartColor(*table_.rows()[row].color));
    const double left = table_.layoutDirection() == Qt::RightToLeft
                            ? name.right() + places_.dotInset() - dotSize
                            : name.x() - places_.dotInset();
    painter_.drawEllipse(QRectF(left, name.y() + (places_.bodyLineHeight() - dotSize) / 2, dotSize, dotSize));
}

void TablePainter::paintName(std::size_t row) {
    const TableRow& data = table_.rows()[row];
    const QRectF box = table_.cell(row, 0);
    paintChevron(row, box);
    paintDot(row, box);
    painter_.setPen(theme_.color(ThemeColor::primaryText));
    paintLines(places_.broken(data.name, box.width()), box, table_.selected(row));
    if (!data.detail.isEmpty()) paintDetail(data.detail, box);
}

void TablePainter::paintDetail(const QString& text, const QRectF& name) {
    painter_.setFont(theme_.font(TextStyle::caption));
    painter_.setPen(theme_.color(ThemeColor::secondaryText));
    const QFontMetrics metrics = painter_.fontMetrics();
    const QRectF box(name.x(), name.bottom() + TableLayout::detailGap, name.width(), metrics.height());
    const Qt::Alignment side = QStyle::visualAlignment(table_.layoutDirection(), Qt::AlignLeft);
    ReadingText::draw(painter_, box, static_cast<int>(Qt::AlignVCenter | side) | Qt::TextSingleLine,
                      metrics.elidedText(text, Qt::ElideRight, static_cast<int>(name.width())));
}

void TablePainter::shape(QTextLayout& line, const DataTable& table, double width) {
    QTextOption option(QStyle::visualAlignment(table.layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    // A path keeps its slashes in place beside words that are read from right to left.
    option.setTextDirection(Qt::LayoutDirectionAuto);
    line.setFont(AppTheme::current().font(TextStyle::body));
    line.setTextOption(option);
    line.beginLayout();
    line.createLine().setLineWidth(width);
    line.endLayout();
}

void TablePainter::paintLines(const BrokenText& text, const QRectF& box,
                              const DataTable::Selected& selected) {
    double top = box.top();
    for (const BrokenText::Line& line : text.lines) {
        QTextLayout layout(text.shown.mid(line.start, line.length));
        shape(layout, table_, box.width());
        QVector<QTextLayout::FormatRange> marked;
        const int from = std::max(selected.from, line.start);
        const int to = std::min(selected.to, line.start + line.length);
        if (from < to) {
            QTextCharFormat format;
            format.setBackground(theme_.color(ThemeColor::accent));
            format.setForeground(theme_.color(ThemeColor::onAccent));
            marked.append({from - line.start, to - from, format});
        }
        layout.draw(&painter_, {box.x(), top}, marked);
        top += places_.bodyLineHeight();
    }
}

void TablePainter::paintNumber(const QString& text, const QRectF& box) {
    const QFont font = theme_.font(TextStyle::body);
    const QFontMetricsF metrics(font);
    const bool isMirrored = table_.layoutDirection() == Qt::RightToLeft;
    const double slack = isMirrored ? 0 : box.width() - TabularDigits::width(text, font);
    painter_.setPen(theme_.color(ThemeColor::primaryText));
    TabularDigits::paint(painter_,
                         {box.x() + slack, box.center().y() + (metrics.ascent() - metrics.descent()) / 2},
                         text, font);
}

void TablePainter::paintText(const QString& text, const QRectF& box) {
    const BrokenText lines = places_.broken(text, box.width());
    painter_.setPen(theme_.color(ThemeColor::secondaryText));
    const double height = static_cast<double>(lines.lines.size()) * places_.bodyLineHeight();
    paintLines(lines, {box.x(), box.y() + (box.height() - height) / 2, box.width(), height});
}

} // namespace loadscope
