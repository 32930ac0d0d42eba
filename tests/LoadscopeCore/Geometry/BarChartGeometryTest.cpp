// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BarChartGeometry.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

const BarChartData threeRepositories = {
    {"System tools", "Other (name withheld)", "Other (name withheld)"},
    {{{0, 14000}, {2, 340}}, {{0, 21000}, {1, 2400}, {2, 700}}, {{1, 2875}, {0, 44000}}},
    44000};

TEST(BarChartGeometry, GroupsTheBarsOfASlotAndLeavesEmptyPlaces) {
    const BarChartGeometry chart(threeRepositories, 600, sixPointText(), BarChartStyle::grouped());
    std::string text;
    for (const auto& mark : chart.marks()) {
        text +=
            std::to_string(mark.series) + "/" + std::to_string(mark.slot) + " " + asText(mark.rect) + "; ";
    }
    for (const auto& tick : chart.ticks()) {
        text += tick.label + " " + asText(tick.x) + "; ";
    }
    EXPECT_EQ(text,
              "0/0 134,8 148x13; 0/2 134,128 4x13; 1/0 134,23 222x13; 1/1 134,83 25x13; 1/2 134,143 7x13; "
              "2/1 134,99 30x13; 2/0 134,39 466x13; 0 134; 10K 240; 20K 346; 30K 452; 40K 558; ");
    EXPECT_EQ(chart.height(), 180 + 8 + 12);
    EXPECT_EQ(chart.markAt({590, 45}), 6U) << "the strip right of a bar belongs to it";
    EXPECT_EQ(chart.markAt({300, 88}), 3U);
    EXPECT_EQ(chart.markAt({300, 70}), std::nullopt) << "an empty place";
    EXPECT_EQ(chart.markAt({20, 45}), std::nullopt) << "the label column";
    EXPECT_EQ(chart.keyboardOrder(), (std::vector<std::size_t>{0, 2, 6, 3, 5, 1, 4}));
}

TEST(BarChartGeometry, DrawsOneSeriesInCloseRows) {
    const BarChartData data = {{"A", "B", "C"}, {{{0, 50}, {2, 100}, {7, 9}}}, 100};
    const BarChartGeometry chart(data, 214, sixPointText(), BarChartStyle::column());
    EXPECT_EQ(chart.height(), 66);
    ASSERT_EQ(chart.marks().size(), 2U) << "a bar without a slot is left out";
    EXPECT_EQ(chart.marks()[0].rect, (RectF{14, 5, 100, 12}));
    EXPECT_EQ(chart.marks()[1].rect, (RectF{14, 49, 200, 12}));
    EXPECT_TRUE(chart.ticks().empty());
    const BarChartData bare = {{"", ""}, {{{0, 50}}}, 50};
    EXPECT_EQ(BarChartGeometry(bare, 214, sixPointText(), BarChartStyle::column()).marks()[0].rect,
              (RectF{0, 5, 214, 12}))
        << "without labels no room for them";
}

TEST(BarChartGeometry, StaysInsideAndReadableForAnyData) {
    std::vector<BarChartData> charts = {{}, threeRepositories, {{"", ""}, {{{0, -5}, {1, 0}}}, 0}};
    BarChartData many{std::vector<std::string>(20, std::string(300, 'n')), {}, 1'000'000'000'000'000};
    for (std::int64_t series = 0; series < 40; ++series) {
        many.series.push_back(
            {{0, 1}, {19, series * 25'000'000'000'000}, {5, std::numeric_limits<std::int64_t>::max()}});
    }
    charts.push_back(many);
    for (const BarChartData& data : charts) {
        for (const double width : awkwardLengths) {
            for (const BarChartStyle& style : {BarChartStyle::grouped(), BarChartStyle::column()}) {
                const BarChartGeometry chart(data, width, sixPointText(), style);
                const RectF box{0, 0, usableLength(width), chart.height()};
                EXPECT_GE(chart.height(), static_cast<double>(data.slotLabels.size()) * style.slotHeight);
                for (const auto& mark : chart.marks()) {
                    ASSERT_TRUE(isFinite(mark.rect) && isWithin(mark.rect, chart.slots()[mark.slot].rect));
                    ASSERT_GE(mark.rect.height, BarChartGeometry::minimumBarHeight);
                    ASSERT_TRUE(mark.tokens <= 0 || box.width < 10 || mark.rect.width >= 2);
                }
                for (const auto& slot : chart.slots()) {
                    ASSERT_TRUE(isWithin(slot.labelRect, box));
                    ASSERT_LE(slot.labelRect.right(), chart.plot().x);
                }
                for (const auto& tick : chart.ticks()) {
                    ASSERT_TRUE(!tick.rect || isWithin(*tick.rect, box));
                }
            }
        }
    }
}

} // namespace
