// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/NestedTreemap.h"

#include "LoadscopeCore/Geometry/TreemapTiles.h"

#include <algorithm>

namespace loadscope {

NestedTreemap::NestedTreemap(std::span<const Node> nodes, RectF bounds, const Style& style,
                             std::optional<std::size_t> root)
    : nodes_(nodes.begin(), nodes.end()), ends_(nodes.size()), tiles_(nodes.size()), strips_(nodes.size()) {
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i <= nodes_.size(); ++i) {
        while (!open.empty() && (i == nodes_.size() || nodes_[open.back()].depth >= nodes_[i].depth)) {
            ends_[open.back()] = i;
            open.pop_back();
        }
        open.push_back(i);
    }
    first_ = root ? *root + 1 : 0;
    end_ = root ? ends_.at(*root) : nodes_.size();
    layOut(first_, end_, bounds, style);
}

void NestedTreemap::layOut(std::size_t first, std::size_t end, RectF bounds, const Style& style) {
    std::vector<std::size_t> siblings;
    std::vector<double> weights;
    for (std::size_t i = first; i < end; i = ends_[i]) {
        siblings.push_back(i);
        weights.push_back(nodes_[i].weight);
    }
    const TreemapTiles layout(weights, bounds, style.gap);
    for (std::size_t i = 0; i < siblings.size(); ++i)
        tiles_[siblings[i]] = layout.tiles()[i];
    for (const std::size_t node : siblings) {
        if (ends_[node] == node + 1) continue;
        const RectF inside = divide(node, style);
        if (!inside.isEmpty()) layOut(node + 1, ends_[node], inside, style);
    }
}

/// Makes room for the children of a node and for its strip; an empty rectangle when there is no room.
RectF NestedTreemap::divide(std::size_t node, const Style& style) {
    const RectF& tile = tiles_[node];
    if (std::min(tile.width, tile.height) < smallestDivided) return {};
    const bool hasPadding = std::min(tile.width, tile.height) >= 4 * style.padding + smallestDivided;
    const double padding = hasPadding ? style.padding : 0;
    const bool hasStrip = tile.height >= style.stripHeight + padding + 2 * smallestDivided &&
                          tile.width >= TreemapTiles::minimumLabelWidth;
    const double top = hasStrip ? style.stripHeight : padding;
    if (hasStrip) strips_[node] = {tile.x, tile.y, tile.width, top};
    return {tile.x + padding, tile.y + top, tile.width - 2 * padding, tile.height - top - padding};
}

bool NestedTreemap::isDivided(std::size_t node) const {
    const auto first = tiles_.begin() + static_cast<std::ptrdiff_t>(node) + 1;
    const auto end = tiles_.begin() + static_cast<std::ptrdiff_t>(ends_.at(node));
    return std::any_of(first, end, [](const RectF& tile) { return !tile.isEmpty(); });
}

std::optional<std::size_t> NestedTreemap::tileAt(PointF point) const {
    std::optional<std::size_t> found;
    std::size_t first = first_;
    std::size_t end = end_;
    while (first < end) {
        std::size_t child = first;
        while (child < end && !tiles_[child].contains(point))
            child = ends_[child];
        if (child == end) break;
        found = child;
        first = child + 1;
        end = ends_[child];
    }
    return found;
}

std::optional<std::size_t> NestedTreemap::parentOf(std::size_t node) const {
    for (std::size_t before = node; before-- > 0;)
        if (nodes_[before].depth < nodes_.at(node).depth) return before;
    return std::nullopt;
}

} // namespace loadscope
