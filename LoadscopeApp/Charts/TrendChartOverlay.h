// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QRegion>
#include <QWidget>

namespace loadscope {

class TipCard;
class TrendChart;

/// What follows the pointer over a trend chart: a rule, a larger point and a tooltip. It lies above the chart
/// and reaches beyond its top, because the tooltip stands there; only what changes is painted.
class TrendChartOverlay : public QWidget {
    Q_OBJECT

public:
    TrendChartOverlay(QWidget* card, const TrendChart& chart);

    /// The chart lies there on the card.
    void cover(const QRect& chart);
    /// Another scan was selected.
    void refresh();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TipCard tooltip() const;
    [[nodiscard]] QRectF tooltipArea() const;
    [[nodiscard]] QRegion selectionRegion() const;

    const TrendChart& chart_;
    QPoint chartOrigin_; ///< in the overlay's coordinates
    QRegion painted_;
};

} // namespace loadscope
