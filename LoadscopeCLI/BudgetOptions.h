// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"
#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Budget/BudgetCheck.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace CLI {
class App;
}

namespace loadscope {

/// Which budget a command holds a folder against.
struct BudgetOptions {
    std::string file;     ///< --budget; empty: that of the repository
    bool ignores = false; ///< --no-budget
};

/// Adds --budget and --no-budget. `options` must outlive the command.
void addBudgetOptions(CLI::App& command, BudgetOptions& options);

/// The budget for a folder; an empty one when there is none. Warns of unknown keys; says what is wrong with a
/// file, and then gives the code with which the command ends.
[[nodiscard]] std::variant<Budget, ExitCode> readBudget(const BudgetOptions& options,
                                                        const std::string& folder, Terminal& errors);

/// A table of the limits and what became of them, with the remarks that they need.
[[nodiscard]] std::string budgetsText(const std::vector<BudgetResult>& results, const Terminal& terminal);

/// Tells each exceeded limit in one line. Whether there is one.
[[nodiscard]] bool showExceeded(const std::vector<BudgetResult>& results, Terminal& errors);

} // namespace loadscope
