// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/BudgetOptions.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"

#include <CLI/CLI.hpp>

namespace loadscope {

void addBudgetOptions(CLI::App& command, BudgetOptions& options) {
    CLI::Option* file =
        command
            .add_option("--budget", options.file,
                        std::string("Hold the folder against this budget, not its own ") + Budget::fileName)
            ->option_text("FILE");
    command.add_flag("--no-budget", options.ignores, "Hold the folder against no budget")->excludes(file);
}

std::variant<Budget, ExitCode> readBudget(const BudgetOptions& options, const std::string& folder,
                                          Terminal& errors) {
    if (options.ignores) return Budget();
    std::variant<BudgetFile::Contents, BudgetFile::Failure> read;
    if (!options.file.empty())
        read = BudgetFile::load(options.file);
    else if (auto own = BudgetFile::ofRepository(folder))
        read = *std::move(own);
    const std::string name = Text::visible(options.file.empty() ? Budget::fileName : options.file);
    if (const auto* failure = std::get_if<BudgetFile::Failure>(&read)) {
        const bool hasLine = failure->reason.starts_with("line ");
        showFailure(errors, name + (hasLine ? ", " : " ") + Text::visible(failure->reason), "");
        return ExitCode::wrongUsage;
    }
    auto& contents = std::get<BudgetFile::Contents>(read);
    for (const std::string& warning : contents.warnings)
        errors.writeLine(errors.styled(TextStyle::warning, name + ": " + Text::visible(warning)));
    return std::move(contents.budget);
}

std::string budgetsText(const std::vector<BudgetResult>& results, const Terminal& terminal) {
    using enum Table::Alignment;
    Table table({{"Budget"}, {"Value", right}, {"Limit", right}, {"State"}});
    std::string remarks;
    for (const BudgetResult& result : results) {
        table.addRow(
            {BudgetPresentation::subject(result),
             BudgetPresentation::value(result),
             BudgetPresentation::limit(result),
             {BudgetPresentation::state(result), result.isExceeded() ? TextStyle::bad : TextStyle::plain}});
        if (const auto remark = BudgetPresentation::remark(result))
            remarks += terminal.styled(TextStyle::dim, Text::visible(*remark)) + '\n';
    }
    return table.text(terminal) + remarks;
}

bool showExceeded(const std::vector<BudgetResult>& results, Terminal& errors) {
    for (const BudgetResult& result : results)
        if (const auto line = BudgetPresentation::exceededLine(result))
            errors.writeLine(errors.styled(TextStyle::bad, Text::visible(*line)));
    return BudgetCheck::isExceeded(results);
}

} // namespace loadscope
