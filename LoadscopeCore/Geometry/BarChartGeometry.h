// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// What a horizontal bar chart shows. Slots are told apart by position, so two may have the same label, and a
/// series may leave slots empty.
struct BarChartData {
    struct Bar {
        std::size_t slot = 0;
        std::int64_t tokens = 0;
    };

    std::vector<std::string> slotLabels;  ///< from top to bottom
    std::vector<std::vector<Bar>> series; ///< bars of one slot stand side by side in this order
    std::int64_t maximum = 1;             ///< end of the value axis
};

/// How densely a bar chart is drawn, in points.
struct BarChartStyle {
    double slotHeight = 60;
    double barGap = 2;      ///< between bars of one slot
    double slotPadding = 8; ///< above and below the bars of a slot
    double maximumBarHeight = 14;
    double labelShare = 0.4; ///< of the width at most for the label column
    bool showsValueAxis = true;

    /// One series in close rows, without numbers: those stand beside it.
    [[nodiscard]] static BarChartStyle column();
    /// Several series in one chart with a value axis.
    [[nodiscard]] static BarChartStyle grouped();
};

/// A horizontal bar chart laid out in a rectangle that starts at (0, 0).
class BarChartGeometry {
public:
    static constexpr double minimumSlotHeight = 60; ///< of a grouped chart
    static constexpr double minimumBarHeight = 4;
    static constexpr double minimumBarLength = 2; ///< so that few tokens stay visible
    static constexpr double cornerRadius = 3;

    struct Slot {
        RectF rect;      ///< across the plot
        RectF labelRect; ///< right-aligned text, elided when it is wider
    };
    struct Mark {
        std::size_t series = 0;
        std::size_t slot = 0;
        std::int64_t tokens = 0;
        RectF rect;
    };
    struct Tick {
        std::string label;
        double x = 0;
        std::optional<RectF> rect; ///< nothing when there is no room
    };

    BarChartGeometry() = default;
    BarChartGeometry(const BarChartData& data, double width, const TextMeasure& text,
                     const BarChartStyle& style);

    /// Follows from the data: every slot gets its height, more when its bars need it.
    [[nodiscard]] double height() const { return height_; }
    [[nodiscard]] const RectF& plot() const { return plot_; }
    [[nodiscard]] const std::vector<Slot>& slots() const { return slots_; }
    [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; } ///< by series, in the order given
    [[nodiscard]] const std::vector<Tick>& ticks() const { return ticks_; }

    /// The bar in whose strip the point lies, also to the right of its end; a position in `marks`.
    [[nodiscard]] std::optional<std::size_t> markAt(PointF point) const;

    /// Positions in `marks` as the keyboard walks them: slot by slot, series by series.
    [[nodiscard]] std::vector<std::size_t> keyboardOrder() const;

private:
    void layOutSlots(const BarChartData& data, double slotHeight, const TextMeasure& text);
    void layOutMarks(const BarChartData& data, const BarChartStyle& style);
    void layOutTicks(std::int64_t maximum, double width, const TextMeasure& text);

    RectF plot_;
    double height_ = 0;
    std::vector<Slot> slots_;
    std::vector<Mark> marks_;
    std::vector<Tick> ticks_;
};

} // namespace loadscope
