// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/BarChartGeometry.h"

#include <vector>

namespace loadscope {

class ChartTip;

/// Horizontal bars in named slots, for one series or for several side by side. Only what is visible is
/// painted, since a chart of many series can be very tall. A card tells the number of the bar that the
/// pointer is over; where the chart takes the keyboard, the arrow keys walk the bars.
class BarChart : public MarkedWidget {
    Q_OBJECT

public:
    enum class Kind { column, grouped };
    struct Series {
        QString name;
        std::size_t paletteIndex = 0;
    };

    BarChart(Kind kind, BarChartData data, std::vector<Series> series, QWidget* parent = nullptr);

    [[nodiscard]] const BarChartGeometry& shapes() const { return geometry_; }
    [[nodiscard]] BarChartGeometry geometryFor(double width) const;
    /// Paints the chart laid out as `geometry`, as far as it lies within `visible`.
    void paint(QPainter& painter, const BarChartGeometry& geometry, const QRectF& visible) const;

    // An item is one of the geometry's marks; they are read out in the order in which the keys walk them.
    [[nodiscard]] int markCount() const override { return static_cast<int>(order_.size()); }
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override { return stopOf(item); }
    [[nodiscard]] Item itemOf(std::size_t mark) const override { return order_.at(mark); }
    [[nodiscard]] MarkSubject subject(std::size_t item) const override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] std::size_t stopCount() const override { return order_.size(); }
    [[nodiscard]] std::size_t itemAtStop(std::size_t stop) const override { return order_[stop]; }
    [[nodiscard]] Item stopOf(std::size_t item) const override;
    [[nodiscard]] KeyWalk::Policy walk() const override;
    [[nodiscard]] Item itemAt(QPointF point) const override;
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void layOut();
    void paintLabels(QPainter& painter, const BarChartGeometry& geometry, const QRectF& visible) const;
    [[nodiscard]] std::string nameOf(const BarChartGeometry::Mark& mark) const;
    [[nodiscard]] QRectF areaOf(std::size_t item) const;
    [[nodiscard]] QString labelAt(QPoint position) const;

    Kind kind_;
    BarChartData data_;
    std::vector<Series> series_;
    BarChartGeometry geometry_;
    std::vector<std::size_t> order_; ///< of the marks, as the keyboard walks them
    ChartTip* tip_ = nullptr;        ///< from its first use on
};

} // namespace loadscope
