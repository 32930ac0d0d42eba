// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

using Scans = std::vector<RecordedScan>;

RecordedScan scan(const std::string& name, int day, std::int64_t total, const std::string& tool = "claude",
                  std::optional<std::int64_t> window = {}) {
    return {
        UUID::generate(), name, "/src/" + name, localTime(2026, 11, day, 20, 31), total, {}, tool, window};
}

TrendsPresentation trends(const Scans& history, const std::optional<std::string>& selected = {}) {
    return {history, selected, localTime(2026, 11, 30)};
}

const Scans webApp = {scan("web-app", 3, 31200), scan("web-app", 3, 22000, "codex"), scan("other", 4, 80000),
                      scan("web-app", 16, 45000)};

TEST(TrendsPresentation, TellsWhyThereIsNoTrend) {
    struct Case {
        std::string name;
        Scans history;
        std::optional<std::string> selected;
        std::string header;
        EmptyStateText expected;
    };
    const std::string overTime = "tartup context over time, against the Lean, Heavy and Excessive bands.";
    const Case cases[] = {
        {"nothing",
         {},
         {},
         "S" + overTime,
         {"No recorded scans yet", "Scans are recorded locally as you run them. Run one scan, then another, "
                                   "and the trend appears here."}},
        {"another repository",
         webApp,
         "/src/new",
         "S" + overTime,
         {"No recorded scans yet",
          "Nothing recorded for this repository yet. Scan it twice and its trend appears here."}},
        {"one scan by each tool",
         {scan("app", 16, 1234), scan("app", 17, 9, "codex")},
         {},
         "app: s" + overTime,
         {"One scan recorded", "A trend needs at least two scans of app by the same tool. The latest Claude "
                               "Code scan measured 1,234 "
                               "tokens on Nov 16, 2026. Scan again to plot a line."}},
        {"one Codex scan",
         {scan("app", 17, 9, "codex")},
         "/src/app",
         "app: s" + overTime,
         {"One scan recorded", "A trend needs at least two scans of app by the same tool. The latest Codex "
                               "scan measured 9 tokens on "
                               "Nov 17, 2026. Scan again to plot a line."}},
    };
    for (const Case& c : cases) {
        const TrendsPresentation page = trends(c.history, c.selected);
        EXPECT_FALSE(page.hasTrend()) << c.name;
        EXPECT_EQ(page.headerLine(), c.header) << c.name;
        EXPECT_EQ(page.emptyState(), c.expected) << c.name;
    }
}

TEST(TrendsPresentation, SummarisesTheShownRepository) {
    const TrendsPresentation page = trends(webApp);
    EXPECT_TRUE(page.hasTrend());
    ASSERT_EQ(page.scans().size(), 3U);
    EXPECT_EQ(page.scans()[1].tool, "codex") << "on the same date Claude Code comes first";
    EXPECT_EQ(page.summaryDetail(), "Read from the Claude Code scans above. Two tools measure two different "
                                    "sessions, so their totals are never combined.");
    const std::vector<TrendsPresentation::Metric> expected = {
        {"Latest scan", "45,000", "Nov 16, 2026", std::nullopt},
        {"Band", "Heavy", "30,000–60,000", OpinionBand::heavy},
        {"Drift across recorded scans", "+13,800", "2 recorded Claude Code scans", OpinionBand::heavy}};
    EXPECT_EQ(page.metrics(), expected);
    EXPECT_EQ(page.tooltip(2).spoken(), "Claude Code · Nov 16, 2026: 45,000 tokens, Heavy");
    EXPECT_EQ(page.selectedScan(localTime(2026, 11, 4)), 0U);
    EXPECT_EQ(page.selectedScan(std::nullopt), std::nullopt);

    const std::pair<Scans, std::string> drifts[] = {{{scan("a", 1, 5), scan("a", 2, 5)}, "+0"},
                                                    {{scan("a", 1, 9000), scan("a", 2, 5)}, "-8,995"},
                                                    {{}, "+0"}};
    for (const auto& [history, drift] : drifts) {
        EXPECT_EQ(trends(history).metrics().back().value, drift);
        EXPECT_EQ(trends(history).metrics().back().tint, OpinionBand::lean);
    }
    EXPECT_EQ(trends({}, "/none").metrics().back().caption, "0 recorded Codex scans");
}

RecordedScan by(const std::string& version, const std::string& model, RecordedScan scan) {
    if (!version.empty()) scan.toolVersion = version;
    if (!model.empty()) scan.model = model;
    return scan;
}

TEST(TrendsPresentation, MarksWhatChangedBetweenTwoScans) {
    const TrendsPresentation page =
        trends({by("2.1.300", "sonnet", scan("a", 1, 100)), by("0.1", "", scan("a", 1, 7, "codex")),
                by("2.1.330", "sonnet", scan("a", 2, 200)), by("2.1.330", "opus\x1b[1m", scan("a", 3, 400)),
                by("0.2", "", scan("a", 3, 7, "codex")), scan("a", 4, 700),
                by("", "opus\x1b[1m", scan("a", 5, 900))});
    std::string marks;
    for (const auto& change : page.chart().changes)
        marks += std::to_string(change.series) + "/" + std::to_string(change.point) +
                 (change.isMajor ? " ! " : " ") + change.label + " (" + change.shortLabel + ")\n";
    EXPECT_EQ(marks, "0/1 2.1.330 (2.1.330)\n"
                     "0/2 ! model changed: sonnet → opus\\x1b[1m (model changed)\n"
                     "1/1 Codex 0.2 (Codex 0.2)\n");
    const char* spoken[] = {"100 tokens, Lean, version 2.1.300 · model sonnet",
                            "7 tokens, Lean, version 0.1",
                            "200 tokens, Lean, version changed: 2.1.300 → 2.1.330, model sonnet",
                            "400 tokens, Lean, version 2.1.330, model changed: sonnet → opus\\x1b[1m",
                            "7 tokens, Lean, version changed: 0.1 → 0.2",
                            "700 tokens, Lean",
                            "900 tokens, Lean, model opus\\x1b[1m"};
    for (std::size_t i = 0; i < std::size(spoken); ++i) {
        EXPECT_TRUE(page.tooltip(i).spoken().ends_with(std::string(": ") + spoken[i]))
            << page.tooltip(i).spoken();
        EXPECT_LE(page.tooltip(i).conditions.size(), page.mostConditionLines());
    }
    EXPECT_TRUE(page.chartCaption().ends_with("changed.")) << page.chartCaption();
    EXPECT_EQ(trends(webApp).mostConditionLines(), 0U);
    EXPECT_EQ(trends({by("1", "", scan("a", 1, 1))}).mostConditionLines(), 1U);
}

TEST(TrendsPresentation, MeasuresTheDriftWithinOneModel) {
    const std::string title = "Drift across recorded scans";
    const std::vector<std::pair<std::vector<std::string>, TrendsPresentation::Metric>> cases = {
        {{"", "x", ""}, {title, "+200", "3 recorded Claude Code scans", OpinionBand::heavy}},
        {{"x", "y", "y"}, {title, "+100", "2 recorded scans with this model", OpinionBand::heavy}},
        {{"x", "", "y"}, {title, "other model", "1 recorded scan with this model", std::nullopt}}};
    for (const auto& [models, drift] : cases) {
        Scans history;
        for (const std::string& model : models) {
            const int number = static_cast<int>(history.size()) + 1;
            history.push_back(by("", model, scan("a", number, 100 * number)));
        }
        EXPECT_EQ(trends(history).metrics().back(), drift) << models[0] << models[1] << models[2];
    }
}

TEST(TrendsPresentation, DrawsThresholdsOnlyWhereTheyJudgedEveryScan) {
    EXPECT_TRUE(trends(webApp).showsThresholds());
    EXPECT_EQ(trends(webApp).chartCaption(), "Hover the chart to read a single scan. Dashed lines mark the "
                                             "band thresholds, which are absolute anchors.");
    const std::string notDrawn = "Hover the chart to read a single scan. The band thresholds are not drawn: "
                                 "they are absolute anchors, while a point "
                                 "whose tool reported a context window is banded against that window, so "
                                 "such a point can sit above the Excessive "
                                 "line and still read Heavy.";
    EXPECT_EQ(trends({}).chartCaption(), notDrawn);
    const TrendsPresentation windowed =
        trends({scan("a", 1, 70000), scan("a", 2, 200000, "claude", 1'000'000)});
    EXPECT_FALSE(windowed.chart().showsThresholds);
    EXPECT_EQ(windowed.chartCaption(), notDrawn);
    EXPECT_EQ(windowed.chart().upperBound, 229999); // 200,000 times 1.15 falls just below 230,000
    EXPECT_EQ(windowed.metrics()[1].caption, "20.0% of its 1M window.");
}

TEST(TrendsPresentation, ListsTheNewestRunsAndCountsTheRecords) {
    const std::string kept =
        ", stored on this computer. Totals only — no instruction-file contents are ever written. "
        "The newest 200 are kept.";
    const std::string every = "Every recorded scan, newest first, across every repository.";
    const std::tuple<std::size_t, std::string, std::string, std::string> cases[] = {
        {1, every, "1 record — one per tool per scan — across 1 repository", "Delete 1 Recorded Scan"},
        {30, every, "30 records — one per tool per scan — across 2 repositories", "Delete 30 Recorded Scans"},
        {31, "The newest 30 of 31 recorded scans, across every repository.",
         "31 records — one per tool per scan — across 2 repositories", "Delete 31 Recorded Scans"}};
    for (const auto& [records, runs, data, button] : cases) {
        Scans history;
        for (std::size_t i = 0; i < records; ++i) {
            history.push_back(scan(i % 2 == 0 ? "a" : "b", static_cast<int>(i % 28) + 1, 0));
        }
        const TrendsPresentation page = trends(history);
        EXPECT_EQ(page.runsDetail(), runs);
        EXPECT_EQ(page.recordedDataDetail(), data + kept);
        EXPECT_EQ(page.clearConfirmationButton(), button);
        EXPECT_EQ(page.runs().size(), std::min<std::size_t>(records, 30));
    }
    const auto [row, tool] = trends(webApp).runs().front();
    EXPECT_EQ(row.title + " " + row.value + " " + row.valueCaption + " " + tool,
              "web-app 45,000 Heavy Claude Code");
    EXPECT_EQ(row.detail, LocaleFormat::dateAndTime(webApp[3].date) + " · No category estimates");
}

TEST(TrendsPresentation, NamesTheTwoLargestCategories) {
    RecordedScan s = scan("a", 1, 10);
    const std::pair<std::vector<RecordedCategory>, std::string> cases[] = {
        {{}, "No category estimates"},
        {{{"Skills", 900}}, "Skills 900"},
        {{{"Memory files", 2000}, {"System prompt", 3100}}, "System prompt 3.1K · Memory files 2K"},
        {{{"A", 1}, {"B", 1}, {"C", 1}, {"D", 2}}, "D 2 · A 1 · +2 more"}};
    for (const auto& [categories, expected] : cases) {
        s.categories = categories;
        s.tool = "claude";
        EXPECT_EQ(TrendsPresentation::categorySummary(s), expected);
        s.tool = "codex";
        EXPECT_EQ(TrendsPresentation::categorySummary(s),
                  "No categories — Codex does not report a breakdown.");
    }
}

} // namespace
