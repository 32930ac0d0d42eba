// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TreemapTiles.h"

#include "LoadscopeCore/Geometry/TreemapLayout.h"

#include <algorithm>

namespace loadscope {
namespace {

/// Edges are scaled one by one and shared by neighbours, so that they meet exactly.
struct Span {
    double from = 0;
    double to = 0;
};

Span scaled(double start, double length, double origin, double extent) {
    constexpr double almostOne = 1 - 1e-9;
    const double end = start + length;
    return {origin + std::min(start, 1.0) * extent,
            end >= almostOne ? origin + extent : origin + end * extent};
}

Span withoutGaps(Span span, double gap, double origin, double extent) {
    const double inset = std::min(gap / 2, (span.to - span.from) / 4);
    return {span.from > origin ? span.from + inset : span.from,
            span.to < origin + extent ? span.to - inset : span.to};
}

RectF rectOf(Span x, Span y) {
    return {x.from, y.from, std::max(0.0, x.to - x.from), std::max(0.0, y.to - y.from)};
}

} // namespace

TreemapTiles::TreemapTiles(std::span<const double> weights, RectF bounds, double gap) {
    bounds.width = usableLength(bounds.width);
    bounds.height = usableLength(bounds.height);
    cells_.reserve(weights.size());
    tiles_.reserve(weights.size());
    for (const TreemapRect& unit : TreemapLayout::layout(weights)) {
        if (unit == TreemapRect::zero) {
            cells_.emplace_back();
            tiles_.emplace_back();
            continue;
        }
        const Span x = scaled(unit.x, unit.width, bounds.x, bounds.width);
        const Span y = scaled(unit.y, unit.height, bounds.y, bounds.height);
        cells_.push_back(rectOf(x, y));
        tiles_.push_back(rectOf(withoutGaps(x, usableLength(gap), bounds.x, bounds.width),
                                withoutGaps(y, usableLength(gap), bounds.y, bounds.height)));
    }
    for (const TreemapLayout::Item& item : TreemapLayout::items(weights)) {
        order_.push_back(static_cast<std::size_t>(item.index));
    }
}

std::optional<std::size_t> TreemapTiles::tileAt(PointF point) const {
    const auto cell =
        std::find_if(cells_.begin(), cells_.end(), [&](const RectF& c) { return c.contains(point); });
    if (cell == cells_.end()) return std::nullopt;
    return static_cast<std::size_t>(cell - cells_.begin());
}

std::optional<RectF> TreemapTiles::labelBox(const RectF& tile, SizeF label) {
    const double room = tile.width - 2 * labelPadding;
    const bool fits = room >= std::min(label.width, minimumLabelWidth) && room > 0 &&
                      tile.height >= label.height + 2 * labelPaddingTop;
    if (!fits) return std::nullopt;
    return RectF{tile.x + labelPadding, tile.y + labelPaddingTop, std::min(label.width, room), label.height};
}

} // namespace loadscope
