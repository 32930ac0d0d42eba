// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QPainter;

namespace loadscope {

class ReportSurface;

/// A widget that shows the shadows of the cards in it, at whatever depth.
class ShadowCanvas : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Repaints around `card`.
    void updateShadow(const ReportSurface* card);

protected:
    void paintEvent(QPaintEvent* event) override;
};

namespace CardShadow {

/// Paints the soft shadow of a rounded rectangle at `area`.
void paint(QPainter& painter, const QRectF& area, double cornerRadius, double blurRadius, double opacity);

} // namespace CardShadow
} // namespace loadscope
