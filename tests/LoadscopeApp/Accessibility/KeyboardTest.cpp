// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// When the focus shows its ring, and what the keyboard does in charts.
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/BarChart.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

namespace loadscope::testing {
namespace {

TEST(FocusRing, ShowsOnlyWhileTheUserWorksWithTheKeyboard) {
    PushButton button(PushButton::Kind::secondary, "Choose");
    button.show();
    button.activateWindow();
    button.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&button));
    EXPECT_TRUE(FocusRing::isWanted(&button)) << "nobody watches";
    const KeyboardUse use;
    EXPECT_FALSE(FocusRing::isWanted(&button));
    QTest::keyClick(&button, Qt::Key_Control);
    EXPECT_FALSE(FocusRing::isWanted(&button)) << "the beginning of a shortcut";
    QTest::keyClick(&button, Qt::Key_Tab);
    EXPECT_TRUE(FocusRing::isWanted(&button));
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_FALSE(FocusRing::isWanted(&button));
}

/// A chart in a window, the place of what is active in it, and whatever it lives on.
struct Chart {
    std::shared_ptr<void> owner;
    QWidget* widget = nullptr;
    std::function<int()> current;
};

Chart bars() {
    auto chart = std::make_shared<BarChart>(
        BarChart::Kind::grouped, BarChartData{{"One", "Two", "Three"}, {{{0, 5}, {1, 6}, {2, 7}}}, 10},
        std::vector<BarChart::Series>{{"a", 0}});
    chart->resize(400, 200);
    return {chart, chart.get(), [chart = chart.get()] { return chart->currentMark(); }};
}

Chart trend() {
    auto card = std::make_shared<QWidget>();
    auto* chart = new TrendChart(card.get());
    const std::vector<RecordedScan> history{record(1, "a", day(1), 1), record(2, "a", day(2), 2),
                                            record(3, "a", day(3), 3)};
    chart->setPresentation(std::make_shared<TrendsPresentation>(history, std::nullopt, Timestamp{}));
    chart->resize(400, 260);
    return {card, chart, [chart] { return chart->currentMark(); }};
}

Chart donut() {
    auto page = std::make_shared<ReportPage>(reportOf(sampleResult()));
    auto* chart = page->find<DonutChart>();
    return {page, chart, [chart] { return chart->active() ? static_cast<int>(*chart->active()) : -1; }};
}

TEST(Charts, AreWalkedWithTheWindowAndForgetTheirMarkWithTheKeyboard) {
    for (const auto& make : {bars, trend, donut}) {
        for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            const Chart chart = make();
            SCOPED_TRACE(chart.widget->metaObject()->className());
            chart.widget->setLayoutDirection(direction);
            QWidget* window = chart.widget->window();
            window->show();
            window->activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(window));
            chart.widget->setFocus();
            const bool mirrored = direction == Qt::RightToLeft;
            QTest::keyClick(chart.widget, Qt::Key_Home);
            EXPECT_EQ(chart.current(), 0);
            QTest::keyClick(chart.widget, mirrored ? Qt::Key_Left : Qt::Key_Right);
            EXPECT_EQ(chart.current(), 1);
            QTest::keyClick(chart.widget, mirrored ? Qt::Key_Right : Qt::Key_Left);
            EXPECT_EQ(chart.current(), 0);
            chart.widget->setAttribute(Qt::WA_UnderMouse, false); // the pointer may be anywhere
            chart.widget->clearFocus();
            EXPECT_EQ(chart.current(), -1);
        }
    }
}

} // namespace
} // namespace loadscope::testing
