// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/DonutChart.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"

#include <QAbstractButton>
#include <QClipboard>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

ProbeResult probe(std::int64_t total, std::optional<std::int64_t> window,
                  std::vector<SelfReportedSlab> slabs) {
    ProbeResult result = sampleResult(total);
    result.contextWindow = window;
    result.selfReportedSlabs = std::move(slabs);
    return result;
}

ProbeResult estimated() {
    ProbeResult result = sampleResult();
    result.conditions = {.requestedModel = "a\nb",
                         .toolVersion = "2.1.330",
                         .removedVariables = {"ANTHROPIC_API_KEY", "CLAUDE_CODE_\x1b[2J"},
                         .pathSource = SearchPathSource::shellDidNotAnswer,
                         .isEstimate = true,
                         .takenOff = ReservedSpace{"Compact buffer", 3'000}};
    return result;
}

InstructionFileSet unreadable() {
    InstructionFileSet files = sampleFiles();
    files.unreadablePaths = {"/src/<b>/CLAUDE.md"};
    return files;
}

TEST(ReportPage, SaysWhatEachKindOfReportHasToSay) {
    const QString noCategories =
        QStringLiteral("Claude Code's `/context` reported no categories for this session. The total and band "
                       "remain factual; instruction files are listed separately as local estimates.");
    const QString noTokens = QStringLiteral("The attributed category rows report no tokens to chart.");
    const QString noFiles = QStringLiteral("No instruction files were found for this scan.");
    struct Case {
        const char* name;
        ScanReport report;
        QStringList shown;
        QStringList absent;
    };
    const Case cases[] = {
        {"a window and Codex",
         reportOf(sampleResult(), sampleFiles(),
                  CodexScanOutcome::measured({41'200, 272'000, 20.0, {}, {}, true})),
         {"This version of Codex keeps a record of the session: it does not know the flag against it.",
          "Heavy startup context",
          "45,000 tokens",
          "22.5% of its 200K window.",
          "41,200 tokens",
          "15.1% of its 272K window.",
          "Scan complete",
          "50 of 100",
          "50 of 100 — how much of the 90,000-token band scale is still free.",
          "System tools",
          "21,100",
          "46.9%",
          "reported by Claude Code's /context",
          "Hover a segment for its share.",
          "2,453",
          "5.5% of total",
          "Repository instructions · 9,812 bytes on disk",
          "Personal instructions · 8,040 bytes on disk",
          "38.4 seconds",
          "/home/dev/.local/bin/claude"},
         {"Lean", "30,000", "Heavy startup context (estimated)", noCategories, noTokens, noFiles,
          "Could not be read", "Codex was not included in this scan."}},
        {"no window",
         reportOf(probe(95'000, {}, {{"System prompt", 6'000}}), unreadable()),
         {"Excessive startup context", "Lean", "Heavy", "Excessive", "30,000", "60,000", "120,000",
          "Codex was not included in this scan.", "Could not be read", "/src/<b>/CLAUDE.md"},
         {noCategories}},
        {"no categories",
         reportOf(probe(12'400, {}, {}), sampleFiles()),
         {noCategories, "Startup context (categories not self-reported)", "100.0%", "90,000"},
         {noTokens}},
        {"no tokens and no files",
         reportOf(probe(0, {}, {{"System prompt", 0}})),
         {noTokens, noFiles, "0 tokens", "100 of 100", "System prompt", "0.0%"},
         {"Relative size", "Hover a segment for its share."}},
        {"more than everything",
         reportOf(probe(20'000, 200'000, {{"System prompt", 30'000}})),
         {"The categories reported by Claude Code's `/context` alone add up to more than the measured total. "
          "The "
          "bar's segments therefore exceed the measured total of 20,000 tokens, and there is no hidden "
          "remainder "
          "to show."},
         {}},
        {"an estimate, under unusual conditions",
         reportOf(estimated(), sampleFiles(), CodexScanOutcome::measured({5, {}, 1, "0.169.0", "gpt-5"})),
         {"Heavy startup context (estimated)", "Estimate · not counted by Claude",
          "reported by Claude Code's /context (estimate)", "Tool: Claude Code 2.1.330.",
          "Model: a\\nb was asked for; the report names none.",
          "Environment: removed ANTHROPIC_API_KEY, CLAUDE_CODE_\\x1b[2J.",
          "Tool: Codex CLI 0.169.0; model: gpt-5.",
          "The report's total of 48,000 includes 3,000 tokens of \"Compact buffer\", which is reserved "
          "space: "
          "taken off."},
         {"Authoritative · measured by Claude", "reported by Claude Code's /context"}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const QStringList said = ReportPage(test.report).said();
        for (const QString& text : test.shown)
            EXPECT_TRUE(said.contains(text)) << qPrintable(text);
        for (const QString& text : test.absent)
            EXPECT_FALSE(said.contains(text)) << qPrintable(text);
    }
}

TEST(ReportPage, ShowsNoRowsWhereThereAreNone) {
    ScanReport report = reportOf(sampleResult());
    report.rows.clear();
    ReportPage page(report);
    EXPECT_TRUE(page.said().contains(QStringLiteral("This session did not report category rows.")));
    EXPECT_EQ(page.find<DonutChart>(), nullptr);
}

TEST(ReportPage, PutsExactlyEightLinesOnTheClipboard) {
    ScanReport report = reportOf(sampleResult());
    report.repositoryName = "two\nlines";
    ReportPage page(report);
    for (auto* button : page.page.findChildren<QAbstractButton*>()) {
        if (button->text() == QStringLiteral("Copy Summary")) button->click();
    }
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 8);
    EXPECT_EQ(lines[0], QStringLiteral("Repository: two\\nlines"));
    EXPECT_EQ(lines[1],
              QStringLiteral("Total: 45,000 tokens — authoritative, reported by Claude (Claude Code's "
                             "own `/context` report)."));
    EXPECT_EQ(lines[2], QStringLiteral("Band: Heavy (this app's opinion) — 22.5% of its 200K window."));
    EXPECT_EQ(lines[5], QStringLiteral("Duration: 38.4 seconds."));
    EXPECT_TRUE(lines[6].isEmpty());
    EXPECT_TRUE(lines[7].contains(QStringLiteral("`claude -p \"/context\"`")));
}

} // namespace
} // namespace loadscope::testing
