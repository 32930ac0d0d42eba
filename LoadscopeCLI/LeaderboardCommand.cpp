// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/LeaderboardCommand.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/ScanText.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryExport.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ConditionTexts.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

using enum Table::Alignment;

struct Options {
    std::string tool = RecordedScan::claudeTool;
    bool json = false;
};

constexpr const char* examples = R"(Examples:
  loadscope leaderboard
  loadscope leaderboard --tool codex
  loadscope leaderboard --json | jq -r '.entries[] | select(.trend == "up") | .repositoryName')";

Table::Cell change(const LeaderboardEntry& entry) {
    if (entry.followsOtherModel()) return {ConditionTexts::otherModel, TextStyle::dim};
    const auto delta = entry.delta();
    if (!delta) return "";
    return *delta == 0 ? LocaleFormat::grouped(0) : Table::Cell::own(LocaleFormat::signedGrouped(*delta));
}

std::string leaderboardText(const std::vector<LeaderboardEntry>& entries, const Terminal& terminal) {
    Table table({{"#", right},
                 {"Repository"},
                 {"Total", right},
                 {"Change", right},
                 {"Band"},
                 {"Scans", right},
                 {"Last scan"},
                 {"Folder"}});
    std::int64_t place = 0;
    for (const LeaderboardEntry& entry : entries) {
        const OpinionBand band = entry.latest.band();
        table.addRow({LocaleFormat::grouped(++place),
                      entry.latest.repositoryName,
                      LocaleFormat::grouped(entry.latest.total),
                      change(entry),
                      {OpinionBands::title(band), styleOf(band)},
                      LocaleFormat::grouped(entry.scanCount),
                      LocaleFormat::date(entry.latest.date),
                      {entry.latest.repositoryPath, TextStyle::dim}});
    }
    return table.text(terminal);
}

ExitCode leaderboard(const Options& options) {
    const auto history = ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load();
    const auto entries = ScanHistory::leaderboard(history, options.tool);
    if (options.json) return writeResult(ScanHistoryExport::leaderboardJson(options.tool, entries) + '\n');
    if (entries.empty()) {
        Terminal(STDERR_FILENO).writeLine("No scans recorded.");
        return ExitCode::success;
    }
    return writeResult(leaderboardText(entries, Terminal(STDOUT_FILENO)));
}

} // namespace

void addLeaderboardCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command =
        app.add_subcommand("leaderboard", "Rank the recorded repositories by their newest total");
    auto options = std::make_shared<Options>();
    command->add_option("--tool", options->tool, "Rank by this tool: claude (unless given) or codex")
        ->option_text("TOOL")
        ->check(CLI::IsMember({RecordedScan::claudeTool, RecordedScan::codexTool}));
    command->add_flag("--json", options->json, "Print one JSON object");
    command->footer(examples);
    command->callback([options, &exitCode] { exitCode = leaderboard(*options); });
}

} // namespace loadscope
