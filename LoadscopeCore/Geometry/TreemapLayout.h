// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace loadscope {

/// A rectangle in the unit square, y growing downwards.
struct TreemapRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    static const TreemapRect zero;

    [[nodiscard]] double area() const { return width * height; }
    bool operator==(const TreemapRect&) const = default;
};

inline constexpr TreemapRect TreemapRect::zero{};

/// Divides the unit square into rectangles whose areas are proportional to weights, as square as the
/// squarified method makes them. One sort and one pass.
namespace TreemapLayout {

struct Item {
    std::int64_t index = 0; ///< of the weight in the input
    double area = 0;        ///< its share; all shares add up to 1
};

/// One rectangle per weight, in input order. A weight that is not a finite number above 0 gets the zero
/// rectangle; the others tile the square.
[[nodiscard]] std::vector<TreemapRect> layout(std::span<const double> weights);

/// The weights that get a rectangle, largest first, equal ones by position.
[[nodiscard]] std::vector<Item> items(std::span<const double> weights);

} // namespace TreemapLayout
} // namespace loadscope
