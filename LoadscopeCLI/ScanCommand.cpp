// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanCommand.h"

#include "LoadscopeCLI/BudgetOptions.h"
#include "LoadscopeCLI/CodexEstimate.h"
#include "LoadscopeCLI/DiffText.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/KeptReport.h"
#include "LoadscopeCLI/OutputFormat.h"
#include "LoadscopeCLI/ScanRun.h"
#include "LoadscopeCLI/ScanText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/ScanMarkdown.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <chrono>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

struct Options {
    std::string folder = ".";
    bool includeCodex = false;
    bool estimatesCodex = false;
    OutputFormat format = OutputFormat::text;
    BudgetOptions budget;
    std::string baseline;
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
  loadscope scan --baseline main.json --format markdown   what a branch adds, for a comment

A folder's own hooks and servers run in a scan, without a trust question of the tool.

Exit codes: 0 measured, 1 failed, 2 wrong usage or a broken budget, 3 above --max-tokens or over a budget,
130 interrupted.)";

ExitCode showScanFailure(const Options& options, Terminal& errors, const ProbeError& error) {
    showFailure(errors, error.headline(), error.detail());
    if (options.format != OutputFormat::json) return ExitCode::failure;
    return writeResult(ScanReportJson::failure(error.caseName(), error.headline(), error.detail()) + '\n',
                       ExitCode::failure);
}

/// What a scan is held against, read before the tool is started.
struct Limits {
    Budget budget;
    std::optional<ScanMeasurement> baseline;
};

std::variant<Limits, ExitCode> readLimits(const Options& options, const std::string& folder,
                                          Terminal& errors) {
    Limits limits;
    auto budget = readBudget(options.budget, folder, errors);
    if (const auto* code = std::get_if<ExitCode>(&budget)) return *code;
    limits.budget = std::get<Budget>(std::move(budget));
    if (options.maxTokens) limits.budget.maxTokens.reset(); // what is asked for goes first
    if (options.baseline.empty()) return limits;
    auto baseline = KeptReport::read(options.baseline);
    if (const auto* unusable = std::get_if<KeptReport::Unusable>(&baseline)) {
        showFailure(errors, unusable->sentence, "");
        return ExitCode::wrongUsage;
    }
    limits.baseline = std::get<ScanMeasurement>(std::move(baseline));
    return limits;
}

struct Verdict {
    std::vector<BudgetResult> budgets;
    std::optional<ScanComparison> sinceBaseline;
};

Verdict judge(const ScanReport& report, const Limits& limits) {
    Verdict verdict;
    const ScanMeasurement measurement = ScanMeasurement::ofReport(report, std::chrono::system_clock::now());
    if (limits.baseline) verdict.sinceBaseline = ScanComparison::of(*limits.baseline, measurement);
    verdict.budgets = BudgetCheck::results(
        limits.budget,
        {.repository = report.repositoryPath,
         .measurement = &measurement,
         .sinceBaseline = verdict.sinceBaseline ? &*verdict.sinceBaseline : nullptr,
         .codexInstructions = report.codexInstructions ? &*report.codexInstructions : nullptr});
    return verdict;
}

std::string textOf(const Options& options, const ScanReport& report, const Verdict& verdict) {
    const ScanComparison* const baseline = verdict.sinceBaseline ? &*verdict.sinceBaseline : nullptr;
    switch (options.format) {
    case OutputFormat::json:
        return ScanReportJson::report(report, verdict.budgets) + '\n';
    case OutputFormat::markdown:
        return ScanMarkdown::report(report, verdict.budgets, baseline);
    case OutputFormat::junit:
        return BudgetPresentation::junit(report.repositoryName, verdict.budgets);
    case OutputFormat::text:
        break;
    }
    const Terminal terminal(STDOUT_FILENO);
    std::string text = scanText(report, options.text, terminal);
    if (baseline != nullptr) text += "\nSince the baseline:\n" + diffText(*baseline, terminal);
    if (!verdict.budgets.empty()) text += '\n' + budgetsText(verdict.budgets, terminal);
    return text;
}

bool isAboveMaximum(const Options& options, const ScanReport& report, Terminal& errors) {
    if (!options.maxTokens || report.total <= *options.maxTokens) return false;
    showFailure(errors,
                std::string(report.conditions.isEstimate ? "The estimated total of " : "The total of ") +
                    LocaleFormat::grouped(report.total) + " tokens is above --max-tokens " +
                    LocaleFormat::grouped(*options.maxTokens) + ".",
                "");
    return true;
}

ExitCode showReport(const Options& options, Terminal& errors, const ScanReport& report,
                    const Limits& limits) {
    const Verdict verdict = judge(report, limits);
    const ExitCode written = writeResult(textOf(options, report, verdict));
    if (written != ExitCode::success) return written;
    const bool isAbove = isAboveMaximum(options, report, errors);
    return showExceeded(verdict.budgets, errors) || isAbove ? ExitCode::aboveMaximum : ExitCode::success;
}

ExitCode scan(const Options& options) {
    Terminal errors(STDERR_FILENO);
    const auto fail = [&](const ProbeError& error) { return showScanFailure(options, errors, error); };
    const auto folder = absoluteFolder(options.folder);
    if (!folder) return fail(ProbeError::RepositoryUnreadable{options.folder});
    const auto limits = readLimits(options, *folder, errors);
    if (const auto* code = std::get_if<ExitCode>(&limits)) return *code;
    const ScanOutcome outcome = runScan({.folder = *folder,
                                         .settings = options.settings,
                                         .includeCodex = options.includeCodex,
                                         .records = !options.noHistory,
                                         .checksReadiness = !options.skipCheck},
                                        errors);
    if (const auto* report = std::get_if<std::shared_ptr<const ScanReport>>(&outcome))
        return showReport(options, errors, **report, std::get<Limits>(limits));
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
    for (const char* const measuring :
         {"--include-codex", "--max-tokens", "--baseline", "--budget", "--model", "--wait-for-servers",
          "--keep-environment", "--accept-estimate", "--details", "--top"})
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
    addFormatOption(*command, options->format,
                    {OutputFormat::text, OutputFormat::markdown, OutputFormat::json, OutputFormat::junit},
                    true);
    command->add_flag("--no-history", options->noHistory, "Do not record the scan");
    command
        ->add_option_function<std::string>(
            "--max-tokens", [options](const std::string& text) { options->maxTokens = wholeNumber(text); },
            "Exit with 3 when Claude Code's total is above N")
        ->option_text("N")
        ->check(
            [](const std::string& text) { return wholeNumber(text) ? "" : "N is not a number of tokens"; });
    addBudgetOptions(*command, options->budget);
    command
        ->add_option("--baseline", options->baseline,
                     "Compare with a report kept from `scan --json`; applies the budget's maxIncrease")
        ->option_text("FILE");
    command->add_flag("--skip-check", options->skipCheck,
                      "Do not check first whether the tools are installed and signed in");
    addProbeOptions(*command, options->settings);
    addCodexEstimate(*command, options->estimatesCodex);
    command->footer(examples);
    command->callback([options, &exitCode] {
        exitCode = options->estimatesCodex
                       ? estimateCodex(options->folder, options->format == OutputFormat::json)
                       : scan(*options);
    });
}

} // namespace loadscope
