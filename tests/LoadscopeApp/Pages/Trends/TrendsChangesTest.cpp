// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/Support/HistoryRecords.h"

#include <QApplication>
#include <QImage>
#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

RecordedScan scan(int number, std::int64_t total, const std::string& version, const std::string& model) {
    RecordedScan scan = record(number, "web-app", day(number), total);
    scan.toolVersion = version;
    scan.model = model;
    return scan;
}

TEST(TrendsView, TellsWhereTheToolChanged) {
    TrendsView view;
    view.resize(900, 1'600);
    view.refresh({scan(1, 30'000, "2.1.300", "claude-sonnet-5"), scan(5, 58'000, "2.1.330", "claude-opus-5")},
                 std::nullopt);
    view.show();
    QApplication::processEvents();
    const QStringList texts = spoken(view);
    for (const char* text :
         {"Claude Code · Jan 5, 2026: 58,000 tokens, Heavy, version changed: 2.1.300 → 2.1.330, "
          "model changed: claude-sonnet-5 → claude-opus-5",
          "other model", "1 recorded scan with this model"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;

    auto& chart = *view.findChild<TrendChart*>();
    const QImage picture = chart.grab().toImage();
    ASSERT_EQ(chart.shapes().changes().size(), 2U);
    const RectF tip = chart.shapes().tooltipRect(1, {10, 10});
    for (const TrendChartGeometry::Change& change : chart.shapes().changes()) {
        ASSERT_TRUE(change.labelRect) << change.label;
        EXPECT_LE(tip.bottom(), change.labelRect->y) << "the tip stands above the labels";
    }
    const auto x = static_cast<int>(chart.shapes().changes().front().top.x);
    const auto y = static_cast<int>(chart.shapes().plot().y) + 3;
    EXPECT_NE(picture.pixelColor(x, y), picture.pixelColor(x + 3, y)) << "the line is drawn";
}

} // namespace
} // namespace loadscope::testing
