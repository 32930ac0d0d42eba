// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartShapes.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace loadscope::ChartShapes {
namespace {

constexpr double wholeCircle = 359.999;
constexpr int smallestPixelSize = 6;

/// The toolkit counts degrees anticlockwise from 3 o'clock.
double toolkitAngle(double degrees) { return 90 - degrees; }

QRectF square(QPointF center, double radius) {
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

} // namespace

TextMeasure measure(const QFont& font) {
    const QFontMetricsF metrics(font);
    return {[metrics](std::string_view text) { return metrics.horizontalAdvance(DisplayText::own(text)); },
            metrics.height()};
}

QPainterPath sector(QPointF center, double innerRadius, double outerRadius, double startAngle, double sweep) {
    QPainterPath path;
    if (!(sweep > 0 && outerRadius > 0)) return path;
    if (sweep >= wholeCircle) {
        path.addEllipse(center, outerRadius, outerRadius);
        path.addEllipse(center, innerRadius, innerRadius);
        path.setFillRule(Qt::OddEvenFill);
        return path;
    }
    path.arcMoveTo(square(center, outerRadius), toolkitAngle(startAngle));
    path.arcTo(square(center, outerRadius), toolkitAngle(startAngle), -sweep);
    path.arcTo(square(center, innerRadius), toolkitAngle(startAngle + sweep), sweep);
    path.closeSubpath();
    return path;
}

QFont fitted(QFont font, const QString& number, double width) {
    const double natural = TabularDigits::width(number, font);
    if (natural <= width || natural <= 0) return font;
    int size = std::max(smallestPixelSize, static_cast<int>(std::floor(font.pixelSize() * width / natural)));
    font.setPixelSize(size);
    while (size > smallestPixelSize && TabularDigits::width(number, font) > width)
        font.setPixelSize(--size);
    return font;
}

} // namespace loadscope::ChartShapes
