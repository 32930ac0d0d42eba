// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"

#include "LoadscopeCore/Geometry/ValueAxis.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

using std::chrono::hours;
using std::chrono::seconds;

TEST(TrendChartData, LeavesRoomAboveTheLargestTotal) {
    const std::pair<std::int64_t, std::int64_t> cases[] = {
        {-1, 69000},    {0, 69000},       {60000, 69000},    {60001, 69001},
        {80000, 92000}, {100000, 114999}, {largest, largest}};
    for (const auto& [total, bound] : cases) {
        EXPECT_EQ(TrendChartData::upperBoundFor(total), bound) << total;
    }
}

TEST(ValueAxis, DividesByRoundNumbersThatCompactNotationShowsExactly) {
    const std::tuple<std::int64_t, std::size_t, std::string> cases[] = {
        {69000, 4, "0 20K 40K 60K "},
        {69000, 8, "0 10K 20K 30K 40K 50K 60K "},
        {0, 4, "0 1 "},
        {3, 4, "0 1 2 3 "},
        {1'150'000'000'000'000, 4, "0 500T 1000T "}};
    for (const auto& [maximum, intervals, expected] : cases) {
        std::string labels;
        for (const ValueTick& tick : ValueAxis::ticks(maximum, intervals)) {
            labels += tick.label + " ";
        }
        EXPECT_EQ(labels, expected);
    }
    for (const std::int64_t maximum : {std::int64_t{-1}, std::int64_t{17}, largest / 3, largest}) {
        EXPECT_GE(ValueAxis::ticks(maximum, 0).size(), 2U);
        EXPECT_LE(ValueAxis::ticks(maximum, 99).size(), 11U);
    }
}

TEST(MonotoneCurve, NeverLeavesTheRangeOfTheTwoPointsItJoins) {
    EXPECT_TRUE(monotoneCurve({}).empty());
    EXPECT_TRUE(monotoneCurve(std::vector<PointF>{{1, 1}}).empty());
    std::mt19937 random(3);
    for (int round = 0; round < 500; ++round) {
        std::vector<PointF> points(2 + random() % 40);
        double x = 0;
        for (PointF& point : points) {
            x += random() % 4 == 0 ? 0 : std::pow(10, static_cast<double>(random() % 9) - 6);
            point = {x, static_cast<double>(random() % 3 == 0 ? 50 : random() % 200)};
        }
        const std::vector<CurveSegment> curve = monotoneCurve(points);
        ASSERT_EQ(curve.size(), points.size() - 1);
        for (std::size_t i = 0; i < curve.size(); ++i) {
            ASSERT_EQ(curve[i].end, points[i + 1]);
            const auto [low, high] = std::minmax(points[i].y, points[i + 1].y);
            for (const PointF control : {curve[i].control1, curve[i].control2}) {
                ASSERT_TRUE(control.y >= low - 1e-9 && control.y <= high + 1e-9)
                    << "round " << round << " at " << i;
                ASSERT_TRUE(control.x >= points[i].x - 1e-9 && control.x <= points[i + 1].x + 1e-9);
            }
        }
    }
    const std::vector<CurveSegment> line = monotoneCurve(std::vector<PointF>{{0, 0}, {3, 3}, {6, 6}});
    EXPECT_EQ(line[0], (CurveSegment{{1, 1}, {2, 2}, {3, 3}})) << "points on a line give a line";
}

TEST(NearestDate, PrefersTheEarlierOfTwoEquallyNear) {
    const Timestamp t{};
    const std::vector<Timestamp> dates = {t, t + seconds(10), t + seconds(10), t + seconds(30)};
    const std::pair<Timestamp, std::size_t> cases[] = {
        {t - hours(1), 0},    {t + seconds(5), 0},   {t + seconds(6), 1},  {t + seconds(20), 1},
        {t + seconds(21), 3}, {Timestamp::max(), 3}, {Timestamp::min(), 0}};
    for (const auto& [date, nearest] : cases) {
        EXPECT_EQ(nearestDate(dates, date), nearest) << date.time_since_epoch().count();
    }
    EXPECT_EQ(nearestDate({}, t), std::nullopt);
    EXPECT_EQ(nearestDate(std::vector{Timestamp::min(), Timestamp::max()}, Timestamp::max()), 1U);
}

TrendChartData someChart(Timestamp start) {
    return {{{{start + hours(240), 61000}, {start, 31200}, {start + hours(480), 45000}},
             {{start, 22000}, {start + hours(480), 41200}}},
            70150,
            true};
}

TEST(TrendChartGeometry, LaysOutTheChartAsText) {
    const Timestamp start = localTime(2026, 10, 12);
    const TrendChartGeometry chart(someChart(start), {700, 260}, sixPointText());
    std::string text = asText(chart.plot()) + "\n";
    for (const auto* ticks : {&chart.valueTicks(), &chart.timeTicks()}) {
        for (const auto& tick : *ticks) {
            text += tick.label + " " + asText(tick.position) + "; ";
        }
        text += "\n";
    }
    for (const auto& threshold : chart.thresholds()) {
        text += threshold.label + " " + asText(threshold.y) + " in " + asText(threshold.labelRect) + "; ";
    }
    text += "\n";
    for (const auto& mark : chart.marks()) {
        text += std::to_string(mark.series) + "/" + std::to_string(mark.point) + " " + asText(mark.position) +
                "; ";
    }
    EXPECT_EQ(text, "26,6 669x234\n"
                    "0 240; 20K 173; 40K 107; 60K 40; \n"
                    "Oct 13 43; Oct 17 176; Oct 21 310; Oct 25 444; Oct 29 578; \n"
                    "Heavy 30,000 140 in 30,124 72x12; Excessive 60,000 40 in 30,24 96x12; \n"
                    "0/1 26,136; 1/0 26,167; 0/0 360,37; 0/2 695,90; 1/1 695,103; ");

    EXPECT_EQ(chart.markAt(-100), 0U) << "on equal dates the first series";
    EXPECT_EQ(chart.markAt(chart.plot().center().x), 2U);
    EXPECT_EQ(chart.markAt(1e9), 3U);
    EXPECT_EQ(chart.markNearest(start + hours(120)), 0U) << "halfway, the earlier one";
    EXPECT_EQ(chart.tooltipRect(0, {120, 50}), (RectF{0, -52, 120, 50}));
    EXPECT_EQ(chart.tooltipRect(3, {120, 50}), (RectF{580, -52, 120, 50}));
    EXPECT_EQ(chart.tooltipRect(3, {900, 50}).x, 0) << "wider than the chart: its start is what can be read";
}

TEST(TrendChartGeometry, MarksChangesHalfwayWithoutCollisions) {
    const Timestamp start = localTime(2026, 10, 12);
    const auto texts = [&](std::vector<TrendChartData::Change> changes, double width) {
        TrendChartData data = someChart(start);
        data.changes = std::move(changes);
        const TrendChartGeometry chart(data, {width, 260}, sixPointText());
        std::string text = asText(chart.plot().y) + "\n";
        for (const auto& change : chart.changes())
            text += asText(change.top) +
                    (change.labelRect ? " " + change.label + " in " + asText(*change.labelRect) : "") + "\n";
        return text;
    };
    // Points of the first series stand at 26, 360 and 695, those of the second at 26 and 695.
    EXPECT_EQ(texts({{0, 2, false, "2.1.330", ""}, {0, 0, false, "2.1.300", ""}}, 700),
              "14\n193,0 2.1.300 in 197,0 42x12\n527,0 2.1.330 in 531,0 42x12\n");
    EXPECT_EQ(
        texts({{0, 2, true, "model changed", ""}, {0, 2, false, "2.1.330", ""}, {1, 1, false, "0.2", ""}},
              700),
        "28\n360,14 0.2 in 364,14 18x12\n527,0 model changed in 531,0 78x12\n"
        "527,14 2.1.330 in 531,14 42x12\n")
        << "one of another kind has a row of its own";
    EXPECT_EQ(texts({{0, 2, false, "2.1.330", ""}, {1, 1, false, std::string(56, 'x'), ""}}, 700),
              "14\n360,14\n527,0 2.1.330 in 531,0 42x12\n")
        << "the newer label stays";
    EXPECT_EQ(texts({{0, 2, true, "m", ""}, {1, 1, false, std::string(27, 'x'), ""}}, 700),
              "28\n360,14 xxxxxxxxxxxxxxxxxxxxxxxxxxx in 194,14 162x12\n527,0 m in 531,0 6x12\n")
        << "to the left of its line when another one would cross it";
    EXPECT_EQ(texts({{0, 2, true, std::string(40, 'm'), "short"}}, 300), "14\n227,0 short in 231,0 30x12\n");
}

TEST(TrendChartGeometry, KeepsEveryMarkAndLabelInsideForAnySize) {
    const Timestamp start = localTime(2026, 10, 12);
    const std::vector<TrendChartData::Point> sameMoment(9, {start, -7});
    const std::vector<TrendChartData::Point> extremes = {
        {Timestamp::min(), largest}, {start, 0}, {Timestamp::max(), 1'000'000'000'000'000}};
    TrendChartData charts[] = {{},
                               {{{}, {}}},
                               {{sameMoment, sameMoment}, 69000, true},
                               someChart(start),
                               {{extremes}, largest, true}};
    for (TrendChartData& data : charts)
        for (std::size_t series = 0; series < data.series.size(); ++series)
            for (std::size_t point = 0; point < data.series[series].size(); ++point)
                data.changes.push_back({series, point, point % 3 == 1, "a label", "a"});
    for (const TrendChartData& data : charts) {
        forAwkwardSizes([&](SizeF size, const RectF& box) {
            SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
            const TrendChartGeometry chart(data, size, sixPointText());
            ASSERT_TRUE(isFinite(chart.plot()));
            for (const auto* ticks : {&chart.valueTicks(), &chart.timeTicks()}) {
                for (const auto& tick : *ticks) {
                    ASSERT_TRUE(std::isfinite(tick.position) && isWithin(tick.rect.value_or(box), box))
                        << tick.label;
                }
            }
            for (const auto& mark : chart.marks()) {
                ASSERT_TRUE(isWithin({mark.position.x, mark.position.y, 0, 0}, chart.plot()));
            }
            for (const auto& [band, value, label, y, rect] : chart.thresholds()) {
                ASSERT_TRUE(rect.x >= 0 && rect.y >= 0 && rect.right() <= box.width + 1e-6) << label;
            }
            for (std::size_t i = 0; i < chart.changes().size(); ++i) {
                const auto& change = chart.changes()[i];
                ASSERT_TRUE(isWithin(change.labelRect.value_or(box), box));
                ASSERT_TRUE(isWithin({change.top.x, chart.plot().y, 0, 0}, chart.plot()));
                for (std::size_t other = 0; other < i; ++other) {
                    const auto& first = chart.changes()[other].labelRect;
                    if (!first || !change.labelRect || first->y != change.labelRect->y) continue;
                    ASSERT_TRUE(first->right() < change.labelRect->x || change.labelRect->right() < first->x);
                }
            }
            EXPECT_EQ(chart.markAt(size.width / 2).has_value(), !chart.marks().empty());
        });
    }
}

TEST(TrendChartGeometry, SetsLabelsOfThresholdsThatNearlyMeetInOneRow) {
    TrendChartData data = someChart(localTime(2026, 10, 12));
    data.upperBound = 1'000'000'000;
    const TrendChartGeometry chart(data, {700, 260}, sixPointText());
    const RectF& heavy = chart.thresholds()[0].labelRect;
    EXPECT_GT(chart.thresholds()[1].labelRect.x, heavy.right());
}

} // namespace
