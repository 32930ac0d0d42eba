// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace loadscope {
namespace {

/// English numbers, whatever the machine's locale.
class ScanPresentationTest : public testing::Test {
protected:
    void SetUp() override { LocaleFormat::setLocale("en_US"); }
    void TearDown() override { LocaleFormat::setLocale(""); }
};
using CodexPresentationTest = ScanPresentationTest;
using ScanReportJsonTest = ScanPresentationTest;

ScanReport reportOf(std::int64_t total, std::optional<std::int64_t> window,
                    const std::vector<SelfReportedSlab>& slabs = {}, const InstructionFileSet& files = {}) {
    ProbeResult probe;
    probe.sessionID = "5e551011";
    probe.authoritativeTotal = total;
    probe.selfReportedSlabs = slabs;
    probe.duration = 3.14;
    probe.resolvedCLIPath = "/bin/claude";
    probe.contextWindow = window;
    return ScanReportBuilder::build(RepoSelection("/src/app"), probe, files,
                                    CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason));
}

InstructionFileSet filesOf(std::int64_t repositoryTokens) {
    InstructionFileSet set;
    if (repositoryTokens > 0) set.repositoryFiles = {{"/src/app/CLAUDE.md", repositoryTokens * 4}};
    return set;
}

TEST_F(ScanPresentationTest, SumsAReportUpInEightLines) {
    const std::string start =
        "Repository: app\nTotal: 45,000 tokens — authoritative, reported by Claude (Claude Code's "
        "own `/context` report).\nBand: ";
    const std::string rest =
        "\nCodex: not measured — Codex was not included in this scan.\nCategory totals are reported by "
        "Claude Code's `/context`; only the file splits are local estimates.\nDuration: 3.1 "
        "seconds.\n\nMeasured: one headless `claude -p \"/context\"` run (model sonnet) started in "
        "this folder — it reads the session's startup context without spending Claude allowance.";
    EXPECT_EQ(ScanPresentation::copyableSummary(reportOf(45000, {})),
              start + "Heavy (this app's opinion)." + rest);
    EXPECT_EQ(ScanPresentation::copyableSummary(reportOf(45000, 0)),
              start + "Heavy (this app's opinion)." + rest);
    EXPECT_EQ(ScanPresentation::copyableSummary(reportOf(45000, 1000000)),
              start + "Lean (this app's opinion) — 4.5% of its 1M window." + rest);
    ScanReport hostile = reportOf(45000, {});
    hostile.repositoryName = "a\nb";
    hostile.codex = CodexScanOutcome::unavailable("one\r\ntwo\x1b[2J");
    const std::string summary = ScanPresentation::copyableSummary(hostile);
    EXPECT_EQ(std::count(summary.begin(), summary.end(), '\n'), 7) << summary;
    EXPECT_EQ(ScanPresentation::summaryLines(hostile)[0], "Repository: a\nb") << "kept as it is elsewhere";
}

TEST_F(ScanPresentationTest, WordsTheVerdictByTheWindow) {
    EXPECT_EQ(
        ScanPresentation::bandVerdictLine(reportOf(45000, -1)),
        "The total measured by Claude is 45,000 tokens, which falls in the Heavy band (30,000–60,000).");
    EXPECT_EQ(ScanPresentation::bandVerdictLine(reportOf(100000, 1000000)),
              "The total measured by Claude is 100,000 tokens, which falls in the Lean band for the 1M "
              "context window "
              "Claude reported.");
    ScanReport report = reportOf(1, {});
    report.totalSource = TotalSource::cliUsage;
    EXPECT_EQ(
        ScanPresentation::totalSourceLine(report),
        "Total: authoritative — reported by Claude (source: CLI result usage block (no transcript found)).");
}

TEST_F(ScanPresentationTest, NamesTheSideThatExceedsTheTotal) {
    struct Case {
        std::int64_t total, reported, local;
        const char* source;
        const char* leadStart;
    };
    const Case cases[] = {
        {10000, 9000, 2500, "combined",
         "The attributed rows — the categories reported by Claude Code's `/context` plus"},
        {8000, 9000, 2500, "cliReported", "The categories reported by Claude Code's `/context` alone add up"},
        {10000, 3000, 12000, "localEstimate", "The local file estimates alone add up"},
        {1000, 3000, 12000, "combined", "The attributed rows —"},
        {9000, 9000, 9001, "localEstimate", "The local file estimates alone"},
    };
    for (const Case& one : cases) {
        const ScanReport report = reportOf(one.total, {}, {{"Tools", one.reported}}, filesOf(one.local));
        EXPECT_EQ(rawValue(ScanPresentation::overAttributionSource(report)), one.source);
        const std::string note = ScanPresentation::overAttributionNote(report).value_or("none");
        EXPECT_TRUE(note.starts_with(one.leadStart)) << note;
        EXPECT_TRUE(note.ends_with(
            " more than the measured total. The bar's segments therefore exceed the measured total of " +
            LocaleFormat::grouped(one.total) + " tokens, and there is no hidden remainder to show."))
            << note;
    }
    EXPECT_FALSE(
        ScanPresentation::overAttributionNote(reportOf(12000, {}, {{"Tools", 9000}}, filesOf(3000))));
}

TEST_F(ScanPresentationTest, NotesOnlyWhatApplies) {
    ScanReport report = reportOf(5, {}, {{"Tools", 5}}, filesOf(1));
    EXPECT_FALSE(ScanPresentation::unreadableFilesNote(report));
    EXPECT_FALSE(ScanPresentation::unreportedCategoryFilesNote(report));
    for (const auto& [count, start] : {std::pair(1, "1 instruction file could not be read, so"),
                                       {2, "2 instruction files could not"},
                                       {1234, "1234 instruction files"}}) {
        report.fileSet.unreadablePaths.assign(static_cast<std::size_t>(count), "/x");
        const std::string note = ScanPresentation::unreadableFilesNote(report).value_or("none");
        EXPECT_TRUE(note.starts_with(start)) << note;
        EXPECT_TRUE(
            note.ends_with("System Settings → Privacy & Security → Files & Folders, then scan again."))
            << note;
    }
    EXPECT_FALSE(ScanPresentation::unreportedCategoryFilesNote(reportOf(5, {})));
    EXPECT_TRUE(ScanPresentation::unreportedCategoryFilesNote(reportOf(5, {}, {}, filesOf(1)))
                    .value_or("none")
                    .find("so the \"Startup context (categories not self-reported)\" row already carries") !=
                std::string::npos);
}

TEST_F(CodexPresentationTest, WordsAMeasuredOutcome) {
    EXPECT_EQ(CodexPresentation::summaryLine(CodexScanOutcome::measured({41200, 272000, 5})),
              "Codex: 41,200 tokens — authoritative, reported by Codex CLI (15.1% of its 272K window). Band: "
              "Heavy.");
    EXPECT_EQ(CodexPresentation::summaryLine(CodexScanOutcome::measured({1000, {}, 5})),
              "Codex: 1,000 tokens — authoritative, reported by Codex CLI. Band: Lean.");
}

TEST_F(ScanPresentationTest, CaptionsRecordedScans) {
    RecordedScan scan{UUID::generate(), "app", "/src/app", {}, 45000, {}, "other", {}};
    EXPECT_EQ(RecordedScanPresentation::toolLabel(scan), "Claude Code");
    EXPECT_EQ(RecordedScanPresentation::labelForTool("codex"), "Codex");
    EXPECT_EQ(RecordedScanPresentation::bandScaleCaption(scan), "30,000–60,000");
    scan.contextWindow = 200000;
    EXPECT_EQ(RecordedScanPresentation::bandScaleCaption(scan), "22.5% of its 200K window.");
}

TEST_F(ScanPresentationTest, BuildsReportsFromTheirParts) {
    InstructionFileSet files = filesOf(700);
    files.personalFiles = {{"/h/b", 4}, {"/h/a", 4}};
    files.inheritedFiles = {{"/h/c", 4000}};
    const ScanReport report = reportOf(100000, 1000000, {{"Tools", 90000}}, files);
    EXPECT_EQ(report.band, OpinionBand::lean);
    EXPECT_EQ(report.fileSet, files);
    EXPECT_EQ(report.remainder, 100000 - 90000 - 700 - 1000 - 2);
    std::string order;
    for (const auto& file : report.files())
        order += file.path + " ";
    order += "then ";
    for (const auto& file : report.filesLargestFirst())
        order += file.path + " ";
    EXPECT_EQ(order, "/src/app/CLAUDE.md /h/c /h/b /h/a then /h/c /src/app/CLAUDE.md /h/a /h/b ");
    EXPECT_EQ(report.categoryShare({"x", 25000, {}, 0}), 0.25);
    EXPECT_EQ(report.categoryShare({"x", 100001, {}, 0}), 1);
    EXPECT_EQ(report.categoryShare({"x", -1, {}, 0}), 0);
    EXPECT_EQ(reportOf(0, {}).categoryShare({"x", 1, {}, 0}), 0);
}

TEST_F(ScanReportJsonTest, WritesOneObjectWhoseTextsAreRepaired) {
    ScanReport report = reportOf(5, {}, {}, filesOf(1));
    report.repositoryName = "a\xff\"\x1b";
    report.codex = CodexScanOutcome::measured({7, 200000, 1.5});
    const std::string text = ScanReportJson::report(report);
    EXPECT_TRUE(
        text.starts_with("{\n  \"schemaVersion\": 1,\n  \"repositoryName\": \"a\uFFFD\\\"\\u001b\",\n"))
        << text;
    EXPECT_TRUE(text.ends_with("\n}")) << text;
    const std::optional<Json::Value> object = Json::parse(text);
    ASSERT_TRUE(object);
    const Json::Value expected = {
        {"totalSource", "contextCommand"},
        {"contextWindow", nullptr},
        {"band", "lean"},
        {"score", 99},
        {"overAttributed", false},
        {"rows",
         {{{"name", "Startup context (categories not self-reported)"},
           {"tokens", 5},
           {"provenance", "claudeReported"},
           {"ordinal", 0},
           {"share", 1.0}}}},
        {"codex", {{"status", "measured"}, {"total", 7}, {"contextWindow", 200000}, {"duration", 1.5}}}};
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ((*object)[key], value) << key;
    EXPECT_EQ((*object)["files"]["repository"][0]["estimatedTokens"], 1);
    EXPECT_EQ((*object)["files"]["personal"], Json::Value::array());
    EXPECT_EQ((*object)["summary"].size(), 6U);
    EXPECT_TRUE((*object)["notes"]["unreadableFiles"].is_null());
    EXPECT_TRUE((*object)["notes"]["unreportedCategoryFiles"].is_string());
    const std::optional<Json::Value> failure = Json::parse(ScanReportJson::failure(ProbeError::TimedOut{}));
    ASSERT_TRUE(failure);
    EXPECT_EQ((*failure)["error"]["case"], "timedOut");
    EXPECT_EQ((*failure)["error"].size(), 3U);
}

} // namespace
} // namespace loadscope
