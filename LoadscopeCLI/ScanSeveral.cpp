// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanSeveral.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/ScanMarkdown.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/Scan/ScanBatchTexts.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <unistd.h>

namespace loadscope {
namespace {

using Entry = ScanReportJson::Entry;
using Item = ScanBatch::Item;
using Budgets = std::map<std::string, Budget>; ///< by folder

/// Why an option cannot be meant for several folders.
std::optional<std::string> objection(const ScanOptions& options) {
    if (options.estimatesCodex) return "--codex-estimate takes one folder.";
    if (!options.baseline.empty()) return "--baseline takes one folder: a report is of one repository.";
    if (options.format == OutputFormat::junit) return "--format junit takes one folder.";
    return std::nullopt;
}

/// The recorded folders that are still there, in the order of their names.
std::vector<RepoSelection> recordedFolders(const StopToken& stop) {
    std::map<std::string, std::string> names;
    for (const RecordedScan& scan : ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load())
        names[scan.repositoryPath] = scan.repositoryName;
    std::vector<RepoSelection> folders;
    for (const auto& [path, name] : names)
        if (path.starts_with('/') && !FolderAccess::checkDetached(path, stop, FolderAccess::checkPresence))
            folders.emplace_back(path, name);
    std::stable_sort(folders.begin(), folders.end(),
                     [](const RepoSelection& left, const RepoSelection& right) {
                         return left.displayName < right.displayName;
                     });
    return folders;
}

/// The folders that were named; nothing when one is relative to a current folder that is gone.
std::optional<std::vector<RepoSelection>> namedFolders(const ScanOptions& options) {
    std::vector<RepoSelection> folders;
    for (const std::string& argument : options.folders) {
        const auto folder = absoluteFolder(argument);
        if (!folder) return std::nullopt;
        folders.emplace_back(*folder);
    }
    return folders;
}

Entry entryOf(const Item& item, const Budget& budget) {
    Entry entry{item.selection, item.report, {}, item.error};
    if (!item.report) return entry;
    const ScanReport& report = *item.report;
    const auto measurement = ScanMeasurement::ofReport(report, std::chrono::system_clock::now());
    entry.budgets = BudgetCheck::results(
        budget, {.repository = report.repositoryPath,
                 .measurement = &measurement,
                 .codexInstructions = report.codexInstructions ? &*report.codexInstructions : nullptr});
    return entry;
}

/// The reports in whole when they were asked for, then one line for each folder.
std::string textOf(const std::vector<Entry>& entries, const ScanTextOptions& options) {
    using enum Table::Alignment;
    const Terminal terminal(STDOUT_FILENO);
    std::string text;
    Table table({{"Repository"}, {"Total", right}, {"Result"}, {"Folder"}});
    for (const Entry& entry : entries) {
        if (entry.report && options.details) text += scanText(*entry.report, options, terminal) + '\n';
        Table::Cell result{entry.error ? entry.error->headline() : "", TextStyle::bad};
        if (entry.report)
            result = BudgetCheck::isExceeded(entry.budgets)
                         ? Table::Cell{"Over budget", TextStyle::bad}
                         : Table::Cell{OpinionBands::title(entry.report->band), styleOf(entry.report->band)};
        table.addRow({entry.selection.displayName,
                      entry.report ? LocaleFormat::grouped(entry.report->total) : "",
                      result,
                      {entry.selection.path, TextStyle::dim}});
    }
    return text + table.text(terminal);
}

std::string markdownOf(const std::vector<Entry>& entries) {
    std::string text;
    for (const Entry& entry : entries) {
        if (!text.empty()) text += '\n';
        if (entry.report)
            text += ScanMarkdown::report(*entry.report, entry.budgets, nullptr);
        else if (entry.error)
            text += "### " + Markdown::name(entry.selection.displayName) + "\n\n" + entry.error->headline() +
                    '\n';
    }
    return text;
}

ExitCode show(const ScanOptions& options, const std::vector<Entry>& entries, Terminal& errors) {
    const ExitCode written =
        writeResult(options.format == OutputFormat::json       ? ScanReportJson::reports(entries) + '\n'
                    : options.format == OutputFormat::markdown ? markdownOf(entries)
                                                               : textOf(entries, options.text));
    if (written != ExitCode::success) return written;
    bool isOver = false;
    bool hasFailed = false;
    for (const Entry& entry : entries) {
        const std::string name = Text::visible(entry.selection.displayName);
        if (entry.report) {
            for (const BudgetResult& result : entry.budgets)
                if (const auto line = BudgetPresentation::exceededLine(result))
                    errors.writeLine(errors.styled(TextStyle::bad, name + ": " + Text::visible(*line)));
            isOver = BudgetCheck::isExceeded(entry.budgets) || isOver;
            isOver = isAboveMaximum(options, *entry.report, name, errors) || isOver;
        } else if (entry.error) {
            hasFailed = true;
            showFailure(errors, name + ": " + entry.error->headline(), entry.error->detail());
        }
    }
    if (hasFailed) return ExitCode::failure;
    return isOver ? ExitCode::aboveMaximum : ExitCode::success;
}

/// Before any tool is started; the code with which the command ends when one is broken.
std::variant<Budgets, ExitCode> readBudgets(const ScanOptions& options,
                                            const std::vector<RepoSelection>& folders, Terminal& errors) {
    Budgets budgets;
    for (const RepoSelection& folder : folders) {
        auto budget = budgetFor(options, folder.path, errors);
        if (const auto* code = std::get_if<ExitCode>(&budget)) {
            if (options.budget.file.empty()) errors.writeLine(Text::visible(folder.path));
            return *code;
        }
        budgets[folder.path] = std::get<Budget>(std::move(budget));
    }
    return budgets;
}

} // namespace

ExitCode scanSeveral(const ScanOptions& options) {
    Terminal errors(STDERR_FILENO);
    if (const auto why = objection(options)) {
        showFailure(errors, *why, "");
        return ExitCode::wrongUsage;
    }
    const auto named = namedFolders(options);
    if (!named) {
        showFailure(errors, "The current folder is gone.", "");
        return ExitCode::failure;
    }
    std::variant<Budgets, ExitCode> budgets = Budgets();
    const auto folders = [&](const StopToken& stop) {
        auto all = options.scansAll ? recordedFolders(stop) : *named;
        budgets = readBudgets(options, all, errors);
        if (std::holds_alternative<ExitCode>(budgets)) all.clear();
        return all;
    };
    const auto outcome = runScans(folders, options.jobs, options.request, errors);
    if (const auto* code = std::get_if<ExitCode>(&budgets)) return *code;
    if (const auto* error = std::get_if<ProbeError>(&outcome)) {
        showFailure(errors, error->headline(), error->detail());
        if (options.format != OutputFormat::json) return ExitCode::failure;
        return writeResult(ScanReportJson::failure(error->caseName(), error->headline(), error->detail()) +
                               '\n',
                           ExitCode::failure);
    }
    const auto* result = std::get_if<BatchResult>(&outcome);
    if (result == nullptr)
        return showInterrupted(errors, "Interrupted: the scan was stopped and nothing was recorded.");
    if (result->wasInterrupted)
        return showInterrupted(errors, "Interrupted: " + ScanBatchTexts::progress(result->items) + '.');
    if (result->items.empty()) {
        showFailure(errors, "No folder of the history is still there.", "");
        return ExitCode::failure;
    }
    std::vector<Entry> entries;
    for (const Item& item : result->items)
        entries.push_back(entryOf(item, std::get<Budgets>(budgets)[item.selection.path]));
    return show(options, entries, errors);
}

} // namespace loadscope
