// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/DonutGeometry.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

using Tokens = std::vector<std::int64_t>;

TEST(DonutGeometry, SumsOnlyPositiveRowsAndStopsAtTheLargestNumber) {
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{}), Tokens{});
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{5, -3, 0, 2}), (Tokens{5, 5, 5, 7}));
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{largest - 1, 5, 1}), (Tokens{largest - 1, largest, largest}));
    EXPECT_FALSE(DonutGeometry(Tokens{0, -4}, {0, 0, 100, 100}).hasSlices());
    EXPECT_TRUE(DonutGeometry(Tokens{0, 1}, {0, 0, 100, 100}).hasSlices());
}

TEST(DonutGeometry, SelectsTheFirstSliceThatEndsBeyondThePosition) {
    const DonutGeometry donut(Tokens{0, 30, 0, 50, -2, 20}, {0, 0, 200, 200});
    const std::pair<std::int64_t, std::optional<std::size_t>> cases[] = {
        {0, 1}, {29, 1}, {30, 3}, {79, 3}, {80, 5}, {99, 5}, {100, std::nullopt}, {largest, std::nullopt}};
    for (const auto& [position, slice] : cases) {
        EXPECT_EQ(donut.sliceAt(position), slice) << position;
    }
}

TEST(DonutGeometry, AnswersThePointerOnTheRingOnly) {
    const DonutGeometry donut(Tokens{1, 1, 2}, {0, 0, 200, 200});
    const std::tuple<double, double, std::optional<std::size_t>> cases[] = {{80, 0.001, 0},
                                                                            {80, 89, 0},
                                                                            {80, 91, 1},
                                                                            {80, 181, 2},
                                                                            {80, -1e-14, 2},
                                                                            {62.1, 10, 0},
                                                                            {61.9, 10, std::nullopt},
                                                                            {100.1, 10, std::nullopt}};
    for (const auto& [radius, angle, slice] : cases) {
        EXPECT_EQ(donut.sliceAt(pointOnCircle({100, 100}, radius, angle)), slice)
            << radius << " at " << angle;
    }
    EXPECT_EQ(DonutGeometry(Tokens{5}, {0, 0, 0, 0}).sliceAt(PointF{0, 0}), std::nullopt);
}

TEST(DonutGeometry, FillsTheRevealedPartOfTheCircle) {
    const std::vector<Tokens> lists = {{7},
                                       {1, 2, 3},
                                       {9'000'000'000'000'000, 1, 0, 4'000'000'000'000'000},
                                       Tokens(500, 18),
                                       {largest, largest},
                                       {-5, 3}};
    for (const Tokens& tokens : lists) {
        for (const double reveal : {0.0, 0.25, 1.0}) {
            const DonutGeometry donut(tokens, {0, 0, 100, 300}, reveal);
            double end = 0;
            for (std::size_t i = 0; i < tokens.size(); ++i) {
                const DonutGeometry::Slice& slice = donut.slices()[i];
                ASSERT_GE(slice.startAngle, end - 1e-9);
                ASSERT_GE(slice.sweep, 0);
                EXPECT_TRUE(tokens[i] > 0 || slice.sweep == 0);
                end = slice.startAngle + slice.sweep;
                ASSERT_LE(end, 360 * reveal + 1e-9);
                EXPECT_TRUE(reveal < 1 || slice.sweep < 0.01 || donut.sliceAt(donut.middleOf(i)) == i) << i;
            }
        }
    }
    const DonutGeometry one(Tokens{3}, {0, 0, 100, 300});
    EXPECT_EQ(one.slices()[0], (DonutGeometry::Slice{3, 0, 360})) << "a single sector has no gap";
    EXPECT_EQ(one.center(), (PointF{50, 150}));
    EXPECT_EQ(DonutGeometry(Tokens{1, 1}, {0, 0, 9, 9}).slices()[1],
              (DonutGeometry::Slice{2, 180.75, 178.5}));
}

} // namespace
