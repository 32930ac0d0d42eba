// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/Support/HistoryRecords.h"

#include <QApplication>
#include <QImage>
#include <QTest>
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

TEST(TrendsView, ComparesTwoChosenPoints) {
    TrendsView view;
    view.resize(900, 1600);
    view.refresh({scan(1, 30'000, "2.1.300", "claude-sonnet-5"),
                  scan(5, 58'000, "2.1.330", "claude-sonnet-5"),
                  scan(9, 60'000, "2.1.330", "claude-sonnet-5")},
                 std::nullopt);
    view.show();
    auto* chart = view.findChild<TrendChart*>();
    const auto says = [&](const QString& text) { return !spoken(view).filter(text).isEmpty(); };
    EXPECT_TRUE(says(QStringLiteral("Choose two points")));
    chart->setFocus();
    QTest::keyClick(chart, Qt::Key_Home);
    QTest::keyClick(chart, Qt::Key_Return);
    EXPECT_TRUE(says(QStringLiteral("Choose a second point")));
    QTest::keyClick(chart, Qt::Key_Right);
    QTest::keyClick(chart, Qt::Key_Space);
    EXPECT_TRUE(says(QStringLiteral("30,000 → 58,000 tokens (+28,000, +93.3%)")));
    EXPECT_TRUE(says(QStringLiteral("The tool's version changed (2.1.300 before, 2.1.330 now)")));
    // A third takes the place of the first; the older one always comes first.
    QAccessibleInterface* marks = QAccessible::queryAccessibleInterface(chart);
    marks->child(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(marks->child(2)->state().checked && !marks->child(0)->state().checked);
    EXPECT_TRUE(says(QStringLiteral("58,000 → 60,000 tokens")));
    QTest::keyClick(chart, Qt::Key_Space);
    EXPECT_TRUE(says(QStringLiteral("Choose a second point")));
}

} // namespace
} // namespace loadscope::testing
