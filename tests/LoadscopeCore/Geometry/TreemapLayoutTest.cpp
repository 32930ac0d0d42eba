// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TreemapLayout.h"

#include "LoadscopeCore/Geometry/TreemapTiles.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();
constexpr double tiny = std::numeric_limits<double>::denorm_min();

TEST(TreemapLayout, GivesTheRectanglesOfTheWorkedExamples) {
    for (const double factor : {1.0, 1e-200, 3.7e200}) {
        const auto told = [&](std::vector<double> weights) {
            for (double& weight : weights)
                weight *= factor;
            return listed(TreemapLayout::layout(weights), [](const TreemapRect& r) {
                return shown(RectF{r.x * 1200, r.y * 1200, r.width * 1200, r.height * 1200});
            });
        };
        EXPECT_EQ(told({}), "");
        EXPECT_EQ(told({7}), "0,0 1200x1200; ");
        EXPECT_EQ(told({0, -1, infinite, NAN}), "0,0 0x0; 0,0 0x0; 0,0 0x0; 0,0 0x0; ");
        EXPECT_EQ(told({5, 5}), "0,0 1200x600; 0,600 1200x600; ");
        EXPECT_EQ(told({1, 0, 3, -2, 4}), "600,900 600x300; 0,0 0x0; 600,0 600x900; 0,0 0x0; 0,0 600x1200; ");
        EXPECT_EQ(
            told({6, 6, 4, 3, 2, 2, 1}),
            "0,0 600x600; 0,600 600x600; 600,0 600x400; 600,400 600x300; 600,700 480x250; 600,950 480x250; "
            "1080,700 120x500; ");
    }
}

/// The rectangles cover the square: their areas add up to it and every probe point is in exactly one.
void expectTiling(const std::vector<double>& weights) {
    double total = 0;
    for (const double weight : weights)
        total += weight > 0 && std::isfinite(weight) ? weight : 0;
    const std::vector<TreemapRect> rects = TreemapLayout::layout(weights);
    double area = 0;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const RectF rect{rects[i].x, rects[i].y, rects[i].width, rects[i].height};
        ASSERT_TRUE(isWithin(rect, {0, 0, 1, 1}) && rect.width >= 0 && rect.height >= 0);
        const bool counts = std::isfinite(total) && weights[i] > 0 && std::isfinite(weights[i]);
        ASSERT_TRUE(!counts || std::abs(rects[i].area() - weights[i] / total) < 1e-9);
        area += rects[i].area();
    }
    EXPECT_NEAR(area, 1, 1e-9);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0.001, 0.999);
    for (int probe = 0; probe < 20; ++probe) {
        const PointF point{unit(random), unit(random)};
        const auto owners = std::ranges::count_if(rects, [&](const auto& r) {
            return RectF{r.x, r.y, r.width, r.height}.contains(point);
        });
        EXPECT_EQ(owners, 1) << weights.size() << " weights at " << point.x << ", " << point.y;
    }
}

TEST(TreemapLayout, TilesTheSquareForAnyWeights) {
    std::vector<std::vector<double>> lists = {std::vector<double>(2000, 1.0),
                                              {1, 1e6},
                                              {1e-300, 1, 1e300},
                                              {huge, huge, huge},
                                              {tiny, tiny},
                                              {huge, tiny, 1},
                                              {1, NAN, 2, -infinite}};
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::uniform_real_distribution<double> exponent(-round / 10.0, round / 10.0);
        std::vector<double> weights(1 + random() % 300);
        for (double& weight : weights)
            weight = random() % 5 == 0 ? 3 : std::exp(exponent(random));
        lists.push_back(weights);
    }
    std::ranges::for_each(lists, expectTiling);
}

TEST(TreemapTiles, StayInsideTheirBoxAndAnswerThePointer) {
    const std::vector<double> weights = {1, 0, 1e6, 300, 300, 5e5};
    forAwkwardSizes([&](SizeF size, const RectF& box) {
        const TreemapTiles tiles(weights, {0, 0, size.width, size.height}, 4);
        EXPECT_EQ(tiles.keyboardOrder(), (std::vector<std::size_t>{2, 5, 3, 4, 0}));
        EXPECT_TRUE(tiles.tiles()[1].isEmpty());
        for (const std::size_t i : tiles.keyboardOrder()) {
            const RectF& tile = tiles.tiles()[i];
            ASSERT_TRUE(isWithin(tile, box)) << size.width << " x " << size.height << ": " << i;
            EXPECT_TRUE(tile.width < 1e-3 || tile.height < 1e-3 || tiles.tileAt(tile.center()) == i) << i;
            EXPECT_TRUE(isWithin(TreemapTiles::labelBox(tile, {90, 12}).value_or(tile), tile));
        }
        EXPECT_EQ(tiles.tileAt({-0.1, 0}), std::nullopt);
        EXPECT_EQ(tiles.tileAt({box.right(), 0}), std::nullopt);
    });
}

TEST(TreemapTiles, LeaveGapsAndLabelOnlyWhatCanBeRead) {
    const TreemapTiles tiles(std::vector<double>{1, 1}, {0, 0, 100, 100}, 4);
    const auto told = [](const std::vector<double>& weights, RectF box, double gap) {
        return listed(TreemapTiles(weights, box, gap).tiles(), [](const RectF& tile) { return tile; });
    };
    EXPECT_EQ(told({1, 1}, {0, 0, 100, 100}, 4), "0,0 100x48; 0,52 100x48; ");
    EXPECT_EQ(told({2, 1, 1}, {10, 20, 80, 80}, 4), "10,20 38x80; 52,20 38x38; 52,62 38x38; ");
    EXPECT_EQ(told({1, 1}, {0, 0, 9, 4}, 8), "0,0 9x1.5; 0,2.5 9x1.5; ") << "half of itself at most";
    const auto at = [&](double y) { return tiles.tileAt({50, y}); };
    EXPECT_EQ(each(at, -0.1, 0, 49.9, 50, 99.9, 100), "none 0 0 1 1 none");
    const auto label = [](double width, double height, SizeF size) {
        return shown(TreemapTiles::labelBox({1, 2, width, height}, size));
    };
    EXPECT_EQ(label(200, 40, {90, 12}), "9,6 90x12");
    EXPECT_EQ(label(70, 40, {90, 12}), "9,6 54x12");
    EXPECT_EQ(label(64, 20, {90, 12}), "9,6 48x12");
    EXPECT_EQ(label(63, 40, {90, 12}) + label(200, 19, {90, 12}) + label(16, 40, {0, 12}), "nonenonenone");
    EXPECT_EQ(label(40, 20, {20, 12}), "9,6 20x12");
}

} // namespace
