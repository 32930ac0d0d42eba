// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <QPixmap>

#include <memory>
#include <vector>

namespace loadscope {

class TrendChartOverlay;

/// The scans of one repository over time, one line per tool. The scan nearest to the pointer is picked out
/// with a rule and a tooltip; the arrow keys walk the scans in the same way. The chart itself is painted once
/// per size and theme; what follows the pointer lies on an overlay above it.
class TrendChart : public MarkedWidget {
    Q_OBJECT

public:
    static constexpr int chartHeight = 260;

    /// `card` is the parent; the tooltip may stand above the chart and is painted on the card.
    explicit TrendChart(QWidget* card);

    void setPresentation(std::shared_ptr<const TrendsPresentation> presentation);

    [[nodiscard]] const TrendChartGeometry& shapes() const { return geometry_; }
    [[nodiscard]] const TrendsPresentation& presentation() const { return *presentation_; }
    [[nodiscard]] const std::vector<std::size_t>& palette() const { return palette_; }

    // An item is a position in the presentation's scans.
    [[nodiscard]] int markCount() const override;
    [[nodiscard]] Mark mark(std::size_t index) const override;

    /// The scans that were chosen to be compared, at most two, in the order of their choice.
    [[nodiscard]] const std::vector<std::size_t>& chosen() const { return chosen_; }
    /// Chooses a scan, or gives it up again; a third takes the place of the first.
    void choose(std::size_t scan);
    void describeMark(int mark, QAccessible::State& state) const override;
    [[nodiscard]] bool canToggleMark(int) const override { return true; }
    void toggleMark(int mark) override { choose(static_cast<std::size_t>(mark)); }

    [[nodiscard]] QSize sizeHint() const override { return {400, chartHeight}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, chartHeight}; }

    /// The chart laid out anew for a picture of this size.
    [[nodiscard]] TrendChartGeometry geometryFor(QSizeF size) const;

Q_SIGNALS:
    void chosenChanged();

protected:
    [[nodiscard]] std::size_t stopCount() const override;
    /// Up and down scroll the page.
    [[nodiscard]] KeyWalk::Policy walk() const override;
    [[nodiscard]] Item itemAt(QPointF point) const override { return geometry_.markAt(point.x()); }
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();

    std::shared_ptr<const TrendsPresentation> presentation_;
    std::vector<std::size_t> palette_;
    TrendChartGeometry geometry_;
    std::vector<std::size_t> chosen_;
    QPixmap picture_; ///< null when it must be painted anew
    TrendChartOverlay* overlay_;
};

} // namespace loadscope
