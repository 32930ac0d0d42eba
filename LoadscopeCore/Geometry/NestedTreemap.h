// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace loadscope {

/// A treemap of treemaps: what is painted and what the pointer hits. A node's tile holds the tiles of its
/// children below a strip for its own label, where it has the room for one.
class NestedTreemap {
public:
    /// Nodes stand in the order of a walk through the tree: behind a node those of its children, each one
    /// deeper, with all that is below them. The roots have depth 0.
    struct Node {
        double weight = 0;
        std::size_t depth = 0;
        bool operator==(const Node&) const = default;
    };

    struct Style {
        double gap = 2;          ///< between neighbouring tiles
        double padding = 3;      ///< between a tile's edge and its children
        double stripHeight = 18; ///< for the label above the children
    };

    /// Tiles of a smaller side are not divided further.
    static constexpr double smallestDivided = 8;

    NestedTreemap() = default;
    /// With a root, what is below it takes all the room, and nothing else has a tile.
    NestedTreemap(std::span<const Node> nodes, RectF bounds, const Style& style,
                  std::optional<std::size_t> root = std::nullopt);

    /// One rectangle per node; empty where it has no tile.
    [[nodiscard]] const std::vector<RectF>& tiles() const { return tiles_; }

    /// One rectangle per node: the strip above its children; empty where there is none.
    [[nodiscard]] const std::vector<RectF>& strips() const { return strips_; }

    /// Whether tiles of children lie in the node's own.
    [[nodiscard]] bool isDivided(std::size_t node) const;

    /// The deepest node whose tile is under the point.
    [[nodiscard]] std::optional<std::size_t> tileAt(PointF point) const;

    /// Whether the node holds others, with tiles or without.
    [[nodiscard]] bool hasChildren(std::size_t node) const { return ends_.at(node) > node + 1; }

    /// The node that holds this one; nothing for a root.
    [[nodiscard]] std::optional<std::size_t> parentOf(std::size_t node) const;

private:
    void layOut(std::size_t first, std::size_t end, RectF bounds, const Style& style);
    [[nodiscard]] RectF divide(std::size_t node, const Style& style);

    std::vector<Node> nodes_;
    std::size_t first_ = 0; ///< the first node that may have a tile, and the first behind them
    std::size_t end_ = 0;
    std::vector<std::size_t> ends_; ///< by node: the first one behind it that is not below it
    std::vector<RectF> tiles_;
    std::vector<RectF> strips_;
};

} // namespace loadscope
