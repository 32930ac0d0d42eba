// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Screenshots/HistoryScenes.h"

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Pages/Compare/ChoiceCard.h"
#include "LoadscopeApp/Pages/Compare/ColumnCard.h"
#include "LoadscopeApp/Pages/Compare/CompareView.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "tools/Screenshots/HistoryBuilder.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace loadscope::screenshots {
namespace {

Categories typical(std::int64_t total, std::int64_t withheld) {
    return {{"System tools", total * 46 / 100},
            {"System prompt", 6'900},
            {"MCP tools", total * 12 / 100},
            {"Repository instructions", total * 10 / 100},
            {RecordedCategoryName::withheld, withheld},
            {"Skills", 1'500}};
}

/// Five weeks of work: one repository by both tools, three by one of them.
std::vector<RecordedScan> demo(bool withWindows) {
    History history;
    const std::int64_t web[] = {31'200, 33'900, 33'600, 34'100, 47'300,
                                61'400, 60'200, 58'000, 52'000, 45'000};
    for (int i = 0; i < 10; ++i) {
        history.add("web-app", at(285 + 4 * i + i % 3, 20, 31), web[i], typical(web[i], 2'875))
            .by(i < 3   ? "2.1.275"
                : i < 8 ? "2.1.300"
                        : "2.1.330",
                i < 6 ? "claude-sonnet-4-6" : "claude-sonnet-5");
        if (withWindows) history.window(200'000);
    }
    const std::int64_t codex[] = {22'400, 23'100, 26'200, 39'300, 41'300, 41'200};
    for (int i = 0; i < 6; ++i) {
        history.add("web-app", at(285 + 7 * i, 20, 32), codex[i], {}, RecordedScan::codexTool)
            .by(i < 4 ? "0.125.0" : "0.169.0");
        if (withWindows) history.window(272'000);
    }
    for (int i = 0; i < 12; ++i) {
        Categories categories = typical(84'790 + 375 * i, 2'400);
        categories[2].tokens = 44'000;
        categories.push_back({RecordedCategoryName::withheld, 700});
        history.add("monorepo", at(287 + 3 * i, 16, 47), 84'790 + 375 * i, std::move(categories))
            .by("2.1.330", i < 11 ? "claude-sonnet-4-6" : "claude-sonnet-5");
        if (withWindows) history.window(200'000);
    }
    for (int i = 0; i < 11; ++i) {
        history.add("payments-service", at(286 + 3 * i, 11, 5), 39'500 - 900 * i, {},
                    RecordedScan::codexTool);
        if (withWindows) history.window(200'000);
    }
    history.add("design-tokens", at(324, 9, 4), 18'342,
                {{"System tools", 14'000},
                 {"System prompt", 3'100},
                 {"Repository instructions", 900},
                 {RecordedCategoryName::withheld, 340},
                 {"Skills", 1'200}});
    if (withWindows) history.window(200'000);
    return history.scans();
}

std::vector<RecordedScan> twoHundred() {
    History history;
    Categories many;
    for (int i = 0; i < 20; ++i)
        many.push_back({"Category number " + std::to_string(i + 1), 400 + 731 * ((i * 7) % 20)});
    for (int i = 0; i < 200; ++i) {
        const std::int64_t total = 28'000 + 9'000 * ((i * 37) % 11) / 3;
        history.add("web-app", at(1 + i, 9, i % 60), total, many);
        if (i % 8 == 0) history.path("/src/other-" + std::to_string(i));
    }
    return history.scans();
}

std::vector<RecordedScan> extremes() {
    const std::string hostile = "<b>bold</b> & \u202Eexe.txt";
    return History()
        .add("same name", at(1, 0, 0), 0)
        .add("same name", at(1, 0, 0), 1'000'000'000'000'000, {{"System tools", 999'999'999'999'999}})
        .add("same name", at(1, 0, 0), 12'000, {{"System tools", 9'000}, {hostile, 1}},
             RecordedScan::codexTool)
        .add("same name", at(300, 0, 0), 1, {{"System tools", 1}})
        .path("/home/dev/a/rather/long/path/to/another/checkout/of/the/very/same/repository")
        .add(hostile, at(200, 1, 0), 45'000,
             {{"A category whose name is long enough to be cut twice", 45'000}})
        .scans();
}

std::vector<RecordedScan> several(int count) {
    History history;
    for (int i = 0; i < count; ++i)
        history.add("repository-" + std::to_string(i + 1), at(40 + i, 8, 0), 9'000 + 2'300 * ((i * 11) % 40),
                    typical(9'000 + 2'300 * ((i * 11) % 40), 100L * i));
    return history.scans();
}

void showTrends(Stage& stage) {
    stage.choose("/src/web-app");
    stage.view.setPage(AppPage::trends);
    stage.settle();
}

/// The band of the first card selected with the mouse.
void showSelection(Stage& stage) {
    stage.view.setPage(AppPage::compare);
    stage.settle();
    auto* pill = stage.view.findChild<ColumnCard*>()->findChild<Pill*>();
    QMouseEvent press(QEvent::MouseButtonPress, {4, 4}, pill->mapToGlobal(QPointF(4, 4)), Qt::LeftButton,
                      Qt::LeftButton, {});
    QCoreApplication::sendEvent(pill, &press);
}

Scene compare(const QString& name, std::vector<RecordedScan> history) {
    return {QStringLiteral("compare-") + name, [](Stage& stage) { stage.view.setPage(AppPage::compare); },
            std::move(history)};
}

} // namespace

std::vector<Scene> historyScenes() {
    const auto open = [](Stage& stage) {
        stage.view.setPage(AppPage::overview);
        stage.recent.check();
        stage.settle([&stage] {
            const auto& all = stage.recent.folders();
            return std::any_of(all.begin(), all.end(), [](const auto& folder) { return folder.isMissing; });
        });
    };
    const std::vector<RecordedScan> one = History().add("web-app", at(325, 20, 31), 45'000).scans();
    return {
        {QStringLiteral("trends-demo"),
         [](Stage& stage) {
             showTrends(stage);
             auto* chart = stage.view.findChild<TrendChart*>();
             chart->setActive(static_cast<std::size_t>(chart->markCount()) - 3);
         },
         demo(false)},
        {QStringLiteral("trends-windows"), showTrends, demo(true)},
        {QStringLiteral("trends-chosen"),
         [](Stage& stage) {
             showTrends(stage);
             auto* chart = stage.view.findChild<TrendChart*>();
             for (const std::size_t scan : {std::size_t{0}, std::size_t{3}})
                 chart->choose(scan);
         },
         demo(false)},
        {QStringLiteral("trends-method"),
         [](Stage& stage) {
             showTrends(stage);
             stage.view.findChild<TrendsView*>()->findChild<CollapsibleSection*>()->setExpanded(true);
         },
         one},
        {QStringLiteral("trends-200"), showTrends, twoHundred()},
        {QStringLiteral("trends-extremes"),
         [](Stage& stage) {
             stage.choose("/src/same name");
             stage.view.setPage(AppPage::trends);
         },
         extremes()},
        {QStringLiteral("trends-delete"),
         [](Stage& stage) {
             showTrends(stage);
             stage.view.findChild<TrendsView*>()->confirmClear();
             stage.settle();
         },
         demo(false)},
        {QStringLiteral("overview-recent"), open, demo(false)},
        compare(QStringLiteral("demo"), demo(true)),
        {QStringLiteral("compare-rescan"),
         [](Stage& stage) {
             stage.view.setPage(AppPage::compare);
             stage.settle();
             stage.tools.probe->answer(testing::FakeProbe::Hang{});
             stage.batch.start({RepoSelection("/src/gone"),
                                RepoSelection(stage.folder.path().toStdString(), "web-app"),
                                RepoSelection("/src/monorepo"), RepoSelection("/src/payments-service")},
                               {}, false);
             stage.settle([&stage] { return stage.batch.items()[1].stage == ScanStages::claudeStage; });
             stage.batch.cancel(3);
         },
         demo(true)},
        {QStringLiteral("compare-copying"), showSelection, demo(true)},
        compare(QStringLiteral("one"), one),
        compare(QStringLiteral("extremes"), extremes()),
        compare(QStringLiteral("6"), several(6)),
        compare(QStringLiteral("40"), several(40)),
        {QStringLiteral("compare-choice"),
         [](Stage& stage) {
             stage.view.setPage(AppPage::compare);
             stage.settle();
             auto* choice = stage.view.findChild<ChoiceCard*>();
             choice->setExpanded(true);
             stage.settle();
             choice->findChildren<QCheckBox*>()[1]->click();
             stage.settle();
             auto* page = stage.view.findChild<CompareView*>();
             page->verticalScrollBar()->setValue(choice->mapTo(page->widget(), QPoint()).y() - 20);
             stage.settle();
         },
         several(16)},
    };
}

} // namespace loadscope::screenshots
