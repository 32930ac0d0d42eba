// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/DonutGeometry.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"

#include <algorithm>

namespace loadscope {

std::vector<std::int64_t> DonutGeometry::upperBounds(std::span<const std::int64_t> tokens) {
    std::vector<std::int64_t> bounds;
    bounds.reserve(tokens.size());
    SaturatingSum sum;
    for (const std::int64_t row : tokens) {
        sum.add(std::max<std::int64_t>(row, 0));
        bounds.push_back(sum.value());
    }
    return bounds;
}

DonutGeometry::DonutGeometry(std::span<const std::int64_t> tokens, RectF bounds, double reveal) {
    const double side = std::min(usableLength(bounds.width), usableLength(bounds.height));
    outerRadius_ = side / 2;
    center_ = {bounds.x + usableLength(bounds.width) / 2, bounds.y + usableLength(bounds.height) / 2};

    const std::vector<std::int64_t> ends = upperBounds(tokens);
    const double total = ends.empty() ? 0 : static_cast<double>(ends.back());
    const double circle = 360 * unitClamped(reveal);
    const auto positive =
        std::count_if(tokens.begin(), tokens.end(), [](std::int64_t row) { return row > 0; });
    std::int64_t begin = 0;
    for (const std::int64_t end : ends) {
        Slice slice{end, 0, 0};
        if (total > 0) {
            const double share = static_cast<double>(end - begin) / total;
            const double full = circle * share;
            const double gap = positive > 1 ? std::min(angularGap, full / 2) : 0;
            slice.startAngle = circle * (static_cast<double>(begin) / total) + gap / 2;
            slice.sweep = full - gap;
        }
        slices_.push_back(slice);
        begin = end;
    }
}

std::optional<std::size_t> DonutGeometry::sliceAt(std::int64_t position) const {
    const auto slice = std::upper_bound(slices_.begin(), slices_.end(), position,
                                        [](std::int64_t p, const Slice& s) { return p < s.upperBound; });
    if (slice == slices_.end()) return std::nullopt;
    return static_cast<std::size_t>(slice - slices_.begin());
}

std::optional<std::int64_t> DonutGeometry::positionAt(PointF point) const {
    const double distance = std::hypot(point.x - center_.x, point.y - center_.y);
    if (!hasSlices() || !(distance >= innerRadius() && distance <= outerRadius_ && distance > 0))
        return std::nullopt;
    double turn = std::atan2(point.x - center_.x, center_.y - point.y) / (2 * std::numbers::pi);
    if (turn < 0) turn += 1;
    const double position = turn * static_cast<double>(total());
    // A double rounds up to the total, or to 2^63, just before 12 o'clock.
    if (position >= static_cast<double>(total() - 1)) return total() - 1;
    return static_cast<std::int64_t>(position);
}

std::optional<std::size_t> DonutGeometry::sliceAt(PointF point) const {
    const std::optional<std::int64_t> position = positionAt(point);
    return position ? sliceAt(*position) : std::nullopt;
}

PointF DonutGeometry::middleOf(std::size_t slice) const {
    const Slice& s = slices_.at(slice);
    return pointOnCircle(center_, (outerRadius_ + innerRadius()) / 2, s.startAngle + s.sweep / 2);
}

} // namespace loadscope
