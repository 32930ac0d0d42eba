// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChartOverlay.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Charts/TrendChartPainter.h"

#include <QPainter>

#include <algorithm>

namespace loadscope {

TrendChartOverlay::TrendChartOverlay(QWidget* card, const TrendChart& chart) : QWidget(card), chart_(chart) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    AccessibleTraits::setDecoration(this);
}

void TrendChartOverlay::cover(const QRect& chart) {
    setGeometry(chart.left(), 0, chart.width(), chart.bottom() + 1);
    chartOrigin_ = QPoint(0, chart.top());
    raise();
    refresh();
}

void TrendChartOverlay::refresh() {
    const QRegion next = selectionRegion();
    update(painted_.united(next));
    painted_ = next;
}

TipCard TrendChartOverlay::tooltip() const {
    return TrendChartPainter::tooltip(chart_.presentation().tooltip(*chart_.active()));
}

QRectF TrendChartOverlay::tooltipArea() const {
    const std::size_t scan = *chart_.active();
    const QSizeF size = tooltip().size();
    QRectF area = ChartShapes::rect(chart_.shapes().tooltipRect(scan, {size.width(), size.height()}));
    area.translate(chartOrigin_);
    area.moveTop(std::max(area.top(), 0.0));
    return area;
}

QRegion TrendChartOverlay::selectionRegion() const {
    const std::optional<std::size_t> scan = chart_.active();
    if (!scan || *scan >= chart_.shapes().marks().size()) return {};
    constexpr double reach = TrendChartGeometry::selectedPointRadius + 1;
    const double x = chart_.shapes().marks()[*scan].position.x;
    const QRectF rule(x - reach, chartOrigin_.y(), 2 * reach, chart_.height());
    return QRegion(rule.toAlignedRect()).united(tooltipArea().toAlignedRect());
}

void TrendChartOverlay::paintEvent(QPaintEvent*) {
    if (selectionRegion().isEmpty()) return;
    const std::size_t scan = *chart_.active();
    QPainter painter(this);
    painter.save();
    painter.translate(chartOrigin_);
    TrendChartPainter::paintSelection(painter, chart_.shapes(), chart_.shapes().marks()[scan],
                                      chart_.palette());
    painter.restore();
    tooltip().paint(painter, tooltipArea());
}

} // namespace loadscope
