// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace loadscope {

/// A treemap scaled to a rectangle: what is painted, what the pointer hits and in which order the keyboard
/// walks it.
class TreemapTiles {
public:
    static constexpr double labelPadding = 8;       ///< points between a tile's edge and its label, sideways
    static constexpr double labelPaddingTop = 4;    ///< and above and below
    static constexpr double minimumLabelWidth = 48; ///< less than this is not worth an elided label

    TreemapTiles() = default;

    /// `gap` points stay free between neighbouring tiles; the outer edges reach the rectangle's. A tile gives
    /// up at most half of itself to gaps.
    TreemapTiles(std::span<const double> weights, RectF bounds, double gap);

    /// One rectangle per weight, in input order; empty where the weight has no tile.
    [[nodiscard]] const std::vector<RectF>& tiles() const { return tiles_; }

    /// The weight whose tile, or half of the gap around it, is under the point.
    [[nodiscard]] std::optional<std::size_t> tileAt(PointF point) const;

    /// Positions of the weights that have a tile, largest first.
    [[nodiscard]] const std::vector<std::size_t>& keyboardOrder() const { return order_; }

    /// Where a label of this size goes within a tile: its whole width or, elided, what the tile has. Nothing
    /// when the tile is too small to be read.
    [[nodiscard]] static std::optional<RectF> labelBox(const RectF& tile, SizeF label);

private:
    std::vector<RectF> cells_; ///< without gaps
    std::vector<RectF> tiles_;
    std::vector<std::size_t> order_;
};

} // namespace loadscope
