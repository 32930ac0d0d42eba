// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/TextMeasure.h"

#include <QFont>
#include <QRectF>
#include <QString>

class QColor;
class QPainter;

/// Texts on charts: measured for the layouts, which know no toolkit, and painted.
namespace loadscope::ChartText {

/// Sizes of texts painted in `font`; each text is measured once.
[[nodiscard]] TextMeasure measure(const QFont& font);

/// `font`, made smaller as far as a number written in it needs to fit into `width`.
[[nodiscard]] QFont fitted(QFont font, const QString& number, double width);

/// Paints one line in the painter's font and pen over a halo, which keeps it legible where lines cross it.
void paintWithHalo(QPainter& painter, const QRectF& area, const QString& text, const QColor& halo);

/// Paints one line in the painter's font and pen, cut with an ellipsis where it is wider than `area`.
void paintElided(QPainter& painter, const QRectF& area, Qt::Alignment alignment, const QString& text);

} // namespace loadscope::ChartText
