// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/BandMeter.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Pages/Report/FileInventory.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>

namespace loadscope::testing {
namespace {

using Json = nlohmann::json;

QString text(const Json& value) { return QString::fromStdString(value.get<std::string>()); }

/// As people write numbers in English.
QString grouped(const Json& value) {
    QString digits = QString::number(value.get<std::int64_t>());
    for (qsizetype at = digits.size() - 3; at > (digits.startsWith(QLatin1Char('-')) ? 1 : 0); at -= 3)
        digits.insert(at, QLatin1Char(','));
    return digits;
}

QString percent(double share) { return QString::number(share * 100, 'f', 1) + QLatin1Char('%'); }

QString source(const Json& provenance) {
    static const std::map<std::string, const char*> labels = {
        {"claudeReported", "reported by Claude"},
        {"selfReported", "reported by Claude Code's /context"},
        {"localEstimate", "measured on disk at ~4 bytes/token (estimate)"},
        {"remainder", "derived: total minus attributed"}};
    return QString::fromUtf8(labels.at(provenance.get<std::string>()));
}

/// All that the object for scripts tells and the window must show as a text.
QStringList wanted(const Json& report) {
    const double total = report["total"];
    QString band = text(report["band"]);
    band[0] = band[0].toUpper();
    QStringList texts = {grouped(report["total"]) + " tokens",
                         QString::number(report["score"].get<int>()) + " of 100",
                         band + " startup context",
                         text(report["repositoryPath"]),
                         text(report["resolvedCLIPath"]),
                         text(report["sessionID"]),
                         QString::number(report["duration"].get<double>(), 'f', 1) + " seconds"};
    for (const Json& line : report["summary"])
        texts.append(text(line));
    for (const Json& note : report["notes"]) {
        if (!note.is_null()) texts.append(text(note));
    }
    if (!report["contextWindow"].is_null() && report["contextWindow"] > 0)
        texts.append(percent(std::min(1.0, total / report["contextWindow"].get<double>())) +
                     " of its 200K window.");
    const Json& codex = report["codex"];
    texts.append(codex["status"] == "measured" ? grouped(codex["total"]) + " tokens" : text(codex["reason"]));
    return texts;
}

void compareRows(const ReportPage& page, const Json& report) {
    auto* table = page.find<ReportTable>(QStringLiteral("Rows by category"));
    ASSERT_NE(table, nullptr);
    const std::vector<std::size_t> tops = table->places().shown(); // all closed
    ASSERT_EQ(tops.size(), report["rows"].size());
    auto* donut = page.find<DonutChart>();
    std::int64_t positive = 0;
    for (std::size_t index = 0; index < tops.size(); ++index) {
        const TableRow& shown = table->rows()[tops[index]];
        const Json& row = report["rows"][index];
        EXPECT_EQ(shown.name, text(row["name"]));
        EXPECT_EQ(shown.cells[0], grouped(row["tokens"]));
        EXPECT_EQ(shown.cells[1], percent(row["share"]));
        EXPECT_EQ(shown.cells[2], source(row["provenance"]));
        EXPECT_EQ(shown.color, index);
        positive += std::max<std::int64_t>(0, row["tokens"]);
        if (donut != nullptr) {
            EXPECT_EQ(donut->ring().slices()[index].upperBound, positive);
        }
    }
    EXPECT_EQ(donut != nullptr, positive > 0);
}

void compareFiles(const ReportPage& page, const Json& report) {
    const std::map<std::string, QString> tiers = {{"repository", "Repository instructions"},
                                                  {"inherited", "Inherited project instructions"},
                                                  {"personal", "Personal instructions"}};
    struct File {
        std::int64_t tokens;
        QStringList texts;
    };
    std::vector<File> files;
    for (const auto& [tier, list] : report["files"].items()) {
        for (const Json& file : list) {
            const double share = file["estimatedTokens"].get<double>() / report["total"].get<double>();
            files.push_back(
                {file["estimatedTokens"],
                 {text(file["path"]), tiers.at(tier) + " · " + grouped(file["byteCount"]) + " bytes on disk",
                  grouped(file["estimatedTokens"]), percent(std::min(1.0, share)) + " of total"}});
        }
    }
    std::sort(files.begin(), files.end(), [](const File& a, const File& b) {
        return a.tokens != b.tokens ? a.tokens > b.tokens : a.texts[0] < b.texts[0];
    });
    auto* inventory = page.find<FileInventory>();
    auto* treemap = page.find<TreemapView>();
    ASSERT_EQ(inventory != nullptr, !files.empty());
    ASSERT_EQ(treemap != nullptr, !files.empty());
    for (std::size_t index = 0; index < files.size(); ++index) {
        const TableRow& shown = inventory->rows().at(index);
        EXPECT_EQ((QStringList{shown.name, shown.detail, shown.cells[0], shown.cells[1]}),
                  files[index].texts);
        EXPECT_EQ(treemap->mark(index).name, shown.name);
        EXPECT_EQ(treemap->mark(index).value, shown.cells[0] + " estimated tokens · " + shown.cells[1]);
    }
    auto* unreadable = page.find<ReportTable>(QStringLiteral("Could not be read"));
    ASSERT_EQ(unreadable != nullptr, !report["unreadablePaths"].empty());
    for (std::size_t index = 0; index < report["unreadablePaths"].size(); ++index)
        EXPECT_EQ(unreadable->rows().at(index).name, text(report["unreadablePaths"][index]));
}

TEST(ReportPage, ShowsWhatTheSameReportTellsScripts) {
    using Slabs = std::vector<SelfReportedSlab>;
    struct Case {
        const char* name;
        TotalSource source;
        std::int64_t total;
        std::optional<std::int64_t> window;
        Slabs slabs;
        bool hasFiles;
        std::vector<std::string> unreadable;
        CodexScanOutcome codex;
    };
    const Slabs usual = sampleResult().selfReportedSlabs;
    const auto none = CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason);
    const auto measured = CodexScanOutcome::measured({41'200, 272'000, 20.0});
    const Case cases[] = {
        {"everything", TotalSource::contextCommand, 45'000, 200'000, usual, true, {}, measured},
        {"nothing but a total", TotalSource::cliUsage, 95'000, {}, {}, false, {}, none},
        {"files without categories", TotalSource::transcript, 12'400, 200'000, {}, true, {"/a", "/b"}, none},
        {"more categories than tokens",
         TotalSource::contextCommand,
         20'000,
         {},
         usual,
         false,
         {"/x/y"},
         measured},
        {"more files than tokens", TotalSource::transcript, 1'000, 200'000, {{"Skills", 10}}, true, {}, none},
        {"more of both", TotalSource::cliUsage, 30'000, 0, {{"Skills", 29'000}}, true, {}, measured},
        {"no tokens in categories",
         TotalSource::contextCommand,
         0,
         {},
         {{"Skills", 0}, {"Tools", -5}},
         false,
         {},
         none},
        {"one token", TotalSource::contextCommand, 1, 200'000, {{"Skills", 1}}, false, {}, none},
        {"the largest total",
         TotalSource::cliUsage,
         9'000'000'000'000'000,
         200'000,
         usual,
         true,
         {},
         measured},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        ProbeResult probe = sampleResult(test.total);
        probe.totalSource = test.source;
        probe.contextWindow = test.window;
        probe.selfReportedSlabs = test.slabs;
        InstructionFileSet files = test.hasFiles ? sampleFiles() : InstructionFileSet();
        files.unreadablePaths = test.unreadable;
        ReportPage page(reportOf(probe, files, test.codex));
        const Json report = Json::parse(ScanReportJson::report(*page.report));
        const QStringList said = page.said();
        for (const QString& one : wanted(report))
            EXPECT_TRUE(said.contains(one)) << qPrintable(one);
        EXPECT_EQ(page.find<BandMeter>() != nullptr, test.window.value_or(0) < 1);
        compareRows(page, report);
        compareFiles(page, report);
    }
}

} // namespace
} // namespace loadscope::testing
