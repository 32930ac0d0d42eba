// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

/// English numbers, whatever the machine's locale.
class ScanPresentationTest : public testing::Test {
protected:
    void SetUp() override { LocaleFormat::setLocale("en_US"); }
    void TearDown() override { LocaleFormat::setLocale(""); }
};

ScanReport reportOf(std::int64_t total, std::optional<std::int64_t> window, std::int64_t reportedTokens = 0,
                    std::int64_t localTokens = 0) {
    ProbeResult probe{"5e551011", total, TotalSource::contextCommand, {}, 3.14, "/bin/claude", window};
    if (reportedTokens > 0) probe.selfReportedSlabs = {{"Tools", reportedTokens}};
    InstructionFileSet files;
    if (localTokens > 0) files.repositoryFiles = {{"/src/app/CLAUDE.md", localTokens * 4}};
    return ScanReportBuilder::build(RepoSelection("/src/app"), probe, files,
                                    CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason));
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
    EXPECT_EQ(ScanPresentation::copyableSummary(reportOf(45000, 0)),
              start + "Heavy (this app's opinion)." + rest);
    EXPECT_EQ(ScanPresentation::copyableSummary(reportOf(45000, 1000000)),
              start + "Lean (this app's opinion) — 4.5% of its 1M window." + rest);
    ScanReport hostile = reportOf(45000, {});
    hostile.repositoryName = "a\nb";
    hostile.codex = CodexScanOutcome::unavailable("one\r\ntwo\x1b[2J");
    EXPECT_EQ(std::ranges::count(ScanPresentation::copyableSummary(hostile), '\n'), 7);
    EXPECT_EQ(ScanPresentation::summaryLines(hostile)[0], "Repository: a\nb") << "kept as it is elsewhere";
}

TEST_F(ScanPresentationTest, WordsVerdictsAndLabels) {
    EXPECT_EQ(
        ScanPresentation::bandVerdictLine(reportOf(45000, -1)),
        "The total measured by Claude is 45,000 tokens, which falls in the Heavy band (30,000–60,000).");
    EXPECT_EQ(ScanPresentation::bandVerdictLine(reportOf(100000, 1000000)),
              "The total measured by Claude is 100,000 tokens, which falls in the Lean band for the 1M "
              "context window "
              "Claude reported.");
    EXPECT_EQ(ScanPresentation::totalSourceLine(reportOf(1, {})),
              "Total: authoritative — reported by Claude (source: Claude Code's own `/context` report).");
    EXPECT_EQ(CodexPresentation::summaryLine(CodexScanOutcome::measured({41200, 272000, 5})),
              "Codex: 41,200 tokens — authoritative, reported by Codex CLI (15.1% of its 272K window). Band: "
              "Heavy.");
    EXPECT_EQ(CodexPresentation::summaryLine(CodexScanOutcome::measured({1000, {}, 5})),
              "Codex: 1,000 tokens — authoritative, reported by Codex CLI. Band: Lean.");
    RecordedScan scan{UUID::generate(), "app", "/src/app", {}, 45000, {}, "other", {}};
    EXPECT_EQ(RecordedScanPresentation::toolLabel(scan), "Claude Code");
    EXPECT_EQ(RecordedScanPresentation::labelForTool("codex"), "Codex");
    EXPECT_EQ(RecordedScanPresentation::bandScaleCaption(scan), "30,000–60,000");
    scan.contextWindow = 200000;
    EXPECT_EQ(RecordedScanPresentation::bandScaleCaption(scan), "22.5% of its 200K window.");
}

TEST_F(ScanPresentationTest, NotesOnlyWhatApplies) {
    struct Case {
        std::int64_t total, reported, local;
        const char* source;
        const char* lead;
    };
    const Case cases[] = {
        {10000, 9000, 2500, "combined",
         "The attributed rows — the categories reported by Claude Code's `/context` plus "
         "this app's local file estimates —"},
        {8000, 9000, 2500, "cliReported", "The categories reported by Claude Code's `/context` alone"},
        {10000, 3000, 12000, "localEstimate", "The local file estimates alone"},
        {1000, 1000, 2500, "localEstimate", "The local file estimates alone"},
        {2500, 9000, 2500, "cliReported", "The categories reported by Claude Code's `/context` alone"},
    };
    for (const Case& one : cases) {
        const ScanReport report = reportOf(one.total, {}, one.reported, one.local);
        EXPECT_EQ(rawValue(ScanPresentation::overAttributionSource(report)), one.source);
        const std::string note = ScanPresentation::overAttributionNote(report).value_or("none");
        EXPECT_EQ(note, std::string(one.lead) +
                            " add up to more than the measured total. The bar's segments "
                            "therefore exceed the measured total of " +
                            LocaleFormat::grouped(one.total) +
                            " tokens, and there is no hidden remainder to show.");
    }
    ScanReport report = reportOf(12000, {}, 9000, 3000);
    EXPECT_FALSE(ScanPresentation::overAttributionNote(report));
    EXPECT_FALSE(ScanPresentation::unreadableFilesNote(report));
    EXPECT_FALSE(ScanPresentation::unreportedCategoryFilesNote(report));
    EXPECT_FALSE(ScanPresentation::unreportedCategoryFilesNote(reportOf(5, {})));
    EXPECT_EQ(
        ScanPresentation::unreportedCategoryFilesNote(reportOf(5, {}, 0, 1)),
        "Claude Code's `/context` reported no categories for this session, so the \"Startup context "
        "(categories not self-reported)\" row already carries the whole measured total. The instruction "
        "files below are local estimates of what makes up that total, not additional tokens on top of it.");
    for (const auto& [count, files] :
         {std::pair(1, "1 instruction file"), {2, "2 instruction files"}, {1234, "1234 instruction files"}}) {
        report.fileSet.unreadablePaths.assign(static_cast<std::size_t>(count), "/x");
        const std::string note = ScanPresentation::unreadableFilesNote(report).value_or("none");
        EXPECT_TRUE(
            note.starts_with(files + std::string(" could not be read, so the category and file estimates are "
                                                 "lower than what is really loaded. The measured total is "
                                                 "unaffected — it is reported by Claude. ")))
            << note;
    }
    EXPECT_STREQ(
        ScanPresentation::splitsEstimateNote,
        "The category totals below are reported by Claude Code's `/context`; the file splits are estimates "
        "derived locally from file sizes.");
    EXPECT_STREQ(
        CodexPresentation::measurementNote,
        "Measured: one `codex exec` session started in this folder; the number includes the probe prompt.");
}

TEST_F(ScanPresentationTest, BuildsReportsFromTheirParts) {
    ScanReport report = reportOf(100000, 1000000, 90000, 700);
    EXPECT_EQ(report.band, OpinionBand::lean);
    EXPECT_EQ(report.remainder, 100000 - 90000 - 700);
    report.fileSet.inheritedFiles = {{"/h/c", 4000}};
    report.fileSet.personalFiles = {{"/h/b", 4}, {"/h/a", 4}};
    std::string order;
    for (const auto& file : report.files())
        order += file.path + " ";
    for (const auto& file : report.filesLargestFirst())
        order += " " + file.path;
    EXPECT_EQ(order, "/src/app/CLAUDE.md /h/c /h/b /h/a  /h/c /src/app/CLAUDE.md /h/a /h/b");
    for (const auto& [tokens, share] : {std::pair(25000, 0.25), {100001, 1.0}, {-1, 0.0}}) {
        EXPECT_EQ(report.categoryShare({"x", tokens, {}, 0}), share);
    }
}

TEST_F(ScanPresentationTest, WritesOneJSONObjectWhoseTextsAreRepaired) {
    ScanReport report = reportOf(5, {}, 0, 1);
    report.repositoryName = "a\xff\"\x1b";
    report.repositoryPath = "/a\xff";
    report.id = UUID::parse("9c1d7a52-0b3e-4c8e-8f6a-2b7d5e4f1a90");
    report.date = InternetDate::parse("2026-01-02T03:04:05Z");
    report.codex = CodexScanOutcome::measured({7, 200000, 1.5, "0.58.0", "m\xff", true});
    const std::string text = ScanReportJson::report(report);
    EXPECT_TRUE(
        text.starts_with("{\n  \"schemaVersion\": 1,\n  \"repositoryName\": \"a\uFFFD\\\"\\u001b\",\n"))
        << text;
    LocaleFormat::setLocale("ar_EG");
    EXPECT_EQ(ScanReportJson::report(report), text);
    const Json::Value object = Json::parse(text).value_or(Json::Value());
    const Json::Value expected =
        Json::parse(R"json({"totalSource": "contextCommand", "contextWindow": null, "band": "lean",
        "score": 99, "remainder": 0, "files": {"repository": [{"path": "/src/app/CLAUDE.md", "byteCount": 4,
        "estimatedTokens": 1, "reportedTokens": null}], "inherited": [], "personal": []}, "unreadablePaths": [], "rows": [{"name":
        "Startup context (categories not self-reported)", "tokens": 5, "provenance": "claudeReported", "ordinal": 0,
        "share": 1.0
}], "date": "2026-01-02T03:04:05Z", "id": "9C1D7A52-0B3E-4C8E-8F6A-2B7D5E4F1A90", "repositoryPathBytes": "/a%FF",
        "codex": {"status": "measured", "id": null, "total": 7, "contextWindow": 200000, "duration": 1.5,
        "toolVersion": "0.58.0", "model": "m\uFFFD", "note":
        "This version of Codex keeps a record of the session: it does not know the flag against it."}
})json")
            .value();
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ(object.value(key, Json::Value("absent")), value) << key;
    EXPECT_EQ(object["summary"].size(), 6U);
    EXPECT_TRUE(object["notes"]["unreadableFiles"].is_null());
    EXPECT_TRUE(object["notes"]["unreportedCategoryFiles"].is_string());
    const std::string failure = ScanReportJson::failure("timedOut", "Too\xFFlong.", "");
    EXPECT_EQ(Json::parse(failure).value()["error"]["case"], "timedOut") << failure;
}

} // namespace
