// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/BandMeter.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/ScoreGauge.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/SelectionLine.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Scoring/HealthScore.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QClipboard>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

using Item = MarkedWidget::Item;

struct Breakdown {
    explicit Breakdown(const ReportPage& page)
        : donut(*page.find<DonutChart>()),
          table(*page.find<ReportTable>(QStringLiteral("Rows by category"))),
          line(*page.find<SelectionLine>()) {}
    DonutChart& donut;
    ReportTable& table;
    SelectionLine& line;
};

/// Counts what a change costs.
class EventCount : public QObject {
public:
    explicit EventCount(QWidget& root) {
        for (QWidget* widget : root.findChildren<QWidget*>())
            widget->installEventFilter(this);
    }
    int layouts = 0;
    QSet<QObject*> painted;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) ++layouts;
        if (event->type() == QEvent::Paint) painted.insert(watched);
        return false;
    }
};

TEST(Breakdown, HighlightsTheSameRowInRingAndTable) {
    ReportPage page(reportOf(sampleResult()));
    Breakdown shown(page);
    ReportPage::hover(&shown.donut, ChartShapes::point(shown.donut.ring().middleOf(0)));
    ReportPage::settle();
    EventCount count(page.page);
    ReportPage::hover(&shown.donut, ChartShapes::point(shown.donut.ring().middleOf(1)));
    EXPECT_EQ(shown.line.text(), QStringLiteral("Memory files 16.2%"));
    EXPECT_EQ(shown.table.active(), Item(1));
    QApplication::processEvents();
    EXPECT_EQ(count.layouts, 0);

    ReportPage::hover(&shown.donut, ChartShapes::point(shown.donut.ring().center()));
    EXPECT_EQ(shown.line.text(), QStringLiteral("Hover a segment for its share."));
    ReportPage::hover(&shown.table, shown.table.rowArea(0).center());
    EXPECT_EQ(shown.donut.active(), Item(0));
    EXPECT_EQ(shown.line.text(), QStringLiteral("System tools 46.9%"));

    QTest::keyClick(&shown.donut, Qt::Key_Right);
    EXPECT_EQ(shown.table.active(), Item(1));
    QTest::keyClick(&shown.donut, Qt::Key_End);
    QTest::keyClick(&shown.donut, Qt::Key_Right);
    EXPECT_EQ(shown.donut.active(), Item(0));
    QTest::keyClick(&shown.donut, Qt::Key_Escape);
    EXPECT_EQ(shown.table.active(), Item());
    QTest::keyClick(&shown.table, Qt::Key_Down);
    EXPECT_EQ(shown.donut.active(), Item(0));
}

TEST(Breakdown, HighlightsARowWithoutASectorInTheTableOnly) {
    ProbeResult probe = sampleResult();
    probe.selfReportedSlabs = {{"System prompt", 45'000}, {"Skills", -20}};
    ReportPage page(reportOf(probe));
    Breakdown shown(page);
    ReportPage::hover(&shown.table, shown.table.rowArea(0).center());
    const std::size_t skills = shown.table.rows().size() - 1;
    ReportPage::hover(&shown.table, shown.table.rowArea(skills).center());
    EXPECT_EQ(shown.table.active(), Item(skills));
    EXPECT_EQ(shown.donut.active(), Item());
}

TEST(Breakdown, CopiesTheNameOfTheActiveRowOrItsSelection) {
    ReportPage page(reportOf(sampleResult()));
    Breakdown shown(page);
    QTest::keyClick(&shown.table, Qt::Key_Down);
    QTest::keySequence(&shown.table, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("System tools"));
    QTest::mouseDClick(&shown.table, Qt::LeftButton, {}, shown.table.rowArea(2).center());
    EXPECT_EQ(shown.table.selectedText(), shown.table.rows()[2].name);
}

TEST(Treemap, DescribesTheTileUnderThePointerAndByKeys) {
    InstructionFileSet files;
    files.repositoryFiles = {
        {"/r/b/CLAUDE.md", 400}, {"/r/a/CLAUDE.md", 400}, {"/r/" + std::string(4'000, 'x'), 4'000}};
    ReportPage page(reportOf(sampleResult(), files));
    auto* treemap = page.find<TreemapView>();
    ASSERT_NE(treemap, nullptr);
    EventCount count(page.page);
    ReportPage::hover(treemap, ChartShapes::point(treemap->tiles().tiles()[1].center()));
    EXPECT_EQ(treemap->tip().title(), QStringLiteral("/r/a/CLAUDE.md"));
    EXPECT_EQ(treemap->tip().detail(), QStringLiteral("100 estimated tokens · 0.2% of total"));
    ReportPage::hover(treemap, ChartShapes::point(treemap->tiles().tiles()[2].center()));
    EXPECT_EQ(treemap->tip().title(), QStringLiteral("/r/b/CLAUDE.md"));
    EXPECT_LE(count.layouts, 2) << "only the tip may be placed";
    QTest::keyClick(treemap, Qt::Key_Home);
    EXPECT_EQ(treemap->active(), Item(0));
    EXPECT_TRUE(treemap->tip().isVisible());
    EXPECT_TRUE(treemap->rect().contains(treemap->tip().geometry()));
    QTest::keyClick(treemap, Qt::Key_Escape);
    EXPECT_FALSE(treemap->tip().isVisible());
}

TEST(ReportMotion, SpringsTheMarkerAndCountsTheScoreOnceUnlessUnwelcome) {
    ProbeResult probe = sampleResult(95'000);
    probe.contextWindow.reset();
    for (const bool reduced : {false, true}) {
        AppTheme::current().force(Appearance::light, reduced);
        ReportPage page(reportOf(probe));
        auto* meter = page.find<BandMeter>();
        auto* gauge = page.find<ScoreGauge>();
        if (!reduced) {
            EXPECT_TRUE(eventually([&] { return meter->shownPosition() > 0.793; })) << "no overshoot";
        }
        EXPECT_TRUE(eventually([&] { return meter->shownPosition() == 95.0 / 120; }));
        EXPECT_TRUE(eventually([&] { return gauge->shownScore() == HealthScore::value(95'000); }));
    }
    AppTheme::current().force(Appearance::light, true);
}

TEST(ReportExtremes, StayInTheirBoxesWithFewWidgets) {
    struct Case {
        int rows;
        int files;
        std::int64_t total;
        QSize size;
    };
    const Case cases[] = {{0, 0, 0, {706, 600}},
                          {1, 1, 1, {1, 1}},
                          {1, 2'000, 1, {930, 780}},
                          {500, 1, 9'000'000'000'000'000, {706, 600}},
                          {500, 2'000, 9'000'000'000'000'000, {706, 600}}};
    for (const auto& [rows, files, total, size] : cases) {
        SCOPED_TRACE(::testing::Message() << rows << " rows, " << files << " files, total " << total);
        ProbeResult probe = sampleResult(total);
        probe.contextWindow.reset();
        probe.selfReportedSlabs = manySlabs(rows);
        ReportPage page(reportOf(probe, manyFiles(files)), size);
        EXPECT_LT(page.page.findChildren<QWidget*>().size(), 130);
        if (auto* treemap = page.find<TreemapView>()) {
            QTest::keyClick(treemap, Qt::Key_End);
            EXPECT_TRUE(treemap->rect().contains(treemap->tip().geometry()));
            for (const RectF& tile : treemap->tiles().tiles())
                EXPECT_TRUE(QRectF(treemap->rect()).contains(ChartShapes::rect(tile)) || tile.isEmpty());
        }
        page.page.grab();
    }
}

} // namespace
} // namespace loadscope::testing
