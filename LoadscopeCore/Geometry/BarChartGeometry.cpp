// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BarChartGeometry.h"

#include "LoadscopeCore/Geometry/LabelRow.h"
#include "LoadscopeCore/Geometry/ValueAxis.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace loadscope {
namespace {

constexpr double axisGap = 8;       // points between the plot and its labels
constexpr double tickDistance = 72; // points at least between two values
constexpr double labelGap = 6;      // points at least between the names of two categories

double widestLabel(const BarChartData& data, const TextMeasure& text) {
    double widest = 0;
    for (const std::string& label : data.slotLabels) {
        widest = std::max(widest, text.width(label));
    }
    return widest;
}

/// Tall enough for one bar of each series.
double slotHeightFor(std::size_t series, const BarChartStyle& style, const TextMeasure& text) {
    const auto bars = static_cast<double>(std::max<std::size_t>(series, 1));
    const double needed =
        bars * BarChartGeometry::minimumBarHeight + (bars - 1) * style.barGap + 2 * style.slotPadding;
    return std::max({style.slotHeight, needed, text.lineHeight + labelGap});
}

} // namespace

BarChartStyle BarChartStyle::column() {
    return {.slotHeight = 22, .barGap = 0, .slotPadding = 5, .maximumBarHeight = 12, .showsValueAxis = false};
}

BarChartStyle BarChartStyle::grouped() { return {.slotHeight = BarChartGeometry::minimumSlotHeight}; }

BarChartGeometry::BarChartGeometry(const BarChartData& data, double width, const TextMeasure& text,
                                   const BarChartStyle& style) {
    width = usableLength(width);
    const double slotHeight = slotHeightFor(data.series.size(), style, text);
    const double labelWidth = std::min(widestLabel(data, text), width * style.labelShare);
    plot_.x = std::min(labelWidth > 0 ? labelWidth + axisGap : 0, width);
    plot_.width = width - plot_.x;
    plot_.height = slotHeight * static_cast<double>(data.slotLabels.size());
    if (style.showsValueAxis) plot_.height = std::max(plot_.height, minimumSlotHeight);
    height_ = plot_.height;
    layOutSlots(data, slotHeight, text);
    layOutMarks(data, style);
    if (style.showsValueAxis) layOutTicks(data.maximum, width, text);
}

void BarChartGeometry::layOutSlots(const BarChartData& data, double slotHeight, const TextMeasure& text) {
    for (std::size_t i = 0; i < data.slotLabels.size(); ++i) {
        const RectF rect{plot_.x, slotHeight * static_cast<double>(i), plot_.width, slotHeight};
        const double room = usableLength(plot_.x - axisGap);
        const double labelWidth = std::min(text.width(data.slotLabels[i]), room);
        const double labelHeight = std::min(text.lineHeight, slotHeight);
        slots_.push_back(
            {rect, {room - labelWidth, rect.center().y - labelHeight / 2, labelWidth, labelHeight}});
    }
}

void BarChartGeometry::layOutMarks(const BarChartData& data, const BarChartStyle& style) {
    const auto bars = static_cast<double>(std::max<std::size_t>(data.series.size(), 1));
    for (std::size_t s = 0; s < data.series.size(); ++s) {
        for (const BarChartData::Bar& bar : data.series[s]) {
            if (bar.slot >= slots_.size()) continue;
            const RectF& slot = slots_[bar.slot].rect;
            const double room = slot.height - 2 * style.slotPadding - (bars - 1) * style.barGap;
            const double height = std::min(style.maximumBarHeight, room / bars);
            const double group = bars * height + (bars - 1) * style.barGap;
            const double top = slot.center().y - group / 2 + static_cast<double>(s) * (height + style.barGap);
            const double length = slot.width * ValueAxis::fraction(bar.tokens, data.maximum);
            const double visible =
                bar.tokens > 0 ? std::min(std::max(length, minimumBarLength), slot.width) : 0;
            marks_.push_back({s, bar.slot, bar.tokens, {slot.x, top, visible, height}});
        }
    }
}

void BarChartGeometry::layOutTicks(std::int64_t maximum, double width, const TextMeasure& text) {
    const auto intervals = static_cast<std::size_t>(std::clamp(plot_.width / tickDistance, 1.0, 8.0));
    std::vector<RowLabel> labels;
    for (const ValueTick& tick : ValueAxis::ticks(maximum, intervals)) {
        ticks_.push_back({tick.label, plot_.x + plot_.width * tick.fraction, {}});
        labels.push_back({ticks_.back().x, text.width(tick.label), 0});
    }
    const auto edges = placeLabelsInRow(labels, 0, width, axisGap);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (edges[i])
            ticks_[i].rect = RectF{*edges[i], plot_.bottom() + axisGap, labels[i].width, text.lineHeight};
    }
    height_ = plot_.bottom() + axisGap + text.lineHeight;
}

std::optional<std::size_t> BarChartGeometry::markAt(PointF point) const {
    const auto mark = std::find_if(marks_.begin(), marks_.end(), [&](const Mark& m) {
        return RectF{plot_.x, m.rect.y, plot_.width, m.rect.height}.contains(point);
    });
    if (mark == marks_.end()) return std::nullopt;
    return static_cast<std::size_t>(mark - marks_.begin());
}

std::vector<std::size_t> BarChartGeometry::keyboardOrder() const {
    std::vector<std::size_t> order(marks_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::tie(marks_[a].slot, marks_[a].series) < std::tie(marks_[b].slot, marks_[b].series);
    });
    return order;
}

} // namespace loadscope
