// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/DiffCommand.h"

#include "LoadscopeCLI/DiffText.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/InputFile.h"
#include "LoadscopeCLI/KeptReport.h"
#include "LoadscopeCLI/OutputFormat.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <future>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

struct Options {
    std::vector<std::string> files;
    std::string repository = ".";
    std::string since;
    std::string tool = RecordedScan::claudeTool;
    OutputFormat format = OutputFormat::text;
};

constexpr const char* examples = R"(Examples:
  loadscope diff                          the newest two scans of the current folder
  loadscope diff --since 2026-11-01       the newest against the first since that day
  loadscope diff --since 5                the newest against the fifth before it
  loadscope diff before.json after.json   two reports kept from `loadscope scan --json`
  loadscope diff base.json - --format markdown < head.json   for a comment below a pull request

Exit codes: 0 compared, whatever changed, 1 nothing to compare, 2 wrong usage.)";

/// Why there is nothing to compare.
struct Problem {
    std::string headline;
    std::string detail{};
};

using Measured = std::variant<ScanMeasurement, Problem>;
using Compared = std::variant<ScanComparison, Problem>;

Measured readReport(const std::string& path) {
    auto report = KeptReport::read(path);
    if (const auto* unusable = std::get_if<KeptReport::Unusable>(&report)) return Problem{unusable->sentence};
    return std::get<ScanMeasurement>(std::move(report));
}

/// The two are read side by side; but nobody is asked for the standard input before the other is known to
/// be a report.
Compared compareFiles(const std::vector<std::string>& files) {
    const bool isOneTyped = std::count(files.begin(), files.end(), InputFile::standardInput) > 0;
    std::future<Measured> pending =
        std::async(isOneTyped ? std::launch::deferred : std::launch::async | std::launch::deferred,
                   readReport, files[1]);
    Measured before = readReport(files[0]);
    if (const auto* problem = std::get_if<Problem>(&before)) return *problem;
    Measured after = pending.get();
    if (const auto* problem = std::get_if<Problem>(&after)) return *problem;
    return ScanComparison::of(std::get<ScanMeasurement>(std::move(before)),
                              std::get<ScanMeasurement>(std::move(after)));
}

/// How many scans back, for "5"; nothing for a date.
std::optional<std::size_t> scansBack(const std::string& since) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(since.data(), since.data() + since.size(), number);
    if (error != std::errc() || end != since.data() + since.size() || number == 0) return std::nullopt;
    return number;
}

/// The beginning of a day where the user is, or a full date with its time.
std::optional<Timestamp> dateOf(const std::string& since) {
    const auto day = InternetDate::parse(since + "T00:00:00Z");
    if (!day) return InternetDate::parse(since);
    const std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(*day)};
    std::tm local{};
    local.tm_year = static_cast<int>(date.year()) - 1900;
    local.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    local.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    local.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&local));
}

std::string sinceError(const std::string& since) {
    if (scansBack(since) || dateOf(since)) return {};
    return "SINCE is neither a number of scans nor a date such as 2026-11-16";
}

/// The position of the older scan in `scans`, of which there are at least two, oldest first.
std::optional<std::size_t> olderScan(const std::vector<RecordedScan>& scans, const std::string& since) {
    const std::size_t newest = scans.size() - 1;
    if (since.empty()) return newest - 1;
    if (const auto back = scansBack(since))
        return *back <= newest ? std::optional(newest - *back) : std::nullopt;
    for (std::size_t i = 0; i < newest; ++i)
        if (scans[i].date >= *dateOf(since)) return i;
    return std::nullopt;
}

Compared compareRecorded(const Options& options) {
    const auto folder = absoluteFolder(options.repository);
    if (!folder) return Problem{"The folder could not be found.", Text::visible(options.repository)};
    const auto scans = ScanHistory::scans(ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load(),
                                          *folder, options.tool);
    if (scans.size() < 2)
        return Problem{scans.empty() ? "No scan of this folder is recorded."
                                     : "Only one scan of this folder is recorded.",
                       "Two are needed: run `loadscope scan` before and after a change."};
    const auto older = olderScan(scans, options.since);
    if (!older)
        return Problem{"No recorded scan of this folder is that old.",
                       "`loadscope history --repository .` lists them."};
    return ScanComparison::of(ScanMeasurement::ofRecord(scans[*older]),
                              ScanMeasurement::ofRecord(scans.back()));
}

std::string textOf(const ScanComparison& comparison, OutputFormat format) {
    switch (format) {
    case OutputFormat::markdown:
        return DiffPresentation::markdown(comparison);
    case OutputFormat::json:
        return DiffPresentation::json(comparison) + '\n';
    case OutputFormat::text:
    case OutputFormat::junit:
        break;
    }
    return diffText(comparison, Terminal(STDOUT_FILENO));
}

ExitCode diff(const Options& options) {
    Terminal errors(STDERR_FILENO);
    if (options.files.size() == 1 || (!options.files.empty() && !options.since.empty())) {
        showFailure(errors, "`diff` compares two reports, or two recorded scans.",
                    "Name BEFORE and AFTER, or neither.");
        return ExitCode::wrongUsage;
    }
    const Compared result = options.files.empty() ? compareRecorded(options) : compareFiles(options.files);
    if (const auto* problem = std::get_if<Problem>(&result)) {
        showFailure(errors, problem->headline, problem->detail);
        return ExitCode::failure;
    }
    return writeResult(textOf(std::get<ScanComparison>(result), options.format));
}

} // namespace

void addDiffCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command = app.add_subcommand("diff", "Show what changed between two scans");
    auto options = std::make_shared<Options>();
    command->add_option("FILES", options->files, "Two reports of `scan --json`; - is the standard input")
        ->option_text("[BEFORE AFTER]")
        ->expected(1, 2); // if any: with none allowed, "--" would end the arguments
    command->add_option("--repository", options->repository, "Compare scans of this folder (the current one)")
        ->option_text("PATH");
    command
        ->add_option("--since", options->since, "The older scan: the first since a date, or the Nth before")
        ->option_text("DATE|N")
        ->check(sinceError);
    command->add_option("--tool", options->tool, "Compare scans of this tool: claude (the default) or codex")
        ->option_text("TOOL")
        ->check(CLI::IsMember({RecordedScan::claudeTool, RecordedScan::codexTool}));
    addFormatOption(*command, options->format,
                    {OutputFormat::text, OutputFormat::markdown, OutputFormat::json}, true);
    command->footer(examples);
    command->callback([options, &exitCode] { exitCode = diff(*options); });
}

} // namespace loadscope
