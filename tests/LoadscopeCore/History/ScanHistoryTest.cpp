// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryExport.h"

#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

using ScanHistory::leaderboard;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

std::vector<std::string> names(const std::vector<RecordedScan>& scans) {
    std::vector<std::string> list;
    for (const RecordedScan& scan : scans)
        list.push_back(scan.repositoryName + std::to_string(scan.total));
    return list;
}

TEST(ScanHistory, RanksTheHeaviestFirst) {
    const std::vector<RecordedScan> history{
        record(1, "A", day(1), 10000), record(2, "B", day(2), 15000), record(3, "C", day(2), 12000),
        record(5, "C", day(3), 99999, {}, "codex"), record(4, "A", day(3), 12000)};
    const std::vector<LeaderboardEntry> entries = leaderboard(history, "claude");
    EXPECT_EQ(entries, (std::vector<LeaderboardEntry>{
                           {history[1], {}, 1}, {history[4], 10000, 2}, {history[2], {}, 1}}));
    EXPECT_EQ(entries.at(0).trend(), std::nullopt);
    EXPECT_EQ(leaderboard(history, "codex").size(), 1U);
    EXPECT_TRUE(leaderboard(history, "Codex").empty());
    EXPECT_EQ(
        nlohmann::json::parse(ScanHistoryExport::leaderboardJson("claude", entries)).at("entries").at(1),
        nlohmann::json::parse(R"({"repositoryName":"A","repositoryPath":"/src/A","total":12000,
                                        "previousTotal":10000,"model":null,"previousModel":null,"scanCount":2,"trend":"up","delta":2000})"));
    const std::string alone = ScanHistoryExport::leaderboardJson("codex", {entries.at(0)});
    EXPECT_NE(alone.find("\"previousTotal\": null"), std::string::npos) << alone;
    EXPECT_NE(alone.find("\"trend\": null,\n      \"delta\": null"), std::string::npos) << alone;
}

TEST(ScanHistory, ComparesEachScanWithTheOneBeforeIt) {
    const auto entry = [](std::int64_t before, std::int64_t after) {
        // The identifier decides between two scans of one second, not the place in the list.
        return leaderboard({record(2, "A", day(1), after), record(1, "A", day(1), before)}, "claude").at(0);
    };
    EXPECT_TRUE(entry(7, 7).trend() == TrendDirection::flat && entry(7, 7).delta() == 0);
    EXPECT_TRUE(entry(9, 8).trend() == TrendDirection::down && entry(9, 8).delta() == -1);
    EXPECT_EQ(entry(-2, most).delta(), most);
}

TEST(ScanHistory, ComparesNoTotalsOfTwoModels) {
    using Model = std::optional<std::string>;
    const std::tuple<Model, Model, bool> cases[] = {{std::nullopt, std::nullopt, true},
                                                    {"sonnet", "sonnet", true},
                                                    {"sonnet", "opus", false},
                                                    {std::nullopt, "opus", true},
                                                    {"sonnet", std::nullopt, true}};
    for (const auto& [before, after, isCompared] : cases) {
        std::vector<RecordedScan> history{record(1, "A", day(1), 100), record(2, "A", day(2), 300)};
        history[0].model = before;
        history[1].model = after;
        const LeaderboardEntry entry = leaderboard(history, "claude").at(0);
        const std::string name = before.value_or("-") + " " + after.value_or("-");
        EXPECT_EQ(entry.followsOtherModel(), !isCompared) << name;
        EXPECT_EQ(entry.delta(), isCompared ? std::optional(200) : std::nullopt) << name;
        EXPECT_EQ(entry.trend().has_value(), isCompared) << name;
        const auto json =
            nlohmann::json::parse(ScanHistoryExport::leaderboardJson("claude", {entry}))["entries"][0];
        EXPECT_EQ(json["previousTotal"], 100) << name;
        EXPECT_EQ(json["delta"].is_null(), !isCompared) << name;
        EXPECT_EQ(json["previousModel"].is_null(), !before) << name;
    }
}

TEST(ScanHistory, FindsWhatChangedBetweenTwoScans) {
    using enum ScanChange::Kind;
    const std::pair<const char*, const char*> told[] = {
        {"", ""}, {"1", "a"}, {"1", "a"}, {"2", "b"}, {"", ""}, {"", "b"}, {"3", ""}, {"3", "c"}, {"2", "c"}};
    std::vector<RecordedScan> scans;
    for (const auto& [version, model] : told) {
        scans.push_back(record(1, "A", day(1), 1));
        if (*version) scans.back().toolVersion = version;
        if (*model) scans.back().model = model;
    }
    EXPECT_EQ(ScanHistory::changes(scans), (std::vector<ScanChange>{{version, 3, "1", "2"},
                                                                    {model, 3, "a", "b"},
                                                                    {version, 6, "2", "3"},
                                                                    {model, 7, "b", "c"},
                                                                    {version, 8, "3", "2"}}));
    EXPECT_TRUE(ScanHistory::changes({}).empty());
}

TEST(ScanHistory, PicksTheNewestOfEachRepository) {
    RecordedScan twin = record(6, "a", day(1), 6);
    twin.repositoryPath = "/other/a";
    const std::vector<RecordedScan> history{
        record(5, "a", day(2), 1), record(4, "a", day(2), 2),
        record(3, "a", day(1), 3), twin,
        record(2, "B", day(9), 4), record(1, "B", day(9), 5, {}, "codex")};
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(ScanHistory::latestPerRepository(history, "claude")), (Names{"B4", "a6", "a2"}));
    EXPECT_EQ(names(ScanHistory::newestFirst(history)), (Names{"B4", "B5", "a1", "a2", "a6", "a3"}));
    EXPECT_EQ(names(ScanHistory::scans(history, "/src/a", "claude")), (Names{"a1", "a2", "a3"}));
    EXPECT_EQ(ScanHistory::mostRecentRepositoryPath(history), "/src/B");
    EXPECT_EQ(ScanHistory::mostRecentRepositoryPath({}), std::nullopt);
}

TEST(ScanHistory, LinesUpCategoriesOfSeveralScans) {
    const std::string other = RecordedCategoryName::withheld;
    const RecordedScan a = record(1, "A", day(1), 0, {{"System prompt", 3000}, {other, 500}, {other, 200}});
    const RecordedScan b =
        record(2, "B", day(1), 0, {{"System prompt", 2800}, {"Memory files", 900}, {other, 700}});
    const CategoryChartAxis axis = ScanHistory::categoryAxis({a, b});
    EXPECT_EQ(axis.entries(), (std::vector<CategoryChartAxis::Entry>{{"category-0", "System prompt"},
                                                                     {"category-1", other},
                                                                     {"category-2", "Memory files"},
                                                                     {"category-3", other}}));
    using Rows = std::vector<CategoryChartAxis::Row>;
    EXPECT_EQ(axis.rows(a.categories), (Rows{{"category-0", "System prompt", 3000},
                                             {"category-1", other, 500},
                                             {"category-3", other, 200}}));
    EXPECT_EQ(axis.rows({{"Skills", 1}, {"Memory files", 2}}), (Rows{{"category-2", "Memory files", 2}}));
    EXPECT_EQ(axis.label("category-2"), "Memory files");
    EXPECT_EQ(axis.label("category-4"), std::nullopt);
    EXPECT_TRUE(ScanHistory::categoryAxis({record(3, "C", day(1), 5)}).coordinates().empty());

    const RecordedScan huge = record(4, "D", day(1), 0, {{"B", most}, {"A", most}, {"A", most}});
    EXPECT_EQ(ScanHistory::categoryAxis({huge, huge}).rows(huge.categories),
              (Rows{{"category-2", "B", most}, {"category-0", "A", most}, {"category-1", "A", most}}));
}

TEST(ScanHistoryExport, DefusesAndQuotesCells) {
    RecordedScan scan = record(1, "=cmd|' /C calc'!A0", day(1), 45000);
    scan.repositoryPath = "/src/a,\"b\"\n\xff";
    scan.contextWindow = 200000;
    scan.toolVersion = "2.1.330";
    scan.model = "@sonnet,5";
    EXPECT_EQ(
        ScanHistoryExport::csv({scan, record(2, "-1", day(2), -5, {}, "codex")}),
        "date,repositoryName,repositoryPath,tool,total,contextWindow,band,toolVersion,model\r\n"
        "2026-01-01T00:00:00Z,'=cmd|' /C calc'!A0,\"/src/a,\"\"b\"\"\n\ufffd\",claude,45000,200000,heavy,"
        "2.1.330,\"'@sonnet,5\"\r\n"
        "2026-01-02T00:00:00Z,'-1,/src/-1,codex,-5,,lean,,\r\n");
}

TEST(ScanHistoryExport, GivesEachRecordItsBand) {
    EXPECT_EQ(nlohmann::json::parse(ScanHistoryExport::json({record(1, "A", day(1), 60001, {{"x", 2}})})),
              nlohmann::json::parse(R"({"scans":[{"band":"excessive","categories":[{"name":"x","tokens":2}],
                "date":"2026-01-01T00:00:00Z","id":"00000000-0000-4000-8000-000000000001",
                "repositoryName":"A","repositoryPath":"/src/A","tool":"claude","total":60001}]})"));
    RecordedScan told = record(1, "A", day(1), 0);
    told.toolVersion = "2.1.330";
    told.model = "claude-sonnet-5";
    const auto object = nlohmann::json::parse(ScanHistoryExport::json({told})).at("scans").at(0);
    EXPECT_EQ(object.at("toolVersion"), "2.1.330");
    EXPECT_EQ(object.at("model"), "claude-sonnet-5");
    EXPECT_EQ(ScanHistoryExport::json({}), "{\n  \"scans\": []\n}");
}

} // namespace
