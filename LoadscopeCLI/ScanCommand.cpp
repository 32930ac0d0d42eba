// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanCommand.h"

#include "LoadscopeCLI/CodexEstimate.h"
#include "LoadscopeCLI/DiffText.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/KeptReport.h"
#include "LoadscopeCLI/ScanOptions.h"
#include "LoadscopeCLI/ScanSeveral.h"
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
  loadscope scan ~/src/* --jobs 2       several, two at a time
  loadscope scan --all                  every folder of the history that is still there
  loadscope scan --include-codex        measure Codex too: runs one real session
  loadscope scan --codex-estimate       what Codex would load, without a session
  loadscope scan --model opus           as a session with another model
  loadscope scan --max-tokens 30000     exit with 3 above 30,000 tokens, for a CI job
  loadscope scan --details --top 5      which servers, tools, files, skills and agents
  loadscope scan --json | jq .total     for scripts
  loadscope scan --baseline main.json --format markdown   what a branch adds, for a comment

A folder's own hooks and servers run in a scan, without a trust question of the tool.

Exit codes: 0 measured, 1 failed, 2 wrong usage or a broken budget, 3 above --max-tokens or over a budget,
130 interrupted. Of several folders one failure is enough for 1, else one that is over for 3.)";

ExitCode showScanFailure(const ScanOptions& options, Terminal& errors, const ProbeError& error) {
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

std::variant<Limits, ExitCode> readLimits(const ScanOptions& options, const std::string& folder,
                                          Terminal& errors) {
    Limits limits;
    auto budget = budgetFor(options, folder, errors);
    if (const auto* code = std::get_if<ExitCode>(&budget)) return *code;
    limits.budget = std::get<Budget>(std::move(budget));
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

std::string textOf(const ScanOptions& options, const ScanReport& report, const Verdict& verdict) {
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

ExitCode showReport(const ScanOptions& options, Terminal& errors, const ScanReport& report,
                    const Limits& limits) {
    const Verdict verdict = judge(report, limits);
    const ExitCode written = writeResult(textOf(options, report, verdict));
    if (written != ExitCode::success) return written;
    const bool isAbove = isAboveMaximum(options, report, "", errors);
    return showExceeded(verdict.budgets, errors) || isAbove ? ExitCode::aboveMaximum : ExitCode::success;
}

ExitCode scan(const ScanOptions& options) {
    Terminal errors(STDERR_FILENO);
    const auto fail = [&](const ProbeError& error) { return showScanFailure(options, errors, error); };
    const std::string argument = options.folders.empty() ? "." : options.folders.front();
    const auto folder = absoluteFolder(argument);
    if (!folder) return fail(ProbeError::RepositoryUnreadable{argument});
    const auto limits = readLimits(options, *folder, errors);
    if (const auto* code = std::get_if<ExitCode>(&limits)) return *code;
    const ScanOutcome outcome = runScan(*folder, options.request, errors);
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
         {"--all", "--jobs", "--include-codex", "--max-tokens", "--baseline", "--budget", "--model",
          "--wait-for-servers", "--keep-environment", "--accept-estimate", "--details", "--top"})
        estimate->excludes(command.get_option(measuring));
}

/// To be added before the others. `options` must outlive the command.
void addFolders(CLI::App& command, ScanOptions& options) {
    const auto isEmpty = [](const std::string& folder) { return folder.empty() ? "FOLDER is empty" : ""; };
    CLI::Option* const folders =
        command.add_option("FOLDER", options.folders, "Folders to measure (the current one)")
            ->option_text("[FOLDER...]")
            ->check(isEmpty);
    command.add_flag("--all", options.scansAll, "Measure every folder of the history that is still there")
        ->excludes(folders);
    command
        .add_option_function<std::string>(
            "--jobs",
            [&options](const std::string& text) {
                options.jobs = static_cast<std::size_t>(wholeNumber(text).value_or(1));
            },
            "Measure N folders at a time (half of the cores)")
        ->option_text("N")
        ->check([](const std::string& text) {
            return wholeNumber(text).value_or(0) > 0 ? "" : "N is not a number of scans";
        });
}

} // namespace

std::variant<Budget, ExitCode> budgetFor(const ScanOptions& options, const std::string& folder,
                                         Terminal& errors) {
    auto budget = readBudget(options.budget, folder, errors);
    if (auto* read = std::get_if<Budget>(&budget); read != nullptr && options.maxTokens)
        read->maxTokens.reset(); // what is asked for goes first
    return budget;
}

bool isAboveMaximum(const ScanOptions& options, const ScanReport& report, const std::string& name,
                    Terminal& errors) {
    if (!options.maxTokens || report.total <= *options.maxTokens) return false;
    showFailure(errors,
                (name.empty() ? "" : name + ": ") +
                    (report.conditions.isEstimate ? "The estimated total of " : "The total of ") +
                    LocaleFormat::grouped(report.total) + " tokens is above --max-tokens " +
                    LocaleFormat::grouped(*options.maxTokens) + ".",
                "");
    return true;
}

void addScanCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command =
        app.add_subcommand("scan", "Measure what loads before you type, in one folder or several");
    auto options = std::make_shared<ScanOptions>();
    addFolders(*command, *options);
    command->add_flag("--include-codex", options->request.includeCodex,
                      "Measure Codex too: runs one real session and uses its allowance");
    command->add_flag("--details", options->text.details, "Print what each category is made of, too");
    addTopOption(*command, options->text);
    addFormatOption(*command, options->format,
                    {OutputFormat::text, OutputFormat::markdown, OutputFormat::json, OutputFormat::junit},
                    true);
    command->add_flag_callback(
        "--no-history", [options] { options->request.records = false; }, "Do not record the scan");
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
    command->add_flag_callback(
        "--skip-check", [options] { options->request.checksReadiness = false; },
        "Do not check first whether the tools are installed and signed in");
    addProbeOptions(*command, options->request.settings);
    addCodexEstimate(*command, options->estimatesCodex);
    command->footer(examples);
    command->callback([options, &exitCode] {
        if (options->isSeveral())
            exitCode = scanSeveral(*options);
        else if (options->estimatesCodex)
            exitCode = estimateCodex(options->folders.empty() ? "." : options->folders.front(),
                                     options->format == OutputFormat::json);
        else
            exitCode = scan(*options);
    });
}

} // namespace loadscope
