// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/MonotoneCurve.h"
#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"
#include "LoadscopeCore/Geometry/TimeAxis.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace loadscope {

/// What a trend chart shows, apart from any size.
struct TrendChartData {
    static constexpr std::int64_t normalUpperBound = 69000;

    struct Point {
        Timestamp date;
        std::int64_t total = 0;
    };

    /// Something else changed between a point and the one before it.
    struct Change {
        std::size_t series = 0;
        std::size_t point = 0;
        bool isMajor = false; ///< the points before it do not compare with those after it
        std::string label;
        std::string shortLabel; ///< for where the label finds no room
    };

    std::vector<std::vector<Point>> series; ///< the points of one series in any order
    std::int64_t upperBound = normalUpperBound;
    bool showsThresholds = false;
    std::vector<Change> changes{}; ///< oldest first

    /// Top of the value axis for the largest total: 69,000, or 1.15 times a total above 60,000.
    [[nodiscard]] static std::int64_t upperBoundFor(std::int64_t largestTotal);
};

/// Position of the date nearest to `date`; the earlier position when two are equally near, nothing when there
/// is none.
[[nodiscard]] std::optional<std::size_t> nearestDate(std::span<const Timestamp> dates, Timestamp date);

/// A trend chart laid out in a rectangle that starts at (0, 0). All marks stay within the plot, all labels
/// within the rectangle.
class TrendChartGeometry {
public:
    static constexpr double lineWidth = 2;
    static constexpr double pointRadius = 2.877;         ///< a disc of 26 square points
    static constexpr double selectedPointRadius = 5.352; ///< a disc of 90 square points
    static constexpr double tooltipDistance = 8;
    static constexpr double tooltipPadding = 7;
    static constexpr double thresholdLabelDistance = 4;
    static constexpr double thresholdDash = 4; ///< points drawn, then as many left out
    static constexpr double changeDash = 2;

    struct Tick {
        std::string label;
        double position = 0;       ///< x of a date's tick, y of a value's
        std::optional<RectF> rect; ///< of the label; nothing when there is no room
    };
    struct Mark {
        std::size_t series = 0;
        std::size_t point = 0; ///< position in the series as it was given
        Timestamp date;
        PointF position;
    };
    struct Line {
        PointF start;
        std::vector<CurveSegment> segments;
    };
    /// A vertical line halfway between two points, from `top` to the bottom of the plot.
    struct Change {
        std::size_t series = 0;
        bool isMajor = false;
        PointF top;
        std::string label; ///< the one that found room
        std::string shortLabel;
        std::optional<RectF> labelRect; ///< above the plot; nothing when there is no room
    };
    struct Threshold {
        OpinionBand band = OpinionBand::heavy;
        std::int64_t value = 0;
        std::string label;
        double y = 0;
        RectF labelRect;
    };

    TrendChartGeometry() = default;
    TrendChartGeometry(const TrendChartData& data, SizeF size, const TextMeasure& text);

    [[nodiscard]] const RectF& plot() const { return plot_; }
    [[nodiscard]] const std::vector<Tick>& valueTicks() const { return valueTicks_; }
    [[nodiscard]] const std::vector<Tick>& timeTicks() const { return timeTicks_; }
    [[nodiscard]] const std::vector<Line>& lines() const { return lines_; } ///< one per series
    [[nodiscard]] const std::vector<Threshold>& thresholds() const { return thresholds_; }

    [[nodiscard]] const std::vector<Change>& changes() const { return changes_; } ///< oldest first

    /// The points of all series by date; on equal dates the earlier series comes first.
    [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; }

    /// The date under an x coordinate, kept within the axis.
    [[nodiscard]] Timestamp dateAt(double x) const;

    /// Position of the nearest mark in `marks`.
    [[nodiscard]] std::optional<std::size_t> markAt(double x) const;
    [[nodiscard]] std::optional<std::size_t> markNearest(Timestamp date) const;

    /// Where the tooltip of a mark goes: above the plot and its labels and within the chart's sides. Its top
    /// may lie above the chart.
    [[nodiscard]] RectF tooltipRect(std::size_t mark, SizeF tooltip) const;

private:
    void layOutPlot(const TrendChartData& data, SizeF size, const TextMeasure& text);
    void layOutTimeTicks(SizeF size, const TextMeasure& text);
    void layOutMarks(const TrendChartData& data);
    void layOutChanges(const TrendChartData& data, const TextMeasure& text);
    void layOutThresholds(const TrendChartData& data, const TextMeasure& text);
    [[nodiscard]] double yOf(std::int64_t value, std::int64_t upperBound) const;

    SizeF size_;
    RectF plot_;
    TimeAxis timeAxis_;
    std::vector<Tick> valueTicks_;
    std::vector<Tick> timeTicks_;
    std::vector<Line> lines_;
    std::vector<Mark> marks_;
    std::vector<Change> changes_;
    std::vector<Timestamp> markDates_;
    std::vector<Threshold> thresholds_;
};

} // namespace loadscope
