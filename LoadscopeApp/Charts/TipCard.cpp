// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TipCard.h"

#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double padding = TrendChartGeometry::tooltipPadding;
constexpr double lineGap = 2;
constexpr double unitGap = 4;
constexpr double opacity = 0.95;

QFont unitFont() { return AppTheme::current().font(TextStyle::caption); }

} // namespace

TipCard::TipCard(std::vector<Text> texts, double widest) {
    for (const Text& text : texts)
        addLines(text, widest - 2 * padding);
    double width = 0;
    double height = 0;
    for (const Line& line : lines_) {
        width = std::max(width, widthOf(line));
        height += QFontMetricsF(line.font).height() + lineGap;
    }
    size_ = {std::min(std::ceil(width) + 2 * padding, std::max(widest, 0.0)),
             std::ceil(height - lineGap) + 2 * padding};
}

void TipCard::addLines(const Text& text, double room) {
    const QFont font = AppTheme::current().font(text.style, text.weight);
    const BrokenText broken = LineBreaker(font).broken(text.words, room);
    for (const BrokenText::Line& line : broken.lines)
        lines_.push_back({broken.shown.mid(line.start, line.length), font, text.color, {}});
    lines_.back().unit = text.unit;
}

double TipCard::widthOf(const Line& line) {
    if (line.unit.isEmpty()) return QFontMetricsF(line.font).horizontalAdvance(line.words);
    return TabularDigits::width(line.words, line.font) + unitGap +
           QFontMetricsF(unitFont()).horizontalAdvance(line.unit);
}

void TipCard::paint(QPainter& painter, const QRectF& area) const {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(theme.color(ThemeColor::card, opacity));
    painter.setPen(QPen(theme.color(ThemeColor::border), 1));
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), Metrics::controlRadius,
                            Metrics::controlRadius);
    QPointF baseline(area.left() + padding, area.top() + padding);
    for (const Line& line : lines_) {
        const QFontMetricsF metrics(line.font);
        baseline.ry() += metrics.ascent();
        paintLine(painter, baseline, line);
        baseline.ry() += metrics.descent() + lineGap;
    }
}

void TipCard::paintLine(QPainter& painter, QPointF baseline, const Line& line) {
    painter.setPen(AppTheme::current().color(line.color));
    painter.setFont(line.font);
    if (line.unit.isEmpty()) {
        ReadingText::draw(painter, baseline, line.words);
        return;
    }
    TabularDigits::paint(painter, baseline, line.words, line.font);
    painter.setFont(unitFont());
    ReadingText::draw(painter, baseline + QPointF(TabularDigits::width(line.words, line.font) + unitGap, 0),
                      line.unit);
}

} // namespace loadscope
