// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

RecordedScan scan(const std::string& path, int day, std::int64_t total,
                  std::vector<RecordedCategory> categories = {}, const std::string& tool = "claude") {
    return {UUID::generate(),
            path.substr(path.rfind('/') + 1),
            path,
            localTime(2026, 11, day),
            total,
            std::move(categories),
            tool,
            {}};
}

TEST(ComparePresentation, TellsWhatIsMissingToCompare) {
    const ComparePresentation codexOnly({scan("/a", 1, 5, {}, "codex")});
    EXPECT_EQ(codexOnly.emptyState(),
              (EmptyStateText{"No recorded scans yet",
                              "Scan two repositories and their latest results appear here side by side."}));
    ASSERT_EQ(codexOnly.leaderboardGroups().size(), 1U);
    EXPECT_EQ(codexOnly.leaderboardGroups()[0].label, "Codex");
    const ComparePresentation one({scan("/a", 1, 5), scan("/a", 2, 12345)});
    EXPECT_FALSE(one.hasComparison());
    EXPECT_EQ(one.emptyState(),
              (EmptyStateText{
                  "Only one repository recorded",
                  "a measured 12,345 tokens. Choose a second repository and scan it to compare the two."}));
}

TEST(ComparePresentation, RanksRepositoriesAndTellsEqualNamesApart) {
    const ComparePresentation page({scan("/x/app", 1, 10000), scan("/y/app", 2, 65000), scan("/c", 2, 12000),
                                    scan("/x/app", 3, 12000), scan("/c", 4, 12000),
                                    scan("/c", 4, 7, {}, "codex")});
    std::string text;
    for (const auto& group : page.leaderboardGroups()) {
        for (const auto& [row, trend] : ComparePresentation::rows(group)) {
            text += std::to_string(*row.rank) + " | " + row.title + " | " + row.detail + " | " + row.value +
                    " " + row.valueCaption + " | " + trend.text + " " + trend.symbol + "\n";
        }
    }
    EXPECT_EQ(text,
              R"(1 | app — /y/app | Claude Code · 1 scan · latest Nov 2, 2026 | 65,000 Excessive | First scan 
2 | app — /x/app | Claude Code · 2 scans · latest Nov 3, 2026 | 12,000 Lean | +2,000 arrow.up.right
3 | c | Claude Code · 2 scans · latest Nov 4, 2026 | 12,000 Lean | ±0 equal
1 | c | Codex · 1 scan · latest Nov 4, 2026 | 7 Lean | First scan 
)");
    ASSERT_EQ(page.columns().size(), 3U);
    EXPECT_EQ(page.columns()[0].label, "app — /x/app");
    EXPECT_EQ(page.columns()[2].label, "c");
    EXPECT_EQ(ComparePresentation::text(page.columns()[1]).pill, "Excessive · over 60,000");
    LeaderboardEntry entry{scan("/c", 4, 12000), 10000, 2};
    EXPECT_EQ(TrendPillText::of(entry).text, "+2,000");
    entry.latest.model = "claude-opus-5";
    EXPECT_EQ(TrendPillText::of(entry).text, "+2,000") << "the scan before does not tell";
    entry.previousModel = "claude-sonnet-5";
    EXPECT_EQ(TrendPillText::of(entry), (TrendPillText{"other model", "", std::nullopt}));
    EXPECT_EQ(TrendPillText::of(TrendDirection::down, -7000),
              (TrendPillText{"-7,000", "arrow.down.right", OpinionBand::lean}));
}

TEST(ComparePresentation, GivesEveryCategoryItsPlaceInEveryChart) {
    const std::string withheld = RecordedCategoryName::withheld;
    const ComparePresentation page(
        {scan("/a", 1, 1, {{"System prompt", 3000}, {withheld, 500}, {withheld, 200}}),
         scan("/b", 2, 1, {{"System prompt", 2800}, {"Memory files", 900}, {withheld, 700}})});
    const BarChartData chart = page.combinedChart();
    EXPECT_EQ(chart.slotLabels,
              (std::vector<std::string>{"System prompt", withheld, "Memory files", withheld}));
    EXPECT_EQ(chart.maximum, 3000);
    std::string bars;
    for (const auto& series : chart.series) {
        for (const auto& bar : series) {
            bars += std::to_string(bar.slot) + ":" + std::to_string(bar.tokens) + " ";
        }
        bars += "| ";
    }
    EXPECT_EQ(bars, "0:3000 1:500 3:200 | 0:2800 2:900 1:700 | ");
    EXPECT_EQ(page.columnChart(page.columns()[1]).slotLabels, chart.slotLabels);
    EXPECT_EQ(ComparePresentation({}).maximumRowTokens(), 1);

    std::vector<RecordedScan> many;
    for (int i = 0; i < 7; ++i) {
        many.push_back(scan("/r" + std::to_string(i), 1, i));
    }
    EXPECT_EQ(ComparePresentation(many).columns()[5].paletteIndex, 0U);
}

TEST(ComparePresentation, KeepsColoursAndScaleWhateverIsChosenAndOnAnyPage) {
    std::vector<RecordedScan> history;
    for (int i = 0; i < 26; ++i)
        history.push_back(scan("/r" + std::to_string(i), 1, i, {{"System prompt", 100 * (i + 1)}}));
    const ComparePresentation all(history);
    EXPECT_EQ(all.pageCount(), 3U);
    EXPECT_EQ(all.pageText(), "Repositories 1 to 12 of 26");
    EXPECT_EQ(all.choiceSummary(), "All 26 repositories are compared.");
    const std::string second = all.columns()[1].scan.repositoryPath;
    const ComparePresentation last(history, {{all.columns()[0].scan.repositoryPath}, 99});
    EXPECT_EQ(last.page(), 2U);
    EXPECT_EQ(last.pageText(), "Repositories 25 to 25 of 25");
    EXPECT_EQ(last.choiceSummary(), "25 of 26 repositories are compared.");
    EXPECT_EQ(last.combinedChart().series.size(), 1U);
    const std::int64_t largest = 2'600;
    EXPECT_TRUE(all.maximumRowTokens() == largest && last.combinedChart().maximum <= largest);
    const ComparePresentation one(history, {{all.columns()[0].scan.repositoryPath}, 0});
    EXPECT_EQ(one.columns()[0].scan.repositoryPath, second);
    EXPECT_EQ(one.columns()[0].paletteIndex, all.columns()[1].paletteIndex);
    EXPECT_EQ(one.columnChart(one.columns()[0]).maximum, last.combinedChart().maximum)
        << "pages can be held against each other";
}

} // namespace
