// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"

#include "LoadscopeCore/Geometry/Flags.h"
#include "LoadscopeCore/Geometry/LabelRow.h"
#include "LoadscopeCore/Geometry/ValueAxis.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace loadscope {
namespace {

constexpr double axisGap = 8;             // points between the plot and its labels
constexpr double timeLabelGap = 72;       // points at least between two dates
constexpr double valueTickDistance = 45;  // points at least between two values
constexpr double thresholdLabelInset = 4; // points from the plot's edge

/// Positions of the points by date; points of one date keep their order.
std::vector<std::size_t> orderByDate(const std::vector<TrendChartData::Point>& points) {
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return points[a].date < points[b].date; });
    return order;
}

/// Of the labels of changes: those that part the points stand above the others.
std::size_t labelRows(const std::vector<TrendChartData::Change>& changes) {
    const auto isMajor = [](const TrendChartData::Change& change) { return change.isMajor; };
    const bool some = std::any_of(changes.begin(), changes.end(), isMajor);
    const bool all = std::all_of(changes.begin(), changes.end(), isMajor);
    return changes.empty() ? 0 : some && !all ? 2 : 1;
}

std::uint64_t distance(Timestamp a, Timestamp b) {
    const auto left = static_cast<std::uint64_t>(std::max(a, b).time_since_epoch().count());
    const auto right = static_cast<std::uint64_t>(std::min(a, b).time_since_epoch().count());
    return left - right; // wraps to the right difference even where signed numbers would overflow
}

} // namespace

std::int64_t TrendChartData::upperBoundFor(std::int64_t largestTotal) {
    if (largestTotal <= OpinionBands::excessiveThreshold) return normalUpperBound;
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max();
    const double bound = static_cast<double>(largestTotal) * 1.15;
    return bound < static_cast<double>(limit) ? static_cast<std::int64_t>(bound) : limit;
}

std::optional<std::size_t> nearestDate(std::span<const Timestamp> dates, Timestamp date) {
    const auto nearest = std::min_element(dates.begin(), dates.end(), [&](Timestamp a, Timestamp b) {
        return distance(a, date) < distance(b, date);
    });
    if (nearest == dates.end()) return std::nullopt;
    return static_cast<std::size_t>(nearest - dates.begin());
}

TrendChartGeometry::TrendChartGeometry(const TrendChartData& data, SizeF size, const TextMeasure& text)
    : size_{usableLength(size.width), usableLength(size.height)} {
    std::vector<Timestamp> dates;
    for (const auto& series : data.series) {
        for (const TrendChartData::Point& point : series) {
            dates.push_back(point.date);
        }
    }
    timeAxis_ = TimeAxis(dates);
    layOutPlot(data, size_, text);
    layOutMarks(data);
    layOutChanges(data, text);
    layOutTimeTicks(size_, text);
    layOutThresholds(data, text);
}

double TrendChartGeometry::yOf(std::int64_t value, std::int64_t upperBound) const {
    return plot_.bottom() - plot_.height * ValueAxis::fraction(value, upperBound);
}

void TrendChartGeometry::layOutPlot(const TrendChartData& data, SizeF size, const TextMeasure& text) {
    const double labels = static_cast<double>(labelRows(data.changes)) * (text.lineHeight + flagRowGap);
    const double top = std::min(std::max(text.lineHeight / 2, labels), size.height);
    plot_.y = top;
    plot_.height = usableLength(size.height - top - text.lineHeight - axisGap);
    const auto intervals = static_cast<std::size_t>(std::clamp(plot_.height / valueTickDistance, 1.0, 8.0));
    const std::vector<ValueTick> ticks = ValueAxis::ticks(data.upperBound, intervals);

    double labelWidth = 0;
    for (const ValueTick& tick : ticks) {
        labelWidth = std::max(labelWidth, text.width(tick.label));
    }
    plot_.x = std::min(labelWidth + axisGap, size.width);
    plot_.width = usableLength(size.width - plot_.x - selectedPointRadius);
    for (const ValueTick& tick : ticks) {
        const double y = yOf(tick.value, data.upperBound);
        Tick placed{tick.label, y, {}};
        const double width = text.width(tick.label);
        const RectF rect{plot_.x - axisGap - width, y - text.lineHeight / 2, width, text.lineHeight};
        if (rect.x >= 0 && rect.bottom() <= size.height) placed.rect = rect;
        valueTicks_.push_back(placed);
    }
}

void TrendChartGeometry::layOutTimeTicks(SizeF size, const TextMeasure& text) {
    if (markDates_.empty()) return;
    const double widest = std::max(text.width(timeAxis_.label(timeAxis_.date(0))),
                                   text.width(timeAxis_.label(timeAxis_.date(1))));
    const double count = plot_.width / std::max(1.0, widest + timeLabelGap);
    const std::vector<TimeTick> ticks =
        timeAxis_.ticks(static_cast<std::size_t>(std::clamp(count, 1.0, 12.0)));
    std::vector<RowLabel> labels;
    for (const TimeTick& tick : ticks) {
        timeTicks_.push_back({tick.label, plot_.x + plot_.width * tick.fraction, {}});
        labels.push_back({timeTicks_.back().position, text.width(tick.label), 0});
    }
    const auto edges = placeLabelsInRow(labels, 0, size.width, axisGap);
    const double y = plot_.bottom() + axisGap;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (edges[i] && y + text.lineHeight <= size.height) {
            timeTicks_[i].rect = RectF{*edges[i], y, labels[i].width, text.lineHeight};
        }
    }
}

void TrendChartGeometry::layOutMarks(const TrendChartData& data) {
    for (std::size_t s = 0; s < data.series.size(); ++s) {
        std::vector<PointF> positions;
        for (const std::size_t i : orderByDate(data.series[s])) {
            const TrendChartData::Point& point = data.series[s][i];
            positions.push_back(
                {plot_.x + plot_.width * timeAxis_.fraction(point.date), yOf(point.total, data.upperBound)});
            marks_.push_back({s, i, point.date, positions.back()});
        }
        lines_.push_back({positions.empty() ? PointF{} : positions.front(), monotoneCurve(positions)});
    }
    std::stable_sort(marks_.begin(), marks_.end(),
                     [](const Mark& a, const Mark& b) { return a.date < b.date; });
    for (const Mark& mark : marks_) {
        markDates_.push_back(mark.date);
    }
}

void TrendChartGeometry::layOutChanges(const TrendChartData& data, const TextMeasure& text) {
    const auto halfway = [this](const TrendChartData::Change& change) {
        std::optional<double> before;
        for (const Mark& mark : marks_) {
            if (mark.series != change.series) continue;
            if (mark.point == change.point) return (before.value_or(mark.position.x) + mark.position.x) / 2;
            before = mark.position.x;
        }
        return plot_.x;
    };
    for (const TrendChartData::Change& change : data.changes)
        changes_.push_back(
            {change.series, change.isMajor, {halfway(change), plot_.y}, change.label, change.shortLabel, {}});
    std::stable_sort(changes_.begin(), changes_.end(),
                     [](const Change& a, const Change& b) { return a.top.x < b.top.x; });

    const bool hasTwoRows = labelRows(data.changes) == 2;
    std::vector<Flag> flags;
    for (const Change& change : changes_)
        flags.push_back({change.top.x, hasTwoRows && !change.isMajor ? std::size_t{1} : 0, change.label,
                         change.shortLabel});
    const double left = std::min(plot_.x, size_.width);
    const std::vector<PlacedFlag> placed = placeFlags(flags, {left, 0, size_.width - left, plot_.y}, text);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        changes_[i].label = placed[i].label;
        changes_[i].labelRect = placed[i].rect;
        if (placed[i].rect) changes_[i].top.y = placed[i].rect->y;
    }
}

void TrendChartGeometry::layOutThresholds(const TrendChartData& data, const TextMeasure& text) {
    if (!data.showsThresholds) return;
    const std::pair<OpinionBand, std::int64_t> anchors[] = {
        {OpinionBand::heavy, OpinionBands::heavyThreshold},
        {OpinionBand::excessive, OpinionBands::excessiveThreshold}};
    for (const auto& [band, value] : anchors) {
        Threshold threshold{band,
                            value,
                            OpinionBands::title(band) + " " + LocaleFormat::grouped(value),
                            yOf(value, data.upperBound),
                            {}};
        const double width = std::min(text.width(threshold.label), usableLength(size_.width - plot_.x));
        const double top = std::max(0.0, threshold.y - thresholdLabelDistance - text.lineHeight);
        double left = plot_.x + thresholdLabelInset;
        // Far above both thresholds their rules nearly meet: the labels then stand in one row.
        if (!thresholds_.empty() && thresholds_.back().labelRect.y - top < text.lineHeight)
            left = thresholds_.back().labelRect.right() + axisGap;
        left = std::min(left, size_.width - width);
        threshold.labelRect = {left, top, width, text.lineHeight};
        thresholds_.push_back(threshold);
    }
}

Timestamp TrendChartGeometry::dateAt(double x) const {
    return timeAxis_.date(plot_.width > 0 ? (x - plot_.x) / plot_.width : 0.5);
}

std::optional<std::size_t> TrendChartGeometry::markNearest(Timestamp date) const {
    return nearestDate(markDates_, date);
}

std::optional<std::size_t> TrendChartGeometry::markAt(double x) const { return markNearest(dateAt(x)); }

RectF TrendChartGeometry::tooltipRect(std::size_t mark, SizeF tooltip) const {
    const double left = marks_.at(mark).position.x - tooltip.width / 2;
    const double rightmost = std::max(0.0, size_.width - tooltip.width);
    const double top = changes_.empty() ? plot_.y : 0;
    return {std::clamp(left, 0.0, rightmost), top - tooltipDistance - tooltip.height, tooltip.width,
            tooltip.height};
}

} // namespace loadscope
