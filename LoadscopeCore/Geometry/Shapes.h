// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

namespace loadscope {

struct PointF {
    double x = 0;
    double y = 0;
    bool operator==(const PointF&) const = default;
};

struct SizeF {
    double width = 0;
    double height = 0;
    bool operator==(const SizeF&) const = default;
};

/// A rectangle in points, y growing downwards. Its left and top edges belong to it, its right and bottom
/// edges do not, so that neighbours never share a point.
struct RectF {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] PointF center() const { return {x + width / 2, y + height / 2}; }
    [[nodiscard]] bool isEmpty() const { return !(width > 0 && height > 0); }
    [[nodiscard]] bool contains(PointF point) const {
        return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
    }
    bool operator==(const RectF&) const = default;
};

/// The length, or 0 when it is negative or not a number: a layout pass can ask for either while a window is
/// being built.
[[nodiscard]] inline double usableLength(double length) {
    return std::isfinite(length) && length > 0 ? length : 0;
}

/// The value kept between 0 and 1; 0 when it is not a number.
[[nodiscard]] inline double unitClamped(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

/// Angles of all round shapes are degrees, clockwise from 12 o'clock.
[[nodiscard]] inline PointF pointOnCircle(PointF center, double radius, double degrees) {
    const double radians = degrees * std::numbers::pi / 180;
    return {center.x + radius * std::sin(radians), center.y - radius * std::cos(radians)};
}

} // namespace loadscope
