// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChart.h"
#include "tools/Screenshots/HistoryBuilder.h"
#include "tools/Screenshots/HistoryScenes.h"

namespace loadscope::screenshots {
namespace {

constexpr std::int64_t huge = 1'000'000'000'000'000;
const std::string longName = "a-repository-whose-name-goes-on-and-on-until-it-is-wider-than-any-card-can-be";
const Categories three{{"System tools", 9'000}, {RecordedCategoryName::withheld, 700}, {"Skills", 90}};

History oneOfEach() {
    return History()
        .add("web-app", at(20, 9, 0), 41'000, three)
        .add("web-app", at(20, 9, 1), 30'000, {}, RecordedScan::codexTool);
}

History daily(int count) {
    History history;
    for (int i = 0; i < count; ++i)
        history.add("web-app", at(300 + i, 9, 30), 25'000 + 1'300 * ((i * 13) % 29), three);
    return history;
}

History oneSecond() {
    History history;
    for (const std::int64_t total : {12'000, 31'000, 58'000})
        history.add("web-app", at(300, 9, 30), total, three)
            .add("web-app", at(300, 9, 30), total / 2, {}, RecordedScan::codexTool);
    return history;
}

History years() {
    History history;
    for (int year = 0; year < 9; ++year)
        history.add("web-app", at(40 + 365 * year - 2'920, 9, 30), 20'000 + 6'000 * year, three);
    return history;
}

/// A machine whose clock once stood at its beginning, and once far ahead.
History clockSetBack() {
    return History()
        .add("web-app", at(300, 9, 30), 40'000, three)
        .add("web-app", Timestamp(), 44'000, three)
        .add("web-app", at(30'000, 9, 30), 52'000, three)
        .add("web-app", at(301, 9, 30), 30'000, three);
}

History columns(int count, std::int64_t total, std::int64_t window) {
    History history;
    for (int i = 0; i < count; ++i)
        history.add("repository-" + std::to_string(i + 1), at(300 + i, 8, 0), total + 9'100L * i, three)
            .window(window);
    return history;
}

Scene trends(const char* name, const History& history, const std::string& shown = "web-app",
             bool hovers = false) {
    return {QStringLiteral("trends-") + QLatin1String(name),
            [shown, hovers](Stage& stage) {
                stage.choose("/src/" + shown);
                stage.view.setPage(AppPage::trends);
                stage.settle();
                if (hovers) stage.view.findChild<TrendChart*>()->setActive(0);
            },
            history.scans()};
}

Scene compare(const char* name, const History& history) {
    return {QStringLiteral("compare-") + QLatin1String(name),
            [](Stage& stage) { stage.view.setPage(AppPage::compare); }, history.scans()};
}

} // namespace

std::vector<Scene> historyEdgeScenes() {
    return {
        trends("other", daily(3), "new"),
        trends("pair", oneOfEach()),
        trends("two", daily(2), "web-app", true),
        trends("31", daily(31)),
        trends("second", oneSecond(), "web-app", true),
        trends("years", years()),
        trends("clock", clockSetBack()),
        trends("zero", History().add("web-app", at(1, 9, 0), 0).add("web-app", at(2, 9, 0), 0)),
        trends("huge",
               History()
                   .add("web-app", at(1, 9, 0), 0)
                   .add("web-app", at(2, 9, 0), huge)
                   .add("web-app", at(3, 9, 0), huge / 2),
               "web-app", true),
        trends("long",
               History()
                   .add(longName, at(1, 9, 0), 29'000, {{longName, 4'000}, {longName + longName, 900}})
                   .add(longName, at(2, 9, 0), 61'000, {{longName, 4'000}}),
               longName),
        compare("codex", History().add("web-app", at(1, 9, 0), 40'000, {}, RecordedScan::codexTool)),
        compare("names", History()
                             .add("web-app", at(1, 9, 0), 40'000, three)
                             .add("web-app", at(2, 9, 0), 50'000, three)
                             .path("/home/dev/clones/web-app")),
        compare("four", columns(4, 20'000, 200'000)),
        compare("huge", columns(3, huge, 200'000)),
        compare("zero", History().add("a", at(1, 9, 0), 0).add("b", at(1, 9, 0), 0, {{"System tools", 0}})),
        compare("long", History()
                            .add(longName, at(1, 9, 0), 29'000, {{longName, 4'000}})
                            .add(longName + "-2", at(2, 9, 0), 61'000, {{longName + longName, 900}})),
    };
}

} // namespace loadscope::screenshots
