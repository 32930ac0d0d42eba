// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Pages/Overview/OverviewReport.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Window/FindBar.h"
#include "tests/LoadscopeApp/Support/SampleReports.h"
#include "tools/Screenshots/Stage.h"

#include <QDir>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

namespace loadscope::screenshots {
namespace {

CodexItems codexItems() {
    CodexItems items;
    items.items = {{CodexItemKind::systemPrompt, 24'000},
                   {CodexItemKind::skills, 4'100},
                   {CodexItemKind::permissions, 900},
                   {CodexItemKind::instructions, 33'100},
                   {CodexItemKind::environment, 400}};
    items.model = "gpt-5.2-codex";
    items.contextWindow = 272'000;
    items.instructions.files = {{"/home/dev/src/web-app/AGENTS.md", 34'886, 32'768}};
    return items;
}

struct Case {
    QString name;
    ProbeResult probe = testing::sampleResult();
    InstructionFileSet files = testing::sampleFiles();
    std::optional<CodexScanOutcome> codex{};
    bool hovers = false;
    bool opensRows = false;
};

void show(Stage& stage, const Case& report) {
    const QString folder = QDir::tempPath() + QStringLiteral("/loadscope-pictures/src/web-app");
    QDir().mkpath(folder);
    stage.tools.instructions->files = report.files;
    if (report.codex) stage.tools.codex->outcome = *report.codex;
    stage.choose(folder.toStdString());
    stage.model.setIncludeCodex(report.codex.has_value());
    *stage.tools.settings = [](ScanReport& result) {
        if (result.details.members.empty()) return;
        const std::string folder = "/home/dev/src/web-app/";
        using Kind = ChangeableGroup::Kind;
        result.largestChangeable = {{Kind::server, "github", {3'214}, false, folder + ".mcp.json", "project"},
                                    {Kind::instructionFile,
                                     folder + "CLAUDE.md",
                                     {2'600, CountPrecision::rounded},
                                     false,
                                     folder + "CLAUDE.md"},
                                    {Kind::skill,
                                     "migrate-database",
                                     {640},
                                     false,
                                     folder + ".claude/skills/migrate-database/SKILL.md"}};
        result.missingServers = {"figma", "sentry"};
    };
    stage.scan(report.probe);
    if (report.opensRows && !report.codex) { // its items are estimated instead
        stage.tools.codex->items = codexItems();
        stage.codexEstimates.estimate(folder.toStdString());
        stage.settle([&stage] { return stage.codexEstimates.items().has_value(); });
    }
    for (auto* section : stage.view.findChildren<CollapsibleSection*>())
        section->setExpanded(true);
    if (report.opensRows)
        for (auto* line : stage.view.findChild<OverviewReport*>()->findChildren<DisclosureButton*>())
            line->setExpanded(true);
    stage.settle();
    for (auto* table : stage.view.findChildren<ReportTable*>()) {
        for (std::size_t row = 0; report.opensRows && row < table->rows().size(); ++row)
            if (row == 2) table->setOpen(row, true);
    }
    stage.settle();
    if (!report.hovers) return;
    for (auto* donut : stage.view.findChildren<DonutChart*>())
        donut->setActive(0);
    for (auto* treemap : stage.view.findChildren<TreemapView*>())
        treemap->setActive(1);
}

ProbeResult without(std::optional<std::int64_t> window, std::int64_t total) {
    ProbeResult probe = testing::sampleResult(total);
    probe.contextWindow = window;
    return probe;
}

/// With what is inside, opened.
Case details(const QString& name, int tools) {
    Case result{name, testing::detailedResult(tools)};
    result.opensRows = true;
    CodexProbeResult codex{41'200, 272'000, 20.0};
    codex.items = codexItems();
    if (tools < 100) result.codex = CodexScanOutcome::measured(codex);
    return result;
}

Case unreadable() {
    Case result{QStringLiteral("unreadable")};
    result.probe = without({}, 95'000);
    result.files.unreadablePaths = {"/home/dev/src/web-app/secret/CLAUDE.md", "/home/dev/src/CLAUDE.md"};
    result.codex =
        CodexScanOutcome::unavailable("Codex is not signed in. Run `codex login`, then scan again.");
    return result;
}

Case unreported() {
    Case result{QStringLiteral("unreported")};
    result.probe = without({}, 12'400);
    result.probe.selfReportedSlabs.clear();
    result.probe.totalSource = TotalSource::transcript;
    return result;
}

Case overAttributed() {
    Case result{QStringLiteral("over-attributed")};
    result.probe = without(200'000, 20'000);
    result.codex = CodexScanOutcome::measured({9'000, std::nullopt, 12.0, "0.58.0", "gpt-5-codex", true});
    return result;
}

Case large() {
    Case result{QStringLiteral("large")};
    result.probe.authoritativeTotal = 9'000'000'000'000'000;
    result.probe.contextWindow.reset();
    result.probe.selfReportedSlabs = testing::manySlabs(60);
    result.files = testing::manyFiles(2'000);
    result.codex = CodexScanOutcome::measured({9'000'000'000'000'000, 272'000, 20.0});
    return result;
}

/// Everything that can be unusual about a measurement, at length.
Case conditions() {
    Case result{QStringLiteral("conditions")};
    MeasurementConditions& conditions = result.probe.conditions;
    conditions.requestedModel = "arn:aws:bedrock:eu-central-1:" + std::string(171, '4');
    conditions.model = "claude-opus-4-6";
    conditions.toolVersion = "2.1.330";
    conditions.waitedForServers = true;
    conditions.removedVariables = {"ANTHROPIC_API_KEY", "ANTHROPIC_BASE_URL", "CLAUDECODE"};
    for (int number = 0; number < 27; ++number)
        conditions.removedVariables.push_back("CLAUDE_CODE_SETTING_OF_NUMBER_" + std::to_string(number));
    conditions.keptVariables = {"CLAUDE_CODE_OAUTH_TOKEN", "CLAUDE_CONFIG_DIR"};
    conditions.pathSource = SearchPathSource::shellDidNotAnswer;
    conditions.isEstimate = true;
    conditions.takenOff = ReservedSpace{"Autocompact buffer", 45'000};
    CodexProbeResult codex{41'200, 272'000, 20.0};
    codex.toolVersion = "0.169.0";
    codex.model = "gpt-5.1-codex";
    result.codex = CodexScanOutcome::measured(codex);
    return result;
}

/// Lean for its window, with a score that says otherwise.
Case wide() {
    Case result{QStringLiteral("wide-window")};
    result.probe = testing::sampleResult(100'000);
    result.probe.contextWindow = 1'000'000;
    return result;
}

Case empty() {
    Case result{QStringLiteral("empty")};
    result.probe = without({}, 0);
    result.probe.selfReportedSlabs = {{"System prompt", 0}, {"Skills", -20}};
    result.files = {};
    return result;
}

} // namespace

std::vector<Scene> reportScenes() {
    const Case cases[] = {{QStringLiteral("full"), testing::sampleResult(), testing::sampleFiles(),
                           CodexScanOutcome::measured({41'200, 272'000, 20.0}), true},
                          unreadable(),
                          unreported(),
                          overAttributed(),
                          large(),
                          conditions(),
                          wide(),
                          details(QStringLiteral("details"), 42),
                          details(QStringLiteral("details-many"), 1'000),
                          empty()};
    std::vector<Scene> scenes;
    for (const Case& report : cases)
        scenes.push_back({QStringLiteral("overview-result-") + report.name,
                          [report](Stage& stage) { show(stage, report); }});
    scenes.push_back({QStringLiteral("overview-kept"), [report = cases[0]](Stage& stage) {
                          show(stage, report);
                          const std::string measured = stage.model.selection()->path;
                          stage.choose("/src/other");
                          stage.choose(measured);
                          stage.settle();
                      }});
    scenes.push_back({QStringLiteral("overview-find"), [report = cases[7]](Stage& stage) {
                          show(stage, report);
                          auto* bar = stage.view.findChild<FindBar*>();
                          bar->open();
                          bar->findChild<QLineEdit*>()->setText(QStringLiteral("git"));
                          stage.settle();
                      }});
    scenes.push_back({QStringLiteral("overview-zoomed"), [report = cases[8]](Stage& stage) {
                          show(stage, report);
                          for (auto* section : stage.view.findChildren<CollapsibleSection*>())
                              section->setExpanded(true);
                          stage.settle();
                          auto* treemap = stage.view.findChild<MemberTreemapView*>();
                          for (std::size_t node = 0; node < treemap->treemap().nodes().size(); ++node)
                              if (treemap->treemap().name(node) == "github") treemap->zoomTo(node);
                          stage.settle();
                          for (auto* one : stage.view.findChildren<QScrollArea*>())
                              if (one->isAncestorOf(treemap)) one->ensureWidgetVisible(treemap, 0, 160);
                          stage.settle();
                      }});
    scenes.push_back({QStringLiteral("overview-sorted"), [report = cases[8]](Stage& stage) {
                          show(stage, report);
                          ReportTable* table = nullptr;
                          for (auto* one : stage.view.findChildren<ReportTable*>())
                              if (one->accessibleName() == QStringLiteral("Rows by category")) table = one;
                          table->setOpen(1, true);
                          table->setSort(TableSort{1, false});
                          stage.settle();
                          QScrollArea* page = nullptr;
                          for (auto* one : stage.view.findChildren<QScrollArea*>())
                              if (one->isAncestorOf(table)) page = one;
                          page->verticalScrollBar()->setValue(table->mapTo(page->widget(), QPoint()).y() +
                                                              80);
                          stage.settle();
                      }});
    return scenes;
}

} // namespace loadscope::screenshots
