// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

#include <span>
#include <vector>

namespace loadscope {

/// One cubic Bézier segment; it starts where the one before it ends.
struct CurveSegment {
    PointF control1;
    PointF control2;
    PointF end;
    bool operator==(const CurveSegment&) const = default;
};

/// A smooth line through points given from left to right (monotone cubic interpolation after Fritsch and
/// Carlson). It never rises above or falls below the two points it runs between, so it invents no peak.
/// Points with the same x are joined by a straight line. One segment per pair of neighbours; the first starts
/// at `points[0]`.
[[nodiscard]] std::vector<CurveSegment> monotoneCurve(std::span<const PointF> points);

} // namespace loadscope
