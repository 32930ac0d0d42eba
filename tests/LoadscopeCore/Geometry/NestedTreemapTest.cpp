// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/NestedTreemap.h"

#include "LoadscopeCore/Geometry/OuterRing.h"

#include <gtest/gtest.h>
#include <limits>

namespace loadscope {
namespace {

using Nodes = std::vector<NestedTreemap::Node>;

bool isInside(const RectF& inner, const RectF& outer) {
    constexpr double tolerance = 1e-6;
    return inner.x >= outer.x - tolerance && inner.y >= outer.y - tolerance &&
           inner.right() <= outer.right() + tolerance && inner.bottom() <= outer.bottom() + tolerance;
}

TEST(NestedTreemap, KeepsChildrenInTheirParentsAndFindsTheDeepest) {
    const Nodes nodes{{60, 0}, {40, 1}, {30, 2}, {10, 2}, {20, 1}, {40, 0}};
    const RectF bounds{10, 20, 600, 300};
    const NestedTreemap map(nodes, bounds, {});
    const std::vector<std::optional<std::size_t>> parents{{}, 0, 1, 1, 0, {}};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const RectF& tile = map.tiles()[i];
        EXPECT_FALSE(tile.isEmpty()) << i;
        EXPECT_EQ(map.parentOf(i), parents[i]);
        EXPECT_TRUE(isInside(tile, parents[i] ? map.tiles()[*parents[i]] : bounds)) << i;
        if (map.isDivided(i))
            EXPECT_EQ(map.tileAt(map.strips()[i].center()), i);
        else
            EXPECT_EQ(map.tileAt(tile.center()), i);
    }
    EXPECT_TRUE(map.isDivided(0) && map.isDivided(1) && !map.isDivided(2) && !map.isDivided(5));
    const double ratio =
        map.tiles()[2].width * map.tiles()[2].height / (map.tiles()[3].width * map.tiles()[3].height);
    EXPECT_NEAR(ratio, 3, 0.4);
    const NestedTreemap inside(nodes, bounds, {}, 0);
    for (const std::size_t node : {0, 5})
        EXPECT_TRUE(inside.tiles()[node].isEmpty()) << "only what is below the root has tiles";
    EXPECT_EQ(inside.tileAt(inside.tiles()[4].center()), 4);
    EXPECT_GT(inside.tiles()[4].width * inside.tiles()[4].height,
              map.tiles()[4].width * map.tiles()[4].height);
    EXPECT_EQ(NestedTreemap(nodes, bounds, {}, 5).tileAt({100, 100}), std::nullopt) << "a root of nothing";
    EXPECT_EQ(map.tileAt({0, 0}), std::nullopt);
    EXPECT_EQ(NestedTreemap({}, bounds, {}).tileAt({100, 100}), std::nullopt);
}

TEST(NestedTreemap, DividesNoTileThatIsTooSmallToBeSeen) {
    Nodes nodes{{1e9, 0}, {1, 0}};
    for (int i = 0; i < 5000; ++i)
        nodes.push_back({1, 1});
    const NestedTreemap map(nodes, {0, 0, 400, 200}, {});
    EXPECT_FALSE(map.isDivided(1));
    for (const RectF bounds :
         {RectF{0, 0, 0, 0}, RectF{0, 0, -5, std::numeric_limits<double>::quiet_NaN()}}) {
        const NestedTreemap none(nodes, bounds, {});
        EXPECT_TRUE(none.tiles().front().isEmpty());
    }
    const Nodes weightless{{0, 0}, {5, 1}, {std::numeric_limits<double>::infinity(), 0}};
    const NestedTreemap empty(weightless, {0, 0, 400, 200}, {});
    EXPECT_TRUE(empty.tiles()[0].isEmpty() && empty.tiles()[1].isEmpty());
}

TEST(OuterRing, SharesTheAngleOfItsSector) {
    const std::vector<std::int64_t> rows{75, 25};
    const DonutGeometry ring(rows, {0, 0, 200, 200});
    const std::vector<std::int64_t> parts{30, 0, 10, -4};
    const OuterRing outer(ring, 1, parts, 4, 10);
    const DonutGeometry::Slice whole = ring.slices()[1];
    ASSERT_EQ(outer.arcs().size(), parts.size());
    EXPECT_EQ(outer.arcs()[1].sweep, 0);
    EXPECT_EQ(outer.arcs()[3].sweep, 0);
    EXPECT_NEAR(outer.arcs()[0].sweep / outer.arcs()[2].sweep, 3, 0.2);
    EXPECT_GE(outer.arcs()[0].startAngle, whole.startAngle);
    EXPECT_LE(outer.arcs()[2].startAngle + outer.arcs()[2].sweep, whole.startAngle + whole.sweep);
    for (const std::size_t part : {0U, 2U}) {
        const OuterRing::Arc& arc = outer.arcs()[part];
        EXPECT_EQ(outer.arcAt(pointOnCircle(outer.center(), 109, arc.startAngle + arc.sweep / 2)), part);
        EXPECT_EQ(outer.arcAt(pointOnCircle(outer.center(), 99, arc.startAngle + arc.sweep / 2)),
                  std::nullopt);
    }
    EXPECT_EQ(outer.arcAt(pointOnCircle(outer.center(), 109, 90)), std::nullopt);
    const auto sweeps = [&](const std::vector<std::int64_t>& tokens) {
        const OuterRing parted(ring, 1, tokens, 4, 10);
        double sum = 0;
        for (const OuterRing::Arc& arc : parted.arcs())
            sum += arc.sweep;
        return sum;
    };
    EXPECT_DOUBLE_EQ(sweeps({5}), whole.sweep) << "a lone part needs no gap";
    EXPECT_LT(sweeps({5, 5}), whole.sweep);
    const std::vector<std::int64_t> nothing{0};
    EXPECT_EQ(OuterRing(ring, 0, nothing, 4, 10).arcs().front().sweep, 0);
}

} // namespace
} // namespace loadscope
