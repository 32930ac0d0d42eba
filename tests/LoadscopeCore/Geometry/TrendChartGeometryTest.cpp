// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"

#include "LoadscopeCore/Geometry/ValueAxis.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

namespace {

using std::chrono::hours, std::chrono::seconds;

TEST(TrendChartData, LeavesRoomAboveTheLargestTotal) {
    EXPECT_EQ(each(TrendChartData::upperBoundFor, -1, 0, 60000, 60001, 80000, 100000, largest),
              "69000 69000 69000 69001 92000 114999 9223372036854775807");
}

TEST(ValueAxis, DividesByRoundNumbersThatCompactNotationShowsExactly) {
    const auto labels = [](std::int64_t maximum, std::size_t intervals) {
        return listed(ValueAxis::ticks(maximum, intervals),
                      [](const ValueTick& t) { return shown(t.label, t.fraction); });
    };
    EXPECT_EQ(labels(69000, 4), "0 0; 20K 0.29; 40K 0.58; 60K 0.87; ");
    EXPECT_EQ(labels(69000, 8), "0 0; 10K 0.14; 20K 0.29; 30K 0.43; 40K 0.58; 50K 0.72; 60K 0.87; ");
    EXPECT_EQ(labels(60000, 3), "0 0; 20K 0.33; 40K 0.67; 60K 1; ");
    EXPECT_EQ(labels(0, 4), "0 0; 1 1; ");
    EXPECT_EQ(labels(3, 4), "0 0; 1 0.33; 2 0.67; 3 1; ");
    EXPECT_EQ(labels(1'150'000'000'000'000, 4), "0 0; 500T 0.43; 1000T 0.87; ");
    EXPECT_EQ(labels(7'000'000'000'000'000'000, 2), "0 0; 5,000,000T 0.71; ");
    EXPECT_EQ(labels(100, 0), labels(100, 1));
    EXPECT_EQ(labels(110, 99), labels(110, 10));
    for (const std::int64_t maximum : {std::int64_t{-1}, std::int64_t{17}, largest / 3, largest}) {
        EXPECT_GE(ValueAxis::ticks(maximum, 0).size(), 2U);
        EXPECT_LE(ValueAxis::ticks(maximum, 99).size(), 11U);
    }
    EXPECT_EQ(ValueAxis::fraction(1, 0), 1);
}

TEST(MonotoneCurve, NeverLeavesTheRangeOfTheTwoPointsItJoins) {
    const auto told = [](const std::vector<PointF>& points) {
        return listed(monotoneCurve(points),
                      [](const auto& s) { return shown(s.control1, s.control2, s.end); });
    };
    EXPECT_EQ(told({}) + told({{1, 1}}), "");
    EXPECT_EQ(told({{0, 0}, {3, 3}, {6, 6}}), "1,1 2,2 3,3; 4,4 5,5 6,6; ") << "points on a line give a line";
    EXPECT_EQ(told({{0, 0}, {0, 9}}), "0,3 0,6 0,9; ") << "one moment is a vertical line";
    EXPECT_EQ(told({{0, 0}, {3, 3}, {6, 12}, {9, 0}, {12, 0}, {15, 6}}),
              "1,1 2,1 3,3; 4,5 5,12 6,12; 7,12 8,0 9,0; 10,0 11,0 12,0; 13,0 14,4 15,6; ");
    EXPECT_EQ(told({{0, 0}, {3, 1}, {6, 41}}), "1,0.05 2,0 3,1; 4,2 5,27.67 6,41; ")
        << "a steep rise is held back";
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
            for (const PointF control : {curve[i].control1, curve[i].control2})
                ASSERT_TRUE(control.y >= low - 1e-9 && control.y <= high + 1e-9 &&
                            control.x >= points[i].x - 1e-9 && control.x <= points[i + 1].x + 1e-9)
                    << "round " << round << " at " << i;
        }
    }
}

TEST(NearestDate, PrefersTheEarlierOfTwoEquallyNear) {
    const Timestamp t{};
    const std::vector<Timestamp> dates = {t, t + seconds(10), t + seconds(10), t + seconds(30)};
    const auto nearest = [&](Timestamp date) { return nearestDate(dates, date); };
    EXPECT_EQ(each(nearest, Timestamp::min(), t + seconds(5), t + seconds(6), t + seconds(20),
                   t + seconds(21), Timestamp::max()),
              "0 0 1 1 3 3");
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
    const auto tick = [](const auto& t) { return shown(t.label, t.position, "in", t.rect); };
    const auto threshold = [](const auto& t) { return shown(t.label, t.y, t.labelRect); };
    const auto mark = [](const auto& m) { return shown(m.series, m.point, m.position); };
    const auto told = [&](SizeF size) {
        const TrendChartGeometry chart(someChart(start), size, sixPointText());
        return shown(chart.plot()) + "\n" + listed(chart.valueTicks(), tick) + "\n" +
               listed(chart.timeTicks(), tick) + "\n" + listed(chart.thresholds(), threshold) + "\n" +
               listed(chart.marks(), mark);
    };
    EXPECT_EQ(told({700, 260}),
              "26,6 668.65x234\n"
              "0 240 in 12,234 6x12; 20K 173.29 in 0,167.29 18x12; 40K 106.57 in 0,100.57 18x12; 60K 39.86 "
              "in 0,33.86 18x12; \n"
              "Oct 13 42.72 in 24.72,248 36x12; Oct 17 176.45 in 158.45,248 36x12; Oct 21 310.18 in "
              "292.18,248 36x12; Oct 25 443.91 in 425.91,248 36x12; Oct 29 577.63 in 559.63,248 36x12; \n"
              "Heavy 30,000 139.93 30,123.93 72x12; Excessive 60,000 39.86 30,23.86 96x12; \n"
              "0 1 26,135.93; 1 0 26,166.61; 0 0 360.32,36.52; 0 2 694.65,89.89; 1 1 694.65,102.57; ");
    EXPECT_EQ(told({60, 40}),
              "26,6 28.65x14\n"
              "0 20 in 12,14 6x12; 50K 10.02 in 0,4.02 18x12; \n"
              "Oct 12 26 in 8,28 36x12; \n"
              "Heavy 30,000 14.01 26,0 34x12; Excessive 60,000 8.03 26,0 34x12; \n"
              "0 1 26,13.77; 1 0 26,15.61; 0 0 40.32,7.83; 0 2 54.65,11.02; 1 1 54.65,11.78; ");

    const TrendChartGeometry chart(someChart(start), {700, 260}, sixPointText());
    EXPECT_EQ(chart.lines()[0].segments.back().end, chart.marks()[3].position);
    EXPECT_EQ(chart.markAt(-100), 0U) << "on equal dates the first series";
    EXPECT_EQ(chart.markAt(chart.plot().center().x), 2U);
    EXPECT_EQ(chart.markAt(1e9), 3U);
    EXPECT_EQ(chart.markNearest(start + hours(120)), 0U) << "halfway, the earlier one";
    EXPECT_EQ(TrendChartGeometry(someChart(start), {0, 0}, sixPointText()).markAt(0), 2U)
        << "the middle of no width";
    EXPECT_EQ(shown(chart.tooltipRect(0, {120, 50})), "0,-52 120x50");
    EXPECT_EQ(shown(chart.tooltipRect(2, {120, 50})), "300.32,-52 120x50");
    EXPECT_EQ(shown(chart.tooltipRect(3, {120, 50})), "580,-52 120x50");
    EXPECT_EQ(chart.tooltipRect(3, {900, 50}).x, 0) << "wider than the chart: its start is what can be read";
    // Discs of 26 and 90 square points.
    EXPECT_NEAR(std::pow(TrendChartGeometry::pointRadius, 2) * std::numbers::pi, 26, 0.01);
    EXPECT_NEAR(std::pow(TrendChartGeometry::selectedPointRadius, 2) * std::numbers::pi, 90, 0.02);
}

TEST(TrendChartGeometry, MarksChangesHalfwayWithoutCollisions) {
    const Timestamp start = localTime(2026, 10, 12);
    const auto texts = [&](std::vector<TrendChartData::Change> changes, double width) {
        TrendChartData data = someChart(start);
        data.changes = std::move(changes);
        const TrendChartGeometry chart(data, {width, 260}, sixPointText());
        return shown(chart.plot().y, chart.tooltipRect(0, {9, 9}).y, "") +
               listed(chart.changes(), [](const auto& c) { return shown(c.top, c.label, c.labelRect); });
    };
    // Points of the first series stand at 26, 360 and 695, those of the second at 26 and 695.
    EXPECT_EQ(texts({{0, 2, false, "2.1.330", ""}, {0, 0, false, "2.1.300", ""}}, 700),
              "14 -17 193.16,0 2.1.300 197.16,0 42x12; 527.49,0 2.1.330 531.49,0 42x12; ");
    EXPECT_EQ(
        texts({{0, 2, true, "model changed", ""}, {0, 2, false, "2.1.330", ""}, {1, 1, false, "0.2", ""}},
              700),
        "28 -17 360.32,14 0.2 364.32,14 18x12; 527.49,0 model changed 531.49,0 78x12; 527.49,14 2.1.330 "
        "531.49,14 42x12; ")
        << "one of another kind has a row of its own";
    EXPECT_EQ(texts({{0, 2, false, "2.1.330", ""}, {1, 1, false, std::string(56, 'x'), ""}}, 700),
              "14 -17 360.32,14 xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx none; 527.49,0 "
              "2.1.330 531.49,0 42x12; ")
        << "the newer label stays";
    EXPECT_EQ(texts({{0, 2, true, "m", ""}, {1, 1, false, std::string(27, 'x'), ""}}, 700),
              "28 -17 360.32,14 xxxxxxxxxxxxxxxxxxxxxxxxxxx 194.32,14 162x12; 527.49,0 m 531.49,0 6x12; ")
        << "to the left of its line when another one would cross it";
    EXPECT_EQ(texts({{0, 2, true, std::string(40, 'm'), "short"}}, 300),
              "14 -17 227.49,0 short 231.49,0 30x12; ");
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
            SCOPED_TRACE(shown(size.width, size.height));
            const TrendChartGeometry chart(data, size, sixPointText());
            ASSERT_TRUE(isWithin(chart.plot(), {0, 0, 1e9, 1e9}));
            for (const auto* ticks : {&chart.valueTicks(), &chart.timeTicks()})
                for (const auto& tick : *ticks)
                    ASSERT_TRUE(std::isfinite(tick.position) && isWithin(tick.rect.value_or(box), box))
                        << tick.label;
            for (const auto& mark : chart.marks())
                ASSERT_TRUE(isWithin({mark.position.x, mark.position.y, 0, 0}, chart.plot()));
            for (const auto& [band, value, label, y, rect] : chart.thresholds())
                ASSERT_TRUE(rect.x >= 0 && rect.y >= 0 && rect.right() <= box.width + 1e-6) << label;
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
    for (const auto& [bound, apart] :
         {std::pair(1'000'000'000, true), {590'000, true}, {580'000, false}, {69'000, false}}) {
        TrendChartData data = someChart(localTime(2026, 10, 12));
        data.upperBound = bound;
        const TrendChartGeometry chart(data, {700, 260}, sixPointText());
        EXPECT_EQ(chart.thresholds()[1].labelRect.x > chart.thresholds()[0].labelRect.right(), apart)
            << bound;
    }
}

} // namespace
