// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/AccessibleMarks.h"
#include "LoadscopeCore/Geometry/BarChartGeometry.h"

#include <QString>
#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

namespace loadscope {

/// Horizontal bars in named slots, for one series or for several side by side. Only what is visible is
/// painted, since a chart of many series can be very tall. A bar tells its number when the pointer rests on
/// it; where the chart takes the keyboard, the arrow keys walk the bars.
class BarChart : public QWidget, public AccessibleMarks {
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

    [[nodiscard]] int markCount() const override;
    [[nodiscard]] QString markText(int mark) const override;
    [[nodiscard]] QRect markArea(int mark) const override;
    [[nodiscard]] int currentMark() const override { return current_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void layOut();
    void setCurrent(int mark);
    void paintLabels(QPainter& painter, const BarChartGeometry& geometry, const QRectF& visible) const;
    [[nodiscard]] QString textOf(const BarChartGeometry::Mark& mark) const;
    [[nodiscard]] QString toolTipAt(QPoint position) const;

    Kind kind_;
    BarChartData data_;
    std::vector<Series> series_;
    BarChartGeometry geometry_;
    std::vector<std::size_t> order_; ///< of the marks, as the keyboard walks them
    int current_ = -1;
};

} // namespace loadscope
