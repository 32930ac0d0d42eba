// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanCommand.h"

#include "LoadscopeCLI/CodexEstimate.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/ScanRun.h"
#include "LoadscopeCLI/ScanText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

struct Options {
    std::string folder = ".";
    bool includeCodex = false;
    bool estimatesCodex = false;
    bool json = false;
    bool noHistory = false;
    bool skipCheck = false;
    ProbeSettings settings;
    ScanTextOptions text;
    std::optional<std::int64_t> maxTokens;
};

/// Decimal digits that fit 64 bits; nothing for anything else.
std::optional<std::int64_t> wholeNumber(const std::string& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.starts_with('-'))
        return std::nullopt;
    return number;
}

/// What the tool could take for one of its own options, or for none at all, is refused.
std::string modelError(const std::string& name) {
    if (Text::trimmed(name).empty()) return "NAME is empty";
    return name.starts_with('-') ? "NAME begins with -" : "";
}

constexpr const char* examples = R"(Examples:
  loadscope scan                        the current folder
  loadscope scan ~/src/app              another folder
  loadscope scan --include-codex        measure Codex too: runs one real session
  loadscope scan --codex-estimate       what Codex would load, without a session
  loadscope scan --model opus           as a session with another model
  loadscope scan --max-tokens 30000     exit with 3 above 30,000 tokens, for a CI job
  loadscope scan --details --top 5      which servers, tools, files, skills and agents
  loadscope scan --json | jq .total     for scripts

A folder's own hooks and servers run in a scan, without a trust question of the tool.

Exit codes: 0 measured, 1 failed, 2 wrong usage, 3 above --max-tokens, 130 interrupted.)";

ExitCode showScanFailure(const Options& options, Terminal& errors, const ProbeError& error) {
    showFailure(errors, error.headline(), error.detail());
    if (!options.json) return ExitCode::failure;
    return writeResult(ScanReportJson::failure(error.caseName(), error.headline(), error.detail()) + '\n',
                       ExitCode::failure);
}

ExitCode showReport(const Options& options, Terminal& errors, const ScanReport& report) {
    const ExitCode written =
        writeResult(options.json ? ScanReportJson::report(report) + '\n'
                                 : scanText(report, options.text, Terminal(STDOUT_FILENO)));
    if (written != ExitCode::success || !options.maxTokens || report.total <= *options.maxTokens)
        return written;
    showFailure(errors,
                std::string(report.conditions.isEstimate ? "The estimated total of " : "The total of ") +
                    LocaleFormat::grouped(report.total) + " tokens is above --max-tokens " +
                    LocaleFormat::grouped(*options.maxTokens) + ".",
                "");
    return ExitCode::aboveMaximum;
}

ExitCode scan(const Options& options) {
    Terminal errors(STDERR_FILENO);
    const auto fail = [&](const ProbeError& error) { return showScanFailure(options, errors, error); };
    const auto folder = absoluteFolder(options.folder);
    if (!folder) return fail(ProbeError::RepositoryUnreadable{options.folder});
    const ScanOutcome outcome = runScan({.folder = *folder,
                                         .settings = options.settings,
                                         .includeCodex = options.includeCodex,
                                         .records = !options.noHistory,
                                         .checksReadiness = !options.skipCheck},
                                        errors);
    if (const auto* report = std::get_if<std::shared_ptr<const ScanReport>>(&outcome))
        return showReport(options, errors, **report);
    if (const auto* error = std::get_if<ProbeError>(&outcome)) return fail(*error);
    return showInterrupted(errors, "Interrupted: the scan was stopped and nothing was recorded.");
}

/// `text` must outlive the command.
void addTopOption(CLI::App& command, ScanTextOptions& text) {
    command
        .add_option_function<std::string>(
            "--top",
            [&text](const std::string& number) {
                text.details = true;
                text.top = static_cast<std::size_t>(wholeNumber(number).value_or(0));
            },
            "Print the details with no more than the N largest members of each group")
        ->option_text("N")
        ->check([](const std::string& number) {
            return wholeNumber(number) ? "" : "N is not a number of members";
        });
}

/// Under which conditions Claude Code is measured. `settings` must outlive the command.
void addProbeOptions(CLI::App& command, ProbeSettings& settings) {
    command
        .add_option("--model", settings.model,
                    std::string("The model to ask for (") + ProbeSettings::defaultModel + ')')
        ->option_text("NAME")
        ->check(modelError);
    command.add_flag("--wait-for-servers", settings.waitsForServers,
                     "Let Claude Code wait for servers that start slowly");
    command.add_flag(
        "--keep-environment", settings.keepsEnvironment,
        "Pass on what a scan removes otherwise: variables that sign in, such as ANTHROPIC_API_KEY");
    command.add_flag("--accept-estimate", settings.acceptsEstimate,
                     "Take a total that Claude Code estimated; it is marked and not recorded");
}

/// To be added last. `isAsked` must outlive the command.
void addCodexEstimate(CLI::App& command, bool& isAsked) {
    CLI::Option* const estimate = command.add_flag(
        "--codex-estimate", isAsked,
        "Only estimate Codex, without a session; starts the servers of its configuration, records nothing");
    for (const char* const measuring : {"--include-codex", "--max-tokens", "--model", "--wait-for-servers",
                                        "--keep-environment", "--accept-estimate"})
        estimate->excludes(command.get_option(measuring));
}

} // namespace

void addScanCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command = app.add_subcommand("scan", "Measure what loads before you type, in one folder");
    auto options = std::make_shared<Options>();
    command->add_option("FOLDER", options->folder, "Folder to measure (the current one)")
        ->check([](const std::string& folder) { return folder.empty() ? "FOLDER is empty" : ""; });
    command->add_flag("--include-codex", options->includeCodex,
                      "Measure Codex too: runs one real session and uses its allowance");
    command->add_flag("--details", options->text.details, "Print what each category is made of, too");
    addTopOption(*command, options->text);
    command->add_flag("--json", options->json, "Print one JSON object");
    command->add_flag("--no-history", options->noHistory, "Do not record the scan");
    command
        ->add_option_function<std::string>(
            "--max-tokens", [options](const std::string& text) { options->maxTokens = wholeNumber(text); },
            "Exit with 3 when Claude Code's total is above N")
        ->option_text("N")
        ->check(
            [](const std::string& text) { return wholeNumber(text) ? "" : "N is not a number of tokens"; });
    command->add_flag("--skip-check", options->skipCheck,
                      "Do not check first whether the tools are installed and signed in");
    addProbeOptions(*command, options->settings);
    addCodexEstimate(*command, options->estimatesCodex);
    command->footer(examples);
    command->callback([options, &exitCode] {
        exitCode = options->estimatesCodex ? estimateCodex(options->folder, options->json) : scan(*options);
    });
}

} // namespace loadscope
