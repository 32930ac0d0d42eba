// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/CheckCommand.h"

#include "LoadscopeCLI/BudgetOptions.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/OutputFormat.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Budget/RepositoryCheck.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/CheckPresentation.h"
#include "LoadscopeCore/Scan/FolderAccess.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

using enum Table::Alignment;

struct Options {
    std::string folder = ".";
    BudgetOptions budget;
    OutputFormat format = OutputFormat::text;
};

constexpr const char* examples = R"(Examples:
  loadscope check                      the current folder
  loadscope check --format markdown    for a comment below a pull request
  loadscope check --format junit       one test case for each budget

Starts no tool and no other program, needs no account and no network: safe for a stranger's pull request.

Exit codes: 0 checked, 1 failed, 2 wrong usage or a broken budget, 3 over a budget.)";

std::string filesTable(const RepositoryCheck& check, const Terminal& terminal) {
    Table table({{"Tokens", right}, {"Bytes", right}, {"Tier"}, {"Instruction file (estimate)"}});
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const InstructionFileEstimate& file : check.files.files(tier))
            table.addRow({'~' + LocaleFormat::grouped(file.estimatedTokens),
                          LocaleFormat::grouped(file.byteCount), rawValue(tier), file.path});
    return table.text(terminal);
}

std::string checkText(const RepositoryCheck& check, const Terminal& terminal) {
    std::string text = Text::visible(check.repositoryName) + '\n' +
                       terminal.styled(TextStyle::bold, CheckPresentation::headline(check)) + '\n' +
                       terminal.styled(TextStyle::dim, CheckPresentation::estimateNote) + '\n';
    for (const std::string& note : CheckPresentation::notes(check))
        text += '\n' + terminal.styled(TextStyle::warning, Text::visible(note)) + '\n';
    if (!check.files.allFiles().empty()) text += '\n' + filesTable(check, terminal);
    if (!check.budgets.empty()) text += '\n' + budgetsText(check.budgets, terminal);
    return text;
}

std::string textOf(const RepositoryCheck& check, OutputFormat format) {
    switch (format) {
    case OutputFormat::markdown:
        return CheckPresentation::markdown(check);
    case OutputFormat::json:
        return CheckPresentation::json(check) + '\n';
    case OutputFormat::junit:
        return BudgetPresentation::junit(check.repositoryName, check.budgets);
    case OutputFormat::text:
        break;
    }
    return checkText(check, Terminal(STDOUT_FILENO));
}

ExitCode check(const Options& options) {
    Terminal errors(STDERR_FILENO);
    const auto folder = absoluteFolder(options.folder);
    const auto unreadable = folder
                                ? FolderAccess::check(*folder)
                                : std::optional(ProbeError(ProbeError::RepositoryUnreadable{options.folder}));
    if (unreadable) {
        showFailure(errors, unreadable->headline(), unreadable->detail());
        return ExitCode::failure;
    }
    const auto budget = readBudget(options.budget, *folder, errors);
    if (const auto* code = std::get_if<ExitCode>(&budget)) return *code;
    const RepositoryCheck result = RepositoryCheck::of(*folder, std::get<Budget>(budget));
    const ExitCode written = writeResult(textOf(result, options.format));
    if (written != ExitCode::success) return written;
    return showExceeded(result.budgets, errors) ? ExitCode::aboveMaximum : ExitCode::success;
}

} // namespace

void addCheckCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command =
        app.add_subcommand("check", "Check instruction files and budgets without starting any tool");
    auto options = std::make_shared<Options>();
    command->add_option("FOLDER", options->folder, "Folder to check (the current one)")
        ->check([](const std::string& folder) { return folder.empty() ? "FOLDER is empty" : ""; });
    addBudgetOptions(*command, options->budget);
    addFormatOption(*command, options->format,
                    {OutputFormat::text, OutputFormat::markdown, OutputFormat::json, OutputFormat::junit},
                    true);
    command->footer(examples);
    command->callback([options, &exitCode] { exitCode = check(*options); });
}

} // namespace loadscope
