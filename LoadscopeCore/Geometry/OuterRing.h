// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/DonutGeometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace loadscope {

/// The parts of one sector of a ring, as a narrower ring around it. They share the sector's angle by their
/// tokens, whatever those add up to; parts without tokens have a place in the list and no arc.
class OuterRing {
public:
    struct Arc {
        double startAngle = 0; ///< degrees, as painted
        double sweep = 0;
        bool operator==(const Arc&) const = default;
    };

    OuterRing() = default;

    /// `gap` points lie between the ring and this one, which is `thickness` points wide.
    OuterRing(const DonutGeometry& ring, std::size_t slice, std::span<const std::int64_t> tokens, double gap,
              double thickness);

    [[nodiscard]] const std::vector<Arc>& arcs() const { return arcs_; }
    [[nodiscard]] PointF center() const { return center_; }
    [[nodiscard]] double innerRadius() const { return innerRadius_; }
    [[nodiscard]] double outerRadius() const { return outerRadius_; }

    /// The part whose arc is under the point.
    [[nodiscard]] std::optional<std::size_t> arcAt(PointF point) const;

private:
    std::vector<Arc> arcs_;
    PointF center_;
    double innerRadius_ = 0;
    double outerRadius_ = 0;
};

} // namespace loadscope
