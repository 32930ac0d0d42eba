// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TreemapLayout.h"

#include "LoadscopeCore/Geometry/TreemapTiles.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

TEST(TreemapLayout, GivesTheRectanglesOfTheWorkedExamples) {
    const std::pair<std::vector<double>, std::string> cases[] = {
        {{}, ""},
        {{7}, "0,0 1200x1200; "},
        {{0, -1, infinite, NAN}, "0,0 0x0; 0,0 0x0; 0,0 0x0; 0,0 0x0; "},
        {{5, 5}, "0,0 1200x600; 0,600 1200x600; "},
        {{1, 0, 3, -2, 4}, "600,900 600x300; 0,0 0x0; 600,0 600x900; 0,0 0x0; 0,0 600x1200; "},
        {{6, 6, 4, 3, 2, 2, 1},
         "0,0 600x600; 0,600 600x600; 600,0 600x400; 600,400 600x300; "
         "600,700 480x250; 600,950 480x250; 1080,700 120x500; "},
    };
    for (const auto& [weights, expected] : cases) {
        for (const double factor : {1.0, 1e-200, 3.7e200}) {
            std::vector<double> scaled;
            std::transform(weights.begin(), weights.end(), std::back_inserter(scaled),
                           [&](double weight) { return weight * factor; });
            std::string text;
            for (const TreemapRect& r : TreemapLayout::layout(scaled)) {
                text += asText(RectF{r.x * 1200, r.y * 1200, r.width * 1200, r.height * 1200}) + "; ";
            }
            EXPECT_EQ(text, expected);
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
    forAwkwardSizes([&](SizeF size, const RectF& box) {
        const TreemapTiles tiles(weights, {0, 0, size.width, size.height}, 4);
        EXPECT_EQ(tiles.keyboardOrder(), (std::vector<std::size_t>{2, 5, 3, 4, 0}));
        EXPECT_TRUE(tiles.tiles()[1].isEmpty());
        for (const std::size_t i : tiles.keyboardOrder()) {
            const RectF& tile = tiles.tiles()[i];
            ASSERT_TRUE(isFinite(tile) && isWithin(tile, box))
                << size.width << " x " << size.height << ": " << i;
            EXPECT_TRUE(tile.width < 1e-3 || tile.height < 1e-3 || tiles.tileAt(tile.center()) == i) << i;
            EXPECT_TRUE(isWithin(TreemapTiles::labelBox(tile, {90, 12}).value_or(tile), tile));
        }
        EXPECT_EQ(tiles.tileAt({-0.1, 0}), std::nullopt);
        EXPECT_EQ(tiles.tileAt({box.right(), 0}), std::nullopt);
    });
}

TEST(TreemapTiles, LeaveGapsAndLabelOnlyWhatCanBeRead) {
    const TreemapTiles tiles(std::vector<double>{1, 1}, {0, 0, 100, 100}, 4);
    EXPECT_EQ(tiles.tiles()[0], (RectF{0, 0, 100, 48}));
    EXPECT_EQ(tiles.tiles()[1], (RectF{0, 52, 100, 48}));
    EXPECT_EQ(tiles.tileAt({50, 49.9}), 0U);
    EXPECT_EQ(tiles.tileAt({50, 50}), 1U);
    const SizeF label{90, 12};
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 200, 40}, label), (RectF{8, 4, 90, 12}));
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 70, 40}, label), (RectF{8, 4, 54, 12}));
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 63, 40}, label), std::nullopt);
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 200, 19}, label), std::nullopt);
    EXPECT_EQ(TreemapTiles::labelBox({0, 0, 40, 20}, {20, 12}), (RectF{8, 4, 20, 12}));
}

} // namespace
