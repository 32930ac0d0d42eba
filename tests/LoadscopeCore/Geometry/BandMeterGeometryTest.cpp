// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BandMeterGeometry.h"

#include "LoadscopeCore/Geometry/GaugeGeometry.h"
#include "LoadscopeCore/Geometry/LabelRow.h"
#include "LoadscopeCore/Geometry/Motion.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

namespace {

TEST(BandMeterGeometry, PlacesTheMarkerOfATotalBeyondTheNormalScale) {
    const auto segment = [](const auto& s) { return shown(OpinionBands::rawValue(s.band), s.rect); };
    const auto label = [](const auto& l) { return (l.isActive ? "*" : "") + shown(l.text, l.rect); };
    const auto tick = [](const auto& t) { return shown(t.text, t.x, t.rect); };
    const auto told = [&](std::int64_t total, OpinionBand active, double width) {
        const BandMeterGeometry meter(total, active, width, sixPointText());
        return shown(meter.bar(), meter.markerCenter(meter.markerPosition()), meter.height()) + "; " +
               listed(meter.segments(), segment) + "\n" + listed(meter.labels(), label) + "\n" +
               listed(meter.ticks(), tick);
    };
    EXPECT_EQ(told(95000, OpinionBand::excessive, 612),
              "6,0 600x16 481,8 48; lean 6,0 150x16; heavy 156,0 150x16; excessive 306,0 300x16; \n"
              "Lean 69,20 24x12; Heavy 216,20 30x12; *Excessive 429,20 54x12; \n"
              "30,000 156 138,36 36x12; 60,000 306 288,36 36x12; 120,000 606 570,36 42x12; ");
    EXPECT_EQ(
        told(10, OpinionBand::lean, 212),
        "6,0 200x16 6.02,8 48; lean 6,0 66.67x16; heavy 72.67,0 66.67x16; excessive 139.33,0 66.67x16; \n"
        "*Lean 27.33,20 24x12; Heavy 91,20 30x12; Excessive 145.67,20 54x12; \n"
        "30,000 72.67 54.67,36 36x12; 60,000 139.33 121.33,36 36x12; 90,000 206 176,36 "
        "36x12; ");
    EXPECT_EQ(told(1000, OpinionBand::heavy, 40),
              "6,0 28x16 6.31,8 48; lean 6,0 9.33x16; heavy 15.33,0 9.33x16; excessive 24.67,0 9.33x16; \n"
              "Lean none; *Heavy 5,20 30x12; Excessive none; \n"
              "30,000 15.33 none; 60,000 24.67 none; 90,000 34 4,36 36x12; ")
        << "the active band's title is the last to go";
}

TEST(BandMeterGeometry, KeepsLabelsApartAndInsideForAnyTotalAndWidth) {
    for (const std::int64_t total : {std::int64_t{-5}, std::int64_t{45000}, std::int64_t{9} << 50, largest}) {
        for (const double width : awkwardLengths) {
            const BandMeterGeometry meter(total, OpinionBand::lean, width, sixPointText());
            const RectF box{0, 0, usableLength(width), meter.height()};
            double free = 0;
            for (const auto& tick : meter.ticks()) {
                EXPECT_TRUE(isWithin(tick.rect.value_or(box), box)) << total << " in " << width;
                EXPECT_TRUE(!tick.rect || tick.rect->x >= std::exchange(free, tick.rect->right()));
            }
            for (const auto& segment : meter.segments())
                EXPECT_TRUE(isWithin(segment.rect, box)) << total << " in " << width;
            EXPECT_TRUE(std::isfinite(meter.markerCenter(meter.markerPosition()).x));
        }
    }
}

TEST(LabelRow, PushesLabelsApartAndDropsTheLeastImportant) {
    const auto edges = [](const std::vector<RowLabel>& labels) {
        return listed(placeLabelsInRow(labels, 0, 100, 4), [](const auto& edge) { return shown(edge); });
    };
    EXPECT_EQ(edges({}), "");
    EXPECT_EQ(edges({{20, 20}, {80, 20}}), "10; 70; ");
    EXPECT_EQ(edges({{50, 20}, {52, 20}}), "40; 64; ") << "too close";
    EXPECT_EQ(edges({{0, 20}, {100, 20}}), "0; 80; ") << "at the ends";
    EXPECT_EQ(edges({{95, 20}, {98, 20}, {100, 20}}), "32; 56; 80; ") << "all at the right end";
    EXPECT_EQ(edges({{10, 40, 1}, {50, 40, 0}, {90, 40, 2}}), "0; none; 60; ") << "no room for all";
    EXPECT_EQ(edges({{10, 40}, {50, 40}, {90, 40}}), "0; 44; none; ") << "of equal ones the last goes";
    EXPECT_EQ(edges({{10, 48}, {90, 48}}), "0; 52; ") << "just room for both";
    EXPECT_EQ(edges({{50, 101}}), "none; ");
}

TEST(GaugeGeometry, CountsUpToTheScoreOnAnOpenRing) {
    const auto sweep = [](double score) {
        return GaugeGeometry::make({0, 0, 100, 120}, 10, score).valueSweep;
    };
    EXPECT_EQ(each(sweep, -3, 0, 50, 100, 250, NAN), "0 0 135 270 270 0");
    const auto ring = [](RectF bounds, double thickness) {
        const GaugeGeometry gauge = GaugeGeometry::make(bounds, thickness, 50);
        return shown(gauge.center, gauge.radius, gauge.thickness);
    };
    EXPECT_EQ(ring({5, 0, 100, 120}, 10), "55,60 45 10");
    EXPECT_EQ(ring({0, 0, 16, 90}, 10), "8,45 4 8");
    EXPECT_EQ(ring({0, 0, 0, NAN}, 10), "0,0 0 0");
    const auto counted = [](double progress) { return GaugeGeometry::countingValue(66, progress); };
    EXPECT_EQ(each(counted, 0, 0.5, 1), "0 57.75 66");
}

TEST(Motion, SpringSettlesWithinItsDuration) {
    const auto bouncing = [](double time) { return Motion::spring(time, 0.4, 0.82); };
    const auto critical = [](double time) { return Motion::spring(time, 0.4, 1); };
    const auto duration = [](double damping) { return Motion::springDuration(0.4, damping); };
    EXPECT_EQ(each(bouncing, 0, 0.1, 0.2, 0.3, 0.4), "0 0.52 0.91 1.01 1.01");
    EXPECT_EQ(each(critical, 0, 0.1, 0.2, 0.3, 0.4), "0 0.47 0.82 0.95 0.99");
    EXPECT_EQ(each(duration, 0.5, 0.82, 1, 2, 0), "1.18 0.72 0.59 0.59 0");
    EXPECT_EQ(Motion::spring(1, 0, 0.82), 1);
    EXPECT_EQ(Motion::springDuration(0, 1), 0);
    for (const double damping : {0.3, 0.82, 1.0, 2.0}) {
        const double end = Motion::springDuration(0.4, damping);
        for (double t = end; t < 2 * end; t += end / 100)
            EXPECT_NEAR(Motion::spring(t, 0.4, damping), 1, 0.001) << damping << " at " << t;
    }
}

} // namespace
