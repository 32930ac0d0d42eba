// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

namespace {

TEST(RecordedScan, WithholdsNamesThatCouldBePathsOrFiles) {
    const std::string eighty(80, 'x');
    std::string accents;
    for (int count = 0; count < 80; ++count)
        accents += "e\u0301";
    for (const std::string& name : {std::string("System prompt"), std::string(".env"), std::string("ends."),
                                    std::string("v1.2-beta"), std::string("tab\there"), eighty, accents})
        EXPECT_EQ(RecordedCategoryName::recorded("  " + name + "\n"), name);
    for (const std::string& name :
         {std::string(" CLAUDE.md  "), std::string("a/b"), std::string("a\\b"), std::string("~"),
          std::string("Model 3.5"), std::string("see x.e\u0301 now"), std::string(" \n\t"), eighty + "x",
          accents + "e", std::string(".a.b")})
        EXPECT_EQ(RecordedCategoryName::recorded(name), "Other (name withheld)") << name;
}

TEST(RecordedScan, TakesTotalsAndRowsFromItsSource) {
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
}

TEST(RecordedScan, TakesTheVersionAndTheModelWhenTheyAreWords) {
    using Word = std::optional<std::string>;
    const std::pair<Word, Word> cases[] = {{std::nullopt, std::nullopt},
                                           {" 2.1.330 ", "2.1.330"},
                                           {" \n", std::nullopt},
                                           {std::string(80, 'x'), std::string(80, 'x')},
                                           {std::string(81, 'x'), std::nullopt},
                                           {"a\xff", "a\ufffd"}};
    for (const auto& [told, recorded] : cases) {
        ScanReport report;
        report.conditions.toolVersion = told;
        report.conditions.model = Word(" claude-sonnet-5");
        const RecordedScan claude = RecordedScan::ofReport(report, day(1), UUID::generate());
        EXPECT_EQ(claude.toolVersion, recorded);
        EXPECT_EQ(claude.model, "claude-sonnet-5");
        const CodexProbeResult result{
            .total = 1, .contextWindow = {}, .duration = 1, .toolVersion = "0.169.0", .model = told};
        const RecordedScan codex =
            RecordedScan::ofCodex(result, RepoSelection("/r"), day(1), UUID::generate());
        EXPECT_EQ(codex.toolVersion, "0.169.0");
        EXPECT_EQ(codex.model, recorded);
    }
}

} // namespace
