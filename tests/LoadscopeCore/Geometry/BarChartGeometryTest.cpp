// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BarChartGeometry.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

namespace {

const BarChartData threeRepositories = {
    {"System tools", "Other (name withheld)", "Other (name withheld)"},
    {{{0, 14000}, {2, 340}}, {{0, 21000}, {1, 2400}, {2, 700}}, {{1, 2875}, {0, 44000}}},
    44000};

std::string told(const BarChartData& data, double width, const BarChartStyle& style, double lineHeight = 12) {
    const BarChartGeometry chart(data, width, {sixPointText().width, lineHeight}, style);
    const auto mark = [](const auto& m) { return shown(m.tokens, m.rect); };
    const auto tick = [](const auto& t) { return shown(t.label, t.x, t.rect); };
    return shown(chart.plot(), chart.height()) + "\n" + listed(chart.marks(), mark) + "\n" +
           listed(chart.slots(), [](const auto& s) { return s.labelRect; }) + "\n" +
           listed(chart.ticks(), tick);
}

TEST(BarChartGeometry, GroupsTheBarsOfASlotAndLeavesEmptyPlaces) {
    const BarChartGeometry chart(threeRepositories, 600, sixPointText(), BarChartStyle::grouped());
    EXPECT_EQ(
        told(threeRepositories, 600, BarChartStyle::grouped()),
        "134,0 466x180 200\n"
        "14000 134,8 148.27x13.33; 340 134,128 3.6x13.33; 21000 134,23.33 222.41x13.33; 2400 134,83.33 "
        "25.42x13.33; 700 134,143.33 7.41x13.33; 2875 134,98.67 30.45x13.33; 44000 134,38.67 466x13.33; \n"
        "54,24 72x12; 0,84 126x12; 0,144 126x12; \n"
        "0 134 131,188 6x12; 10K 239.91 230.91,188 18x12; 20K 345.82 336.82,188 18x12; 30K 451.73 442.73,188 "
        "18x12; 40K 557.64 548.64,188 18x12; ");
    EXPECT_EQ(chart.markAt({590, 45}), 6U) << "the strip right of a bar belongs to it";
    EXPECT_EQ(chart.markAt({300, 88}), 3U);
    EXPECT_EQ(chart.markAt({300, 70}), std::nullopt) << "an empty place";
    EXPECT_EQ(chart.markAt({20, 45}), std::nullopt) << "the label column";
    EXPECT_EQ(chart.keyboardOrder(), (std::vector<std::size_t>{0, 2, 6, 3, 5, 1, 4}));
    EXPECT_EQ(told({{"", ""}, {{{0, 1}}, {{1, 99}}}, 99}, 300, BarChartStyle()),
              "0,0 300x120 140\n"
              "1 0,15 3.03x14; 99 0,91 300x14; \n"
              "0,24 0x12; 0,84 0x12; \n"
              "0 0 0,128 6x12; 50 151.52 145.52,128 12x12; ")
        << "without labels no room for them";
    EXPECT_EQ(told({}, 90, BarChartStyle::grouped()), "0,0 90x60 80\n"
                                                      "\n"
                                                      "\n"
                                                      "0 0 0,68 6x12; 1 90 84,68 6x12; ");
}

TEST(BarChartGeometry, DrawsOneSeriesInCloseRows) {
    const BarChartData data = {{"A", "B", "C"}, {{{0, 50}, {2, 100}, {3, 9}, {7, 9}}}, 100};
    EXPECT_EQ(told(data, 214, BarChartStyle::column()), "14,0 200x66 66\n"
                                                        "50 14,5 100x12; 100 14,49 200x12; \n"
                                                        "0,5 6x12; 0,27 6x12; 0,49 6x12; \n")
        << "a bar without a slot is left out";
    EXPECT_EQ(told({{"long label"}, {{{0, 50}}}, 50}, 100, BarChartStyle::column(), 20), "48,0 52x26 26\n"
                                                                                         "50 48,7 52x12; \n"
                                                                                         "0,3 40x20; \n");
}

TEST(BarChartGeometry, StaysInsideAndReadableForAnyData) {
    std::vector<BarChartData> charts = {{}, threeRepositories, {{"", ""}, {{{0, -5}, {1, 0}}}, 0}};
    BarChartData many{std::vector<std::string>(20, std::string(300, 'n')), {}, 1'000'000'000'000'000};
    for (std::int64_t series = 0; series < 40; ++series)
        many.series.push_back({{0, 1}, {19, series * 25'000'000'000'000}, {5, largest}});
    charts.push_back(many);
    for (const BarChartData& data : charts) {
        for (const double width : awkwardLengths) {
            for (const BarChartStyle& style : {BarChartStyle::grouped(), BarChartStyle::column()}) {
                const BarChartGeometry chart(data, width, sixPointText(), style);
                const RectF box{0, 0, usableLength(width), chart.height()};
                EXPECT_GE(chart.height(), static_cast<double>(data.slotLabels.size()) * style.slotHeight);
                for (const auto& mark : chart.marks()) {
                    ASSERT_TRUE(isWithin(mark.rect, chart.slots()[mark.slot].rect));
                    ASSERT_GE(mark.rect.height, BarChartGeometry::minimumBarHeight);
                    ASSERT_TRUE(mark.tokens <= 0 || box.width < 10 || mark.rect.width >= 2);
                }
                for (const auto& slot : chart.slots())
                    ASSERT_TRUE(isWithin(slot.labelRect, box) && slot.labelRect.right() <= chart.plot().x);
                for (const auto& tick : chart.ticks())
                    ASSERT_TRUE(isWithin(tick.rect.value_or(box), box));
            }
        }
    }
}

} // namespace
