// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

#include <QPainterPath>
#include <QRectF>

/// Between the geometry of the core, which knows no toolkit, and the toolkit's painting.
namespace loadscope::ChartShapes {

[[nodiscard]] inline QRectF rect(const RectF& area) { return {area.x, area.y, area.width, area.height}; }
[[nodiscard]] inline RectF rect(const QRectF& area) {
    return {area.x(), area.y(), area.width(), area.height()};
}
[[nodiscard]] inline QPointF point(PointF place) { return {place.x, place.y}; }
[[nodiscard]] inline PointF point(QPointF place) { return {place.x(), place.y()}; }

/// A piece of a ring; angles in degrees clockwise from 12 o'clock.
[[nodiscard]] QPainterPath sector(QPointF center, double innerRadius, double outerRadius, double startAngle,
                                  double sweep);

} // namespace loadscope::ChartShapes
