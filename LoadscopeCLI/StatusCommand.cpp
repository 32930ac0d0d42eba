// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/StatusCommand.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Readiness.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr const char* examples = R"(Examples:
  loadscope status
  loadscope status --json | jq -r .claude.state     ready, signedOut, notInstalled or unknown)";

std::string statusJson(const ReadinessChecker::Result& result) {
    const auto tool = [](ToolReadiness readiness) {
        return nlohmann::ordered_json{{"state", caseName(readiness)}, {"label", label(readiness)}};
    };
    return nlohmann::ordered_json{{"claude", tool(result.claude)}, {"codex", tool(result.codex)}}.dump(2) +
           '\n';
}

std::string statusText(const ReadinessChecker::Result& result, const Terminal& terminal) {
    Table table({{"Tool"}, {"Status"}});
    const auto add = [&table](const char* tool, ToolReadiness readiness) {
        const TextStyle style = readiness == ToolReadiness::ready ? TextStyle::good
                                : blocksScan(readiness)           ? TextStyle::bad
                                                                  : TextStyle::warning;
        table.addRow({tool, {label(readiness), style}});
    };
    add(RecordedScanPresentation::claudeToolLabel, result.claude);
    add(RecordedScanPresentation::codexToolLabel, result.codex);
    return table.text(terminal);
}

ExitCode status(bool json) {
    Terminal errors(STDERR_FILENO);
    std::optional<ReadinessChecker::Result> result;
    {
        LoopUIThread loop;
        result = checkReadiness(loop, errors);
    }
    if (!result) return showInterrupted(errors, "Interrupted.");
    return writeResult(json ? statusJson(*result) : statusText(*result, Terminal(STDOUT_FILENO)));
}

} // namespace

void addStatusCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command = app.add_subcommand("status", "Show whether the tools are installed and signed in");
    auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Print one JSON object");
    command->footer(examples);
    command->callback([json, &exitCode] { exitCode = status(*json); });
}

} // namespace loadscope
