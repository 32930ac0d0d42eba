// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanRecordsReader.h"

#include "LoadscopeCore/History/ScanHistoryExport.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

namespace {

using ScanRecordsReader::Contents;

Contents contents(const std::string& text) {
    const auto read = ScanRecordsReader::read(text);
    const auto* unreadable = std::get_if<ScanReportReader::Unreadable>(&read);
    EXPECT_FALSE(unreadable) << text << "\n" << unreadable->reason;
    return unreadable ? Contents() : std::get<Contents>(read);
}

/// A record with something in every field.
RecordedScan full(int number, const std::string& tool) {
    RecordedScan scan = record(number, "a\"b é", day(number), 45'000 + number, {}, tool);
    if (tool == RecordedScan::claudeTool) scan.categories = {{"System tools", 16'000}, {"Skills", 21}};
    scan.repositoryPath = "/src/caf\xe9";
    scan.contextWindow = 200'000;
    scan.toolVersion = "2.1.330";
    scan.model = "claude-sonnet-5";
    return scan;
}

/// A report with something in every field of its two records.
ScanReport reportOf(const RecordedScan& claude, const RecordedScan& codex) {
    ScanReport report;
    report.repositoryName = claude.repositoryName;
    report.repositoryPath = claude.repositoryPath;
    report.total = claude.total;
    report.contextWindow = claude.contextWindow;
    for (const RecordedCategory& category : claude.categories)
        report.rows.push_back({category.name, category.tokens, Provenance::claudeReported, 0});
    report.conditions.toolVersion = claude.toolVersion;
    report.conditions.model = claude.model;
    report.id = claude.id;
    report.date = claude.date;
    CodexProbeResult result{codex.total, codex.contextWindow, 1.5, codex.toolVersion, codex.model};
    result.id = codex.id;
    report.codex = CodexScanOutcome::measured(result);
    return report;
}

TEST(ScanRecordsReader, KeepsEveryFieldOfEveryForm) {
    const RecordedScan claude = full(3, RecordedScan::claudeTool);
    RecordedScan codex = full(4, RecordedScan::codexTool);
    const std::vector<RecordedScan> both{claude, codex};
    EXPECT_EQ(contents(ScanHistoryFile::encode(both)).scans, both);
    EXPECT_EQ(contents(ScanHistoryExport::json(both)).scans, both);
    codex.date = claude.date;
    const ScanReport report = reportOf(claude, codex);
    EXPECT_EQ(contents(ScanReportJson::report(report)).scans, (std::vector<RecordedScan>{claude, codex}));
}

TEST(ScanRecordsReader, NeverTakesAnEstimate) {
    ScanReport report = reportOf(full(3, RecordedScan::claudeTool), full(4, RecordedScan::codexTool));
    report.conditions.isEstimate = true;
    const Contents read = contents(ScanReportJson::report(report));
    EXPECT_EQ(read.estimates, 1U);
    ASSERT_EQ(read.scans.size(), 1U);
    EXPECT_EQ(read.scans[0].tool, "codex") << "that was measured all the same";
    CodexItems items;
    EXPECT_EQ(contents(ScanReportJson::codexEstimate(RepoSelection("/src/a"), items)), (Contents{{}, 1}));
}

constexpr const char* small =
    R"({"repositoryName": "a", "repositoryPath": "/a", "date": "2026-01-02T03:04:05Z",
    "total": 5, "rows": [{"name": "src/secret.md", "tokens": 5}]})";

/// `small` with the first occurrence of FROM in "FROM=>TO" replaced by TO.
std::string edited(std::string_view edit) {
    std::string text = small;
    const auto arrow = edit.find("=>");
    const auto place = text.find(edit.substr(0, arrow));
    EXPECT_NE(place, std::string::npos) << edit;
    return text.replace(place, arrow, edit.substr(arrow + 2));
}

TEST(ScanRecordsReader, DerivesIdentifiersAndWithholdsNames) {
    const RecordedScan scan = contents(small).scans.at(0);
    EXPECT_EQ(scan.categories.at(0).name, RecordedCategoryName::withheld);
    EXPECT_EQ(contents(edited("{\"rep=>{\"id\": null,  \"rep")).scans.at(0).id, scan.id) << "layout aside";
    EXPECT_NE(contents(edited("\"total\": 5=>\"total\": 6")).scans.at(0).id, scan.id);
    EXPECT_EQ(UUID::derived("abc").text().at(14), '8');
    EXPECT_EQ(UUID::parse(scan.id.text()), scan.id);
    RecordedScan named = record(1, "a", day(1), 1, {{"~/notes", 1}});
    EXPECT_EQ(contents(ScanHistoryFile::encode({named})).scans.at(0).categories.at(0).name,
              RecordedCategoryName::withheld);
}

TEST(ScanRecordsReader, SaysWhatCannotBeRead) {
    const std::string history =
        ScanHistoryFile::encode({record(1, "a", day(1), 1), record(2, "a", day(1), -1)});
    const std::pair<std::string, const char*> cases[] = {
        {" \n", "is empty."},
        {history.substr(0, history.size() / 2), "is not a JSON object."},
        {"[]", "is not a JSON object."},
        {history, "is a history of which record 2 cannot be read."},
        {R"({"version": 2, "scans": []})", "is a history of another version of Loadscope."},
        {R"({"version": "1", "scans": []})", "is a history of another version of Loadscope."},
        {R"({"scans": [5]})", "is a history of which record 1 cannot be read."},
        {R"({"error": {"headline": "Too long."}})", "is the report of a scan that failed: Too long."},
        {"{}", "is not a report of `loadscope scan --json`: it has no \"total\"."},
        {edited("\"date\": \"2026-01-02T03:04:05Z\",=>"),
         "has no \"date\", without which it has no place in the history."},
        {edited("2026-01=>2026-13"), "has a \"date\" that cannot be read."},
        {edited("\"/a\"=>\"\""), "does not tell the folder that was measured."},
        {edited("\"total\": 5=>\"total\": 5, \"contextWindow\": \"x\""),
         "has a \"total\" or a \"contextWindow\" that cannot be read."},
        {edited("\"tokens\": 5=>\"tokens\": -5"), "has no \"rows\" that can be read."},
        {edited("\"rows\"=>\"lines\""), "has no \"rows\" that can be read."},
        {edited("{\"rep=>{\"id\": \"7\", \"rep"), "has an \"id\" that is none."},
        {edited("{\"rep=>{\"codex\": {\"status\": \"measured\"}, \"rep"),
         "has a \"total\" or a \"contextWindow\" that cannot be read."},
        {std::string(Json::maximumSize + 1, ' '), "is larger than a report can be (16 MB)."},
    };
    for (const auto& [text, reason] : cases) {
        const auto read = ScanRecordsReader::read(text);
        const auto* unreadable = std::get_if<ScanReportReader::Unreadable>(&read);
        EXPECT_EQ(unreadable ? unreadable->reason : "read", reason);
    }
}

} // namespace
