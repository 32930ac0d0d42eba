// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace loadscope {

/// A vertical line with a label beside its upper end, which stands in one of the rows above a plot.
struct Flag {
    double x = 0;
    std::size_t row = 0; ///< 0 is the topmost
    std::string label;
    std::string shortLabel; ///< for where the label finds no room; may be empty
};

struct PlacedFlag {
    std::string label;         ///< the one that found room
    std::optional<RectF> rect; ///< of the label; nothing when none found room, and the line is all there is
};

inline constexpr double flagRowGap = 2; ///< points below each row

/// Labels to the right of their lines, else to their left, within `area`, whose top is that of the first row.
/// No label touches another or a line that passes it. Of those that cannot all stand, the later one in the
/// list stays, and one of a higher row before one of a lower.
[[nodiscard]] std::vector<PlacedFlag> placeFlags(std::span<const Flag> flags, const RectF& area,
                                                 const TextMeasure& text);

} // namespace loadscope
