// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"

#include <QFont>
#include <QRectF>
#include <QString>

class QColor;
class QPainter;

namespace loadscope {

/// Between the layouts of the charts, which know no toolkit, and the toolkit.
namespace ChartText {

/// Measures texts in `font`.
[[nodiscard]] TextMeasure measure(const QFont& font);

/// Paints one line in the painter's font and pen over a halo, which keeps it legible where lines cross it.
void paintWithHalo(QPainter& painter, const QRectF& area, const QString& text, const QColor& halo);

/// Paints one line in the painter's font and pen, cut with an ellipsis where it is wider than `area`.
void paintElided(QPainter& painter, const QRectF& area, Qt::Alignment alignment, const QString& text);

} // namespace ChartText

namespace ChartShapes {

[[nodiscard]] inline QPointF qt(const PointF& point) { return {point.x, point.y}; }
[[nodiscard]] inline QRectF qt(const RectF& rect) { return {rect.x, rect.y, rect.width, rect.height}; }

} // namespace ChartShapes
} // namespace loadscope
