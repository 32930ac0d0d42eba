// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartText.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/TextWidths.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double haloWidth = 4;
constexpr int smallestPixelSize = 6;

} // namespace

TextMeasure ChartText::measure(const QFont& font) {
    return {[font](std::string_view text) { return TextWidths::of(DisplayText::own(text), font); },
            QFontMetricsF(font).height()};
}

QFont ChartText::fitted(QFont font, const QString& number, double width) {
    const double natural = TabularDigits::width(number, font);
    if (natural <= width || natural <= 0) return font;
    int size = std::max(smallestPixelSize, static_cast<int>(std::floor(font.pixelSize() * width / natural)));
    font.setPixelSize(size);
    while (size > smallestPixelSize && TabularDigits::width(number, font) > width)
        font.setPixelSize(--size);
    return font;
}

void ChartText::paintWithHalo(QPainter& painter, const QRectF& area, const QString& text,
                              const QColor& halo) {
    const QPointF baseline(area.left(), area.top() + QFontMetricsF(painter.font()).ascent());
    QPainterPath outline;
    outline.addText(baseline, painter.font(), text);
    painter.strokePath(outline, QPen(halo, haloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    ReadingText::draw(painter, baseline, text);
}

void ChartText::paintElided(QPainter& painter, const QRectF& area, Qt::Alignment alignment,
                            const QString& text) {
    const QFontMetricsF metrics(painter.font());
    // Rounding must not cost a text its last letters.
    const QString shown = TextWidths::of(text, painter.font()) <= area.width() + 0.5
                              ? text
                              : metrics.elidedText(text, Qt::ElideRight, area.width());
    ReadingText::draw(painter, area, static_cast<int>(alignment) | Qt::TextSingleLine | Qt::TextDontClip,
                      shown);
}

} // namespace loadscope
