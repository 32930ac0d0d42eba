// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/DonutGeometry.h"
#include "LoadscopeCore/Geometry/OuterRing.h"

#include <QPainterPath>

#include <map>
#include <vector>

namespace loadscope {

class ValueAnimation;

/// The ring of a breakdown with the total in its middle. Its items are the rows; a row without tokens has no
/// sector and cannot become active. A row whose parts are shown has them around its sector, on an outer ring.
/// The sectors grow in when the ring first comes into view.
class DonutChart : public MarkedWidget {
    Q_OBJECT

public:
    struct Row {
        QString name;
        std::int64_t tokens = 0;
        QString value; ///< read out with the name
    };

    /// `total` is the number in the middle, formatted.
    /// With `hasOuterRing` there is room for parts.
    DonutChart(std::vector<Row> rows, QString total, bool hasOuterRing = false, QWidget* parent = nullptr);

    [[nodiscard]] const DonutGeometry& ring() const { return ring_; }
    /// Makes a row active that is active elsewhere; nothing when the row has no sector.
    void showRow(Item row);
    /// Shows the tokens of a row's parts around its sector; none takes them away.
    void showParts(std::size_t row, std::vector<std::int64_t> parts);
    /// How many sectors stand around that of a row.
    [[nodiscard]] std::size_t shownParts(std::size_t row) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] int markCount() const override { return 1 + static_cast<int>(sectors_.size()); }
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override;
    [[nodiscard]] Item itemOf(std::size_t mark) const override;
    [[nodiscard]] MarkSubject subject(std::size_t item) const override;

protected:
    [[nodiscard]] std::size_t stopCount() const override { return sectors_.size(); }
    [[nodiscard]] std::size_t itemAtStop(std::size_t stop) const override { return sectors_.at(stop); }
    [[nodiscard]] Item stopOf(std::size_t item) const override;
    [[nodiscard]] Item itemAt(QPointF point) const override;
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void layOut();
    [[nodiscard]] QRect ringArea() const;
    void paintParts(QPainter& painter) const;
    void paintMiddle(QPainter& painter) const;

    std::vector<Row> rows_;
    std::vector<std::int64_t> tokens_;
    std::vector<std::size_t> sectors_; ///< the rows that have one
    QString total_;
    bool hasOuterRing_;
    DonutGeometry ring_;
    std::vector<QPainterPath> paths_;                            ///< one per row
    std::map<std::size_t, std::vector<std::int64_t>> parts_;     ///< of the rows that show theirs
    std::map<std::size_t, std::vector<QPainterPath>> partPaths_; ///< likewise
    ValueAnimation* reveal_;
};

} // namespace loadscope
