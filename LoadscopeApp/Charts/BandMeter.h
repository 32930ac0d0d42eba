// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/BandMeterGeometry.h"

namespace loadscope {

class ValueAnimation;

/// A total set against the three bands. When it first comes into view, its marker springs to its place.
class BandMeter : public MarkedWidget {
    Q_OBJECT

public:
    BandMeter(std::int64_t total, OpinionBand band, QWidget* parent = nullptr);

    /// Where the marker stands now, from 0 to 1.
    [[nodiscard]] double shownPosition() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {60, sizeHint().height()}; }
    [[nodiscard]] int markCount() const override;
    [[nodiscard]] Mark mark(std::size_t index) const override;

protected:
    [[nodiscard]] std::size_t stopCount() const override { return 0; }
    [[nodiscard]] Item itemAt(QPointF) const override { return {}; }
    void activeMoved(Item, std::optional<QPointF>) override {}
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] BandMeterGeometry geometryFor(double width) const;

    std::int64_t total_;
    OpinionBand band_;
    BandMeterGeometry geometry_;
    ValueAnimation* seconds_;
};

} // namespace loadscope
