// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/DonutGeometry.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

namespace {

using Tokens = std::vector<std::int64_t>;

TEST(DonutGeometry, SumsOnlyPositiveRowsAndStopsAtTheLargestNumber) {
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{}), Tokens{});
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{5, -3, 0, 2}), (Tokens{5, 5, 5, 7}));
    EXPECT_EQ(DonutGeometry::upperBounds(Tokens{largest - 1, 5, 1}), (Tokens{largest - 1, largest, largest}));
    EXPECT_FALSE(DonutGeometry(Tokens{0, -4}, {0, 0, 100, 100}).hasSlices() || DonutGeometry().hasSlices());
    EXPECT_TRUE(DonutGeometry(Tokens{0, 1}, {0, 0, 100, 100}).hasSlices());
}

TEST(DonutGeometry, AnswersThePointerOnTheRingOnly) {
    const DonutGeometry uneven(Tokens{0, 30, 0, 50, -2, 20}, {0, 0, 200, 200});
    const auto at = [&](std::int64_t position) { return uneven.sliceAt(position); };
    EXPECT_EQ(each(at, 0, 29, 30, 79, 80, 99, 100, largest), "1 1 3 3 5 5 none none");
    const DonutGeometry donut(Tokens{1, 1, 2}, {0, 0, 200, 200});
    const auto under = [&](double radius, double angle) {
        return donut.sliceAt(pointOnCircle({100, 100}, radius, angle));
    };
    const auto around = [&](double angle) { return under(80, angle); };
    const auto outwards = [&](double radius) { return under(radius, 10); };
    EXPECT_EQ(each(around, 0.001, 89, 91, 181, -1e-14), "0 0 1 2 2");
    EXPECT_EQ(each(outwards, 61.9, 62.1, 99.9, 100.1), "none 0 0 none");
    EXPECT_EQ(donut.positionAt({100, 0}), 0) << "the outer edge belongs to the ring";
    EXPECT_EQ(DonutGeometry(Tokens{5}, {0, 0, 0, 0}).sliceAt(PointF{0, 0}), std::nullopt);
}

TEST(DonutGeometry, FillsTheRevealedPartOfTheCircle) {
    for (const Tokens& tokens :
         {Tokens{7}, Tokens{1, 2, 3}, Tokens{9'000'000'000'000'000, 1, 0, 4'000'000'000'000'000},
          Tokens(500, 18), Tokens{largest, largest}, Tokens{-5, 3}}) {
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
    const auto slices = [](const Tokens& tokens, double reveal = 1) {
        return listed(DonutGeometry(tokens, {0, 0, 9, 9}, reveal).slices(),
                      [](const auto& s) { return shown(s.upperBound, s.startAngle, s.sweep); });
    };
    EXPECT_EQ(slices({3}), "3 0 360; ") << "a single sector has no gap";
    EXPECT_EQ(slices({1, 1}), "1 0.75 178.5; 2 180.75 178.5; ");
    EXPECT_EQ(slices({1, -1, 399}, 0.5), "1 0.11 0.23; 1 0.45 0; 400 1.2 178.05; ");
    const DonutGeometry tall(Tokens{1, 1}, {10, 20, 100, 300});
    EXPECT_EQ(shown(tall.center(), tall.outerRadius(), tall.innerRadius(), tall.middleOf(0)),
              "60,170 50 31 100.5,170");
}

} // namespace
