// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartShapes.h"

namespace loadscope::ChartShapes {
namespace {

constexpr double wholeCircle = 359.999;

/// The toolkit counts degrees anticlockwise from 3 o'clock.
double toolkitAngle(double degrees) { return 90 - degrees; }

QRectF square(QPointF center, double radius) {
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

} // namespace

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

} // namespace loadscope::ChartShapes
