// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/OuterRing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace loadscope {

OuterRing::OuterRing(const DonutGeometry& ring, std::size_t slice, std::span<const std::int64_t> tokens,
                     double gap, double thickness)
    : center_(ring.center()),
      innerRadius_(ring.outerRadius() + usableLength(gap)),
      outerRadius_(innerRadius_ + usableLength(thickness)) {
    const DonutGeometry::Slice whole = ring.slices().at(slice);
    const std::vector<std::int64_t> ends = DonutGeometry::upperBounds(tokens);
    const double total = ends.empty() ? 0 : static_cast<double>(ends.back());
    const auto parts = std::ranges::count_if(tokens, [](std::int64_t part) { return part > 0; });
    std::int64_t begin = 0;
    for (const std::int64_t end : ends) {
        Arc arc{whole.startAngle, 0};
        if (total > 0) {
            const double full = whole.sweep * (static_cast<double>(end - begin) / total);
            const double space = parts > 1 ? std::min(DonutGeometry::angularGap / 2, full / 2) : 0;
            arc = {whole.startAngle + whole.sweep * (static_cast<double>(begin) / total) + space / 2,
                   full - space};
        }
        arcs_.push_back(arc);
        begin = end;
    }
}

std::optional<std::size_t> OuterRing::arcAt(PointF point) const {
    const double distance = std::hypot(point.x - center_.x, point.y - center_.y);
    if (!(distance >= innerRadius_ && distance < outerRadius_)) return std::nullopt;
    double angle = std::atan2(point.x - center_.x, center_.y - point.y) * 180 / std::numbers::pi;
    if (angle < 0) angle += 360;
    const auto arc = std::ranges::find_if(arcs_, [&](const Arc& candidate) {
        return candidate.sweep > 0 && angle >= candidate.startAngle &&
               angle < candidate.startAngle + candidate.sweep;
    });
    if (arc == arcs_.end()) return std::nullopt;
    return static_cast<std::size_t>(arc - arcs_.begin());
}

} // namespace loadscope
