// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryExport.h"

#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

using ScanHistory::leaderboard;
using Word = std::optional<std::string>;

/// "NAME TOTAL" of each.
std::string named(const std::vector<RecordedScan>& scans) {
    return listed(scans, [](const RecordedScan& scan) { return shown(scan.repositoryName, scan.total); });
}
std::string path(const RecordedScan& scan) { return scan.repositoryPath; }

TEST(RecordedScan, WithholdsNamesThatCouldBePathsOrFiles) {
    const std::string eighty(80, 'x'), withheld = RecordedCategoryName::withheld;
    std::string accents;
    for (int count = 0; count < 80; ++count)
        accents += "e\u0301";
    EXPECT_EQ(withheld, "Other (name withheld)");
    const auto isKept = [&](const std::string& name) {
        return RecordedCategoryName::recorded("  " + name + "\n") == name;
    };
    for (const std::string& name :
         {std::string("System prompt"), std::string(".env"), std::string("ends."), std::string("v1.2-beta"),
          std::string("tab\there"), std::string("a.b-c d"), eighty, accents})
        EXPECT_TRUE(isKept(name)) << name;
    EXPECT_EQ(taken(isKept, "CLAUDE.md", "a/b", "a\\b", "~", "Model 3.5", "see x.e\u0301 now", "",
                    eighty + "x", accents + "e", ".a.b"),
              "");
}

TEST(RecordedScan, TakesTotalsRowsAndConditionsFromItsSource) {
    ScanReport report;
    report.repositoryName = "web-app";
    report.repositoryPath = "/src/web-app";
    report.total = 45000;
    report.contextWindow = 1000000;
    report.rows = {{"Memory files", 7, Provenance::selfReported, 1},
                   {"CLAUDE.md", 3, Provenance::localEstimate, 0}};
    const UUID id = UUID::generate();
    const RecordedScan claude = RecordedScan::ofReport(report, day(2), id);
    EXPECT_EQ(claude, (RecordedScan{id,
                                    "web-app",
                                    "/src/web-app",
                                    day(2),
                                    45000,
                                    {{"Memory files", 7}, {"Other (name withheld)", 3}},
                                    "claude",
                                    1000000}));
    EXPECT_EQ(claude.band(), OpinionBand::lean) << "4.5% of its own window";
    const RecordedScan codex =
        RecordedScan::ofCodex({70000, {}, 1.5}, RepoSelection("/src/api", "API"), day(3), id);
    EXPECT_EQ(codex, (RecordedScan{id, "API", "/src/api", day(3), 70000, {}, "codex", {}}));
    EXPECT_EQ(codex.band(), OpinionBand::excessive);

    const std::pair<Word, Word> words[] = {{{}, {}},
                                           {" 2.1.330 ", "2.1.330"},
                                           {" \n", {}},
                                           {std::string(80, 'x'), std::string(80, 'x')},
                                           {std::string(81, 'x'), {}},
                                           {"a\xff", "a\ufffd"}};
    for (const auto& [told, recorded] : words) {
        report.conditions.toolVersion = told;
        report.conditions.model = " claude-sonnet-5";
        const RecordedScan one = RecordedScan::ofReport(report, day(1), id);
        EXPECT_EQ(std::pair(one.toolVersion, one.model), std::pair(recorded, Word("claude-sonnet-5")));
        const CodexProbeResult result{
            .total = 1, .contextWindow = {}, .duration = 1, .toolVersion = "0.169.0", .model = told};
        const RecordedScan other = RecordedScan::ofCodex(result, RepoSelection("/r"), day(1), id);
        EXPECT_EQ(std::pair(other.toolVersion, other.model), std::pair(Word("0.169.0"), recorded));
    }
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
        nlohmann::json::parse(R"({"repositoryName":"A","repositoryPath":"/src/A","total":12000,"scanCount":2,
                  "previousTotal":10000,"model":null,"previousModel":null,"trend":"up","delta":2000})"));
    const std::string alone = ScanHistoryExport::leaderboardJson("codex", {entries.at(0)});
    EXPECT_THAT(alone, AllOf(HasSubstr("\"previousTotal\": null"),
                             HasSubstr("\"trend\": null,\n      \"delta\": null")));
}

TEST(ScanHistory, ComparesEachScanWithTheOneBeforeItOfTheSameModel) {
    // The identifier decides between two scans of one second, not the place in the list.
    const auto change = [](std::int64_t before, std::int64_t after) {
        const auto entry =
            leaderboard({record(2, "A", day(1), after), record(1, "A", day(1), before)}, "claude").at(0);
        return nlohmann::json::parse(
                   ScanHistoryExport::leaderboardJson("claude", {entry}))["entries"][0]["trend"]
                   .get<std::string>() +
               shown(" by", entry.delta());
    };
    EXPECT_EQ(change(7, 7) + change(9, 8) + change(8, 9), "flat by 0down by -1up by 1");
    EXPECT_EQ(change(-2, largest), "up by " + shown(largest));
    const std::tuple<Word, Word, bool> cases[] = {{{}, {}, true},
                                                  {"sonnet", "sonnet", true},
                                                  {"sonnet", "opus", false},
                                                  {{}, "opus", true},
                                                  {"sonnet", {}, true}};
    for (const auto& [before, after, isCompared] : cases) {
        std::vector<RecordedScan> history{record(1, "A", day(1), 100), record(2, "A", day(2), 300)};
        history[0].model = before;
        history[1].model = after;
        const LeaderboardEntry entry = leaderboard(history, "claude").at(0);
        SCOPED_TRACE(shown(before, after));
        EXPECT_EQ(entry.followsOtherModel(), !isCompared);
        EXPECT_EQ(entry.delta(), isCompared ? std::optional(200) : std::nullopt);
        EXPECT_EQ(entry.trend().has_value(), isCompared);
        const auto json =
            nlohmann::json::parse(ScanHistoryExport::leaderboardJson("claude", {entry}))["entries"][0];
        EXPECT_EQ(json["previousTotal"], 100);
        EXPECT_TRUE(json["delta"].is_null() == !isCompared && json["previousModel"].is_null() == !before);
    }
}

TEST(ScanHistory, FindsWhatChangedBetweenTwoScans) {
    using enum ScanChange::Kind;
    std::vector<RecordedScan> scans;
    for (const auto& [version, model] : {std::pair("", ""),
                                         {"1", "a"},
                                         {"1", "a"},
                                         {"2", "b"},
                                         {"", ""},
                                         {"", "b"},
                                         {"3", ""},
                                         {"3", "c"},
                                         {"2", "c"}}) {
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
    const std::vector<RecordedScan> history{
        record(5, "a", day(2), 1), record(4, "a", day(2), 2), record(3, "a", day(1), 3),
        record(6, "a", day(1), 6), record(2, "B", day(9), 4), record(1, "B", day(9), 5, {}, "codex")};
    EXPECT_EQ(named(ScanHistory::latestPerRepository(history, "claude")), "B 4; a 2; ");
    EXPECT_EQ(named(ScanHistory::newestFirst(history)), "B 4; B 5; a 1; a 2; a 6; a 3; ");
    EXPECT_EQ(named(ScanHistory::scans(history, "/src/a", "claude")), "a 1; a 2; a 3; a 6; ");
    EXPECT_EQ(ScanHistory::mostRecentRepositoryPath(history), "/src/B");
    EXPECT_EQ(ScanHistory::mostRecentRepositoryPath({}), std::nullopt);

    // Of one name by folder, and of folders that differ in nothing but how an accent is written by its bytes.
    const std::vector<std::string> folders{
        "/1/a",           "/1/b",           "/1/c",         "/1/d", "/e\u0301e\u0301",
        "/e\u0301\u00e9", "/\u00e9e\u0301", "/\u00e9\u00e9"};
    std::vector<RecordedScan> twins;
    for (const std::string& folder : folders)
        twins.insert(twins.begin(), record(1, "twin", day(1), 1))->repositoryPath = folder;
    const std::string inOrder = listed(folders, [](const std::string& folder) { return folder; });
    EXPECT_EQ(listed(ScanHistory::latestPerRepository(twins, "claude"), path), inOrder);
    EXPECT_EQ(listed(leaderboard(twins, "claude"),
                     [](const LeaderboardEntry& entry) { return path(entry.latest); }),
              inOrder);
}

TEST(ScanHistory, LinesUpCategoriesOfSeveralScans) {
    const std::string other = RecordedCategoryName::withheld;
    const RecordedScan a = record(1, "A", day(1), 0, {{"System prompt", 3000}, {other, 500}, {other, 200}});
    const RecordedScan b =
        record(2, "B", day(1), 0, {{"System prompt", 2800}, {"Memory files", 900}, {other, 700}});
    const CategoryChartAxis axis = ScanHistory::categoryAxis({a, b});
    const auto rows = [](const CategoryChartAxis& on, const std::vector<RecordedCategory>& categories) {
        return listed(on.rows(categories),
                      [](const auto& row) { return shown(row.coordinate, row.label, row.tokens); });
    };
    EXPECT_EQ(listed(axis.entries(), [](const auto& entry) { return entry.coordinate + " " + entry.label; }),
              "category-0 System prompt; category-1 " + other + "; category-2 Memory files; category-3 " +
                  other + "; ");
    EXPECT_EQ(rows(axis, a.categories),
              "category-0 System prompt 3000; category-1 " + other + " 500; category-3 " + other + " 200; ");
    EXPECT_EQ(rows(axis, {{"Skills", 1}, {"Memory files", 2}}), "category-2 Memory files 2; ");
    EXPECT_EQ(axis.label("category-2"), "Memory files");
    EXPECT_EQ(axis.label("category-4"), std::nullopt);
    EXPECT_TRUE(ScanHistory::categoryAxis({record(3, "C", day(1), 5)}).coordinates().empty());
    const RecordedScan huge = record(4, "D", day(1), 0, {{"B", largest}, {"A", largest}, {"A", largest}});
    EXPECT_EQ(listed(ScanHistory::categoryAxis({huge, huge}).rows(huge.categories),
                     [](const auto& row) { return row.coordinate; }),
              "category-2; category-0; category-1; ");
}

TEST(ScanHistoryExport, DefusesAndQuotesCells) {
    RecordedScan scan = record(1, "=cmd|' /C calc'!A0", day(1), 45000);
    scan.repositoryPath = "/src/a,\"b\"\n\xff";
    scan.contextWindow = 200000;
    scan.toolVersion = "2.1.330";
    scan.model = "@sonnet,5";
    EXPECT_EQ(ScanHistoryExport::csv({scan, record(2, "-1", day(2), -5, {}, "codex")}),
              "date,repositoryName,repositoryPath,tool,total,contextWindow,band,toolVersion,model\r\n"
              "2026-01-01T00:00:00Z,'=cmd|' /C "
              "calc'!A0,\"/src/a,\"\"b\"\"\n\ufffd\",claude,45000,200000,heavy,2.1.330,\"'@sonnet,5\"\r\n"
              "2026-01-02T00:00:00Z,'-1,/src/-1,codex,-5,,lean,,\r\n");
}

TEST(ScanHistoryExport, GivesEachRecordItsBand) {
    RecordedScan scan = record(1, "A", day(1), 60001, {{"x", 2}});
    std::string expected = R"({"scans":[{"band":"excessive","categories":[{"name":"x","tokens":2}],
        "date":"2026-01-01T00:00:00Z","id":"00000000-0000-4000-8000-000000000001",
        "repositoryName":"A","repositoryPath":"/src/A","tool":"claude","total":60001)";
    EXPECT_EQ(nlohmann::json::parse(ScanHistoryExport::json({scan})),
              nlohmann::json::parse(expected + "}]}"));
    scan.toolVersion = "2.1.330";
    scan.model = "claude-sonnet-5";
    scan.contextWindow = 7;
    scan.repositoryPath += "\xff";
    expected.replace(expected.find("/src/A"), 6, "/src/A\ufffd");
    expected +=
        R"(,"toolVersion":"2.1.330","model":"claude-sonnet-5","contextWindow":7,"repositoryPathBytes":"/src/A%FF")";
    EXPECT_EQ(nlohmann::json::parse(ScanHistoryExport::json({scan})),
              nlohmann::json::parse(expected + "}]}"));
    EXPECT_EQ(ScanHistoryExport::json({}), "{\n  \"scans\": []\n}");
}

} // namespace
