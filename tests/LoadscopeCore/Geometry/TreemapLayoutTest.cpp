// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TreemapLayout.h"

#include "LoadscopeCore/Geometry/TreemapTiles.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace loadscope {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

TEST(TreemapLayout, GivesTheRectanglesOfTheWorkedExamples) {
    struct Case {
        std::string name;
        std::vector<double> weights;
        std::vector<TreemapRect> expected;
    };
    const Case cases[] = {
        {"nothing", {}, {}},
        {"one", {7}, {{0, 0, 1, 1}}},
        {"none positive", {0, -1, infinite, NAN}, {{}, {}, {}, {}}},
        {"two equal", {5, 5}, {{0, 0, 1, 0.5}, {0, 0.5, 1, 0.5}}},
        {"zero and negative between",
         {1, 0, 3, -2, 4},
         {{0.5, 0.75, 0.5, 0.25}, {}, {0.5, 0, 0.5, 0.75}, {}, {0, 0, 0.5, 1}}},
        {"seven",
         {6, 6, 4, 3, 2, 2, 1},
         {{0, 0, 0.5, 0.5},
          {0, 0.5, 0.5, 0.5},
          {0.5, 0, 0.5, 1 / 3.0},
          {0.5, 1 / 3.0, 0.5, 0.25},
          {0.5, 0.583333333, 0.4, 0.208333333},
          {0.5, 0.791666667, 0.4, 0.208333333},
          {0.9, 0.583333333, 0.1, 0.416666667}}},
    };
    for (const Case& c : cases) {
        for (const double factor : {1.0, 1e-200, 3.7e200}) {
            std::vector<double> weights = c.weights;
            for (double& weight : weights) {
                weight *= factor;
            }
            const std::vector<TreemapRect> rects = TreemapLayout::layout(weights);
            ASSERT_EQ(rects.size(), c.expected.size()) << c.name;
            for (std::size_t i = 0; i < rects.size(); ++i) {
                SCOPED_TRACE(c.name + " " + std::to_string(i));
                EXPECT_NEAR(rects[i].x, c.expected[i].x, 1e-9);
                EXPECT_NEAR(rects[i].y, c.expected[i].y, 1e-9);
                EXPECT_NEAR(rects[i].width, c.expected[i].width, 1e-9);
                EXPECT_NEAR(rects[i].height, c.expected[i].height, 1e-9);
            }
        }
    }
}

/// The rectangles cover the square: their areas add up to it and every probe point is in exactly one.
void expectTiling(const std::vector<double>& weights) {
    double total = 0;
    for (const double weight : weights) {
        total += weight > 0 && std::isfinite(weight) ? weight : 0;
    }
    const std::vector<TreemapRect> rects = TreemapLayout::layout(weights);
    double area = 0;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const RectF rect{rects[i].x, rects[i].y, rects[i].width, rects[i].height};
        ASSERT_TRUE(isFinite(rect) && rect.width >= 0 && rect.height >= 0);
        ASSERT_LE(std::max(rect.right(), rect.bottom()), 1 + 1e-12);
        if (std::isfinite(total) && weights[i] > 0 && std::isfinite(weights[i])) {
            ASSERT_NEAR(rects[i].area(), weights[i] / total, 1e-9);
        }
        area += rects[i].area();
    }
    EXPECT_NEAR(area, 1, 1e-9);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0.001, 0.999);
    for (int probe = 0; probe < 20; ++probe) {
        const PointF point{unit(random), unit(random)};
        int owners = 0;
        for (const TreemapRect& r : rects) {
            owners += RectF{r.x, r.y, r.width, r.height}.contains(point) ? 1 : 0;
        }
        EXPECT_EQ(owners, 1) << weights.size() << " weights at " << point.x << ", " << point.y;
    }
}

TEST(TreemapLayout, TilesTheSquareForAnyWeights) {
    std::vector<std::vector<double>> lists = {{1, 1e6},
                                              {1e-300, 1, 1e300},
                                              {largest, largest, largest},
                                              {smallest, smallest},
                                              {largest, smallest, 1},
                                              {1, NAN, 2, -infinite}};
    lists.emplace_back(2000, 1.0);
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::uniform_real_distribution<double> exponent(-round / 10.0, round / 10.0);
        std::vector<double> weights(1 + random() % 300);
        for (double& weight : weights) {
            weight =
                random() % 5 == 0 ? std::floor(std::exp(exponent(random))) + 1 : std::exp(exponent(random));
        }
        lists.push_back(weights);
    }
    for (const std::vector<double>& weights : lists) {
        expectTiling(weights);
    }
}

TEST(TreemapTiles, StayInsideTheirBoxAndAnswerThePointer) {
    const std::vector<double> weights = {1, 0, 1e6, 300, 300, 5e5};
    for (const double width : awkwardLengths) {
        for (const double height : awkwardLengths) {
            const RectF box{10, 20, usableLength(width), usableLength(height)};
            const TreemapTiles tiles(weights, {10, 20, width, height}, 4);
            EXPECT_TRUE(tiles.tiles()[1].isEmpty());
            for (std::size_t i = 0; i < weights.size(); ++i) {
                const RectF& tile = tiles.tiles()[i];
                ASSERT_TRUE(isFinite(tile));
                if (i == 1) continue;
                ASSERT_TRUE(isWithin(tile, box)) << width << " x " << height << " tile " << i;
                EXPECT_TRUE(tile.width < 1e-3 || tile.height < 1e-3 || tiles.tileAt(tile.center()) == i) << i;
                const auto label = TreemapTiles::labelBox(tile, {90, 12});
                EXPECT_TRUE(!label || isWithin(*label, tile));
            }
            EXPECT_EQ(tiles.tileAt({9.9, 20}), std::nullopt);
            EXPECT_EQ(tiles.tileAt({box.right(), 20}), std::nullopt);
            EXPECT_EQ(tiles.keyboardOrder(), (std::vector<std::size_t>{2, 5, 3, 4, 0}));
        }
    }
}

TEST(TreemapTiles, LeaveGapsBetweenTilesButNoneForThePointer) {
    const TreemapTiles tiles(std::vector<double>{1, 1}, {0, 0, 100, 100}, 4);
    EXPECT_EQ(tiles.tiles()[0], (RectF{0, 0, 100, 48}));
    EXPECT_EQ(tiles.tiles()[1], (RectF{0, 52, 100, 48}));
    EXPECT_EQ(tiles.tileAt({50, 49.9}), 0U);
    EXPECT_EQ(tiles.tileAt({50, 50}), 1U);
}

TEST(TreemapTiles, LabelOnlyWhatCanBeRead) {
    const SizeF label{90, 12};
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 200, 40}, label), (RectF{8, 4, 90, 12}));
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 70, 40}, label), (RectF{8, 4, 54, 12}));
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 63, 40}, label), std::nullopt);
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 200, 19}, label), std::nullopt);
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 40, 20}, {20, 12}), (RectF{8, 4, 20, 12}));
}

} // namespace
} // namespace loadscope
