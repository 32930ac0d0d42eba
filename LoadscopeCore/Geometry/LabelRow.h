// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <vector>

namespace loadscope {

/// A label that would like to be centred somewhere on a horizontal line.
struct RowLabel {
    double center = 0;
    double width = 0;
    int priority = 0; ///< when not all fit, the lowest goes first
};

/// Left edges for labels given from left to right, so that none overlaps its neighbour (`gap` points between
/// them) or leaves the range. A label without an edge found no room.
[[nodiscard]] std::vector<std::optional<double>> placeLabelsInRow(std::span<const RowLabel> labels,
                                                                  double left, double right, double gap);

} // namespace loadscope
