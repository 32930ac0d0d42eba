// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/HistoryCommand.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/HistoryTransfer.h"
#include "LoadscopeCLI/ScanText.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryExport.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ConditionTexts.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

using enum Table::Alignment;

struct Options {
    std::string repository;
    std::string tool;
    bool json = false;
    bool yes = false;
    std::vector<std::string> imported;
    std::string output;
};

constexpr const char* examples = R"(Examples:
  loadscope history                                  every recorded scan, newest first
  loadscope history --repository . --tool claude     those of the current folder
  loadscope history --json | jq '.scans[-1].total'   the newest total, for scripts
  loadscope history export --output scans.json       keep the history, or take it along
  loadscope history import scans.json */context.json   add histories and reports of `scan --json`
  loadscope history clear --yes                      delete the history without asking)";

/// One column of the table; those that nothing stands in are left out.
struct Column {
    Table::Column head;
    std::function<Table::Cell(const RecordedScan&)> cell;
    bool isShown = true;
};

std::string dateOf(const RecordedScan& scan) {
    const bool isAhead = scan.isDatedAhead(std::chrono::system_clock::now());
    return LocaleFormat::dateAndTime(scan.date) + (isAhead ? ConditionTexts::datedAhead : "");
}

std::vector<Column> columnsFor(const std::vector<RecordedScan>& scans) {
    using Scan = RecordedScan;
    const auto anyHas = [&](const auto& member) {
        return std::any_of(scans.begin(), scans.end(), [&](const Scan& scan) { return scan.*member; });
    };
    return {
        {{"Date"}, dateOf},
        {{"Repository"}, [](const Scan& scan) { return scan.repositoryName; }},
        {{"Tool"}, [](const Scan& scan) { return RecordedScanPresentation::toolLabel(scan); }},
        {{"Version"},
         [](const Scan& scan) { return scan.toolVersion.value_or(""); },
         anyHas(&Scan::toolVersion)},
        {{"Model"}, [](const Scan& scan) { return scan.model.value_or(""); }, anyHas(&Scan::model)},
        {{"Total", right}, [](const Scan& scan) { return LocaleFormat::grouped(scan.total); }},
        {{"Band"},
         [](const Scan& scan) {
             return Table::Cell(OpinionBands::title(scan.band()), styleOf(scan.band()));
         }},
        {{"Categories"}, [](const Scan& scan) { return RecordedScanPresentation::largestCategories(scan); }},
    };
}

std::string historyText(const std::vector<RecordedScan>& scans, const Terminal& terminal) {
    std::vector<Column> columns = columnsFor(scans);
    std::erase_if(columns, [](const Column& column) { return !column.isShown; });
    std::vector<Table::Column> heads;
    for (const Column& column : columns)
        heads.push_back(column.head);
    Table table(std::move(heads));
    for (const RecordedScan& scan : ScanHistory::newestFirst(scans)) {
        std::vector<Table::Cell> row;
        for (const Column& column : columns)
            row.push_back(column.cell(scan));
        table.addRow(std::move(row));
    }
    return table.text(terminal, true);
}

ExitCode showHistory(const Options& options) {
    Terminal errors(STDERR_FILENO);
    std::vector<RecordedScan> scans = ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load();
    if (!options.repository.empty()) {
        const auto path = absoluteFolder(options.repository);
        std::erase_if(scans, [&](const RecordedScan& scan) { return scan.repositoryPath != path; });
    }
    if (!options.tool.empty())
        std::erase_if(scans, [&](const RecordedScan& scan) { return scan.tool != options.tool; });
    if (options.json) return writeResult(ScanHistoryExport::json(scans) + '\n');
    if (scans.empty()) {
        errors.writeLine("No scans recorded.");
        return ExitCode::success;
    }
    return writeResult(historyText(scans, Terminal(STDOUT_FILENO)));
}

/// Whether the user, asked on the terminal, agrees.
bool confirmed(Terminal& errors, std::size_t scans) {
    errors.write("Delete all recorded scans (" + LocaleFormat::grouped(static_cast<std::int64_t>(scans)) +
                 ")? This cannot be undone. [y/N] ");
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

/// False, with a word to the user, when options of the list were given to a command of the whole history.
bool concernsAll(const Options& options, const char* what) {
    if (options.repository.empty() && options.tool.empty() && !options.json) return true;
    Terminal errors(STDERR_FILENO);
    showFailure(errors, what, "");
    return false;
}

ExitCode clearHistory(const Options& options) {
    Terminal errors(STDERR_FILENO);
    if (!concernsAll(options, "`history clear` deletes the whole history and takes --yes only."))
        return ExitCode::wrongUsage;
    ScanHistoryStore store(ScanHistoryStore::defaultDirectory());
    if (!options.yes) {
        if (isatty(STDIN_FILENO) != 1 || !errors.isTerminal()) {
            showFailure(errors, "Deleting the history needs --yes when nobody can be asked.", "");
            return ExitCode::wrongUsage;
        }
        if (!confirmed(errors, store.load().size())) {
            errors.writeLine("Nothing was deleted.");
            return ExitCode::success;
        }
    }
    if (!store.clear()) {
        showFailure(errors, "The history could not be deleted.", store.filePath());
        return ExitCode::failure;
    }
    return writeResult("The history is empty.\n");
}

} // namespace

void addHistoryCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command = app.add_subcommand("history", "Show the recorded scans, newest first");
    auto options = std::make_shared<Options>();
    command->add_option("--repository", options->repository, "Only scans of this folder")
        ->option_text("PATH");
    command->add_option("--tool", options->tool, "Only scans of this tool: claude or codex")
        ->option_text("TOOL")
        ->check(CLI::IsMember({RecordedScan::claudeTool, RecordedScan::codexTool}));
    command->add_flag("--json", options->json, "Print one JSON object, oldest scan first");
    command->footer(examples);
    CLI::App* clear = command->add_subcommand("clear", "Delete the history");
    clear->add_flag("--yes", options->yes, "Do not ask");
    CLI::App* import =
        command->add_subcommand("import", "Add the scans of reports and histories that are not there yet");
    import
        ->add_option("FILE", options->imported,
                     "Reports of `scan --json` and other histories; - is the standard input")
        ->required();
    CLI::App* exported = command->add_subcommand("export", "Write the history as a file for `import`");
    exported->add_option("--output", options->output, "Write to this file, which is replaced")
        ->option_text("FILE")
        ->check([](const std::string& file) { return file.empty() ? "FILE is empty" : ""; });
    command->require_subcommand(0, 1);
    command->callback([options, command, clear, import, exported, &exitCode] {
        if (command->got_subcommand(clear))
            exitCode = clearHistory(*options);
        else if (command->got_subcommand(import))
            exitCode = concernsAll(*options, "`history import` takes files only.")
                           ? importHistory(options->imported)
                           : ExitCode::wrongUsage;
        else if (command->got_subcommand(exported))
            exitCode =
                concernsAll(*options, "`history export` writes the whole history and takes --output only.")
                    ? exportHistory(options->output)
                    : ExitCode::wrongUsage;
        else
            exitCode = showHistory(*options);
    });
}

} // namespace loadscope
