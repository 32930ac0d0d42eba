// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BandMeterGeometry.h"

#include "LoadscopeCore/Geometry/GaugeGeometry.h"
#include "LoadscopeCore/Geometry/LabelRow.h"
#include "LoadscopeCore/Geometry/Motion.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

TEST(BandMeterGeometry, PlacesTheMarkerOfATotalBeyondTheNormalScale) {
    const BandMeterGeometry meter(95000, OpinionBand::excessive, 612, sixPointText());
    EXPECT_NEAR(meter.markerPosition(), 0.7917, 0.0001);
    EXPECT_EQ(meter.markerCenter(0), (PointF{6, 8}));
    std::string text = asText(meter.bar()) + "; " + asText(meter.markerCenter(meter.markerPosition())) + "; ";
    for (const auto& segment : meter.segments()) {
        text += asText(segment.rect) + "; ";
    }
    for (const auto& tick : meter.ticks()) {
        text += tick.text + " " + asText(tick.rect->center().x) + "; ";
    }
    for (const auto& label : meter.labels()) {
        text += (label.isActive ? "*" : "") + label.text + " " + asText(label.rect->center().x) + "; ";
    }
    EXPECT_EQ(text, "6,0 600x16; 481,8; 6,0 150x16; 156,0 150x16; 306,0 300x16; "
                    "30,000 156; 60,000 306; 120,000 591; Lean 81; Heavy 231; *Excessive 456; ");
}

TEST(BandMeterGeometry, KeepsLabelsApartAndInsideForAnyTotalAndWidth) {
    for (const std::int64_t total :
         {std::int64_t{-5}, std::int64_t{0}, std::int64_t{45000}, std::int64_t{9'000'000'000'000'000},
          std::numeric_limits<std::int64_t>::max()}) {
        for (const double width : awkwardLengths) {
            const BandMeterGeometry meter(total, OpinionBand::lean, width, sixPointText());
            const RectF box{0, 0, usableLength(width), meter.height()};
            double free = 0;
            for (const auto& tick : meter.ticks()) {
                if (!tick.rect) continue;
                EXPECT_TRUE(isFinite(*tick.rect) && isWithin(*tick.rect, box)) << total << " in " << width;
                EXPECT_GE(tick.rect->x, free);
                free = tick.rect->right();
            }
            for (const auto& segment : meter.segments()) {
                EXPECT_TRUE(isFinite(segment.rect) && isWithin(segment.rect, box))
                    << total << " in " << width;
            }
            EXPECT_TRUE(std::isfinite(meter.markerCenter(meter.markerPosition()).x));
        }
    }
    const BandMeterGeometry narrow(1000, OpinionBand::heavy, 40, sixPointText());
    EXPECT_FALSE(narrow.labels()[0].rect || narrow.labels()[2].rect);
    EXPECT_TRUE(narrow.labels()[1].rect) << "the active band's title is the last to go";
}

TEST(LabelRow, PushesLabelsApartAndDropsTheLeastImportant) {
    struct Case {
        std::string name;
        std::vector<RowLabel> labels;
        std::vector<std::optional<double>> expected;
    };
    const Case cases[] = {
        {"nothing", {}, {}},
        {"free", {{20, 20}, {80, 20}}, {10, 70}},
        {"too close", {{50, 20}, {52, 20}}, {40, 64}},
        {"at the ends", {{0, 20}, {100, 20}}, {0, 80}},
        {"all at the right end", {{95, 20}, {98, 20}, {100, 20}}, {32, 56, 80}},
        {"no room for all", {{10, 40, 1}, {50, 40, 0}, {90, 40, 2}}, {0, std::nullopt, 60}},
        {"wider than the row", {{50, 101}}, {std::nullopt}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(placeLabelsInRow(c.labels, 0, 100, 4), c.expected) << c.name;
    }
}

TEST(GaugeGeometry, CountsUpToTheScoreOnAnOpenRing) {
    const std::pair<double, double> sweeps[] = {{-3, 0}, {0, 0}, {50, 135}, {100, 270}, {250, 270}, {NAN, 0}};
    for (const auto& [shown, sweep] : sweeps) {
        EXPECT_EQ(GaugeGeometry::make({0, 0, 100, 120}, 10, shown).valueSweep, sweep) << shown;
    }
    EXPECT_EQ(GaugeGeometry::make({0, 0, 100, 120}, 10, 50).center, (PointF{50, 60}));
    EXPECT_EQ(GaugeGeometry::make({0, 0, 0, NAN}, 10, 50).radius, 0);
    EXPECT_EQ(GaugeGeometry::countingValue(66, 0), 0);
    EXPECT_EQ(GaugeGeometry::countingValue(66, 1), 66);
}

TEST(Motion, SpringSettlesWithinItsDuration) {
    EXPECT_EQ(Motion::spring(0, 0.4, 0.82), 0);
    EXPECT_EQ(Motion::spring(1, 0, 0.82), 1);
    for (const double damping : {0.3, 0.82, 1.0, 2.0}) {
        const double end = Motion::springDuration(0.4, damping);
        for (double t = end; t < 2 * end; t += end / 100) {
            EXPECT_NEAR(Motion::spring(t, 0.4, damping), 1, 0.001) << damping << " at " << t;
        }
    }
}

} // namespace
