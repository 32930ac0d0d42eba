// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/BudgetCheck.h"
#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <string>
#include <vector>

namespace loadscope {

/// What can be known of a repository without starting any tool: its instruction files, where its imports
/// lead, what Codex cuts off, and the limits that files have. Plain value.
struct RepositoryCheck {
    std::string repositoryName;
    std::string repositoryPath;
    InstructionFileSet files;
    std::vector<std::string> importedFromOutside; ///< where imports of its own files lead out of it
    CodexInstructions codexInstructions;
    std::vector<BudgetResult> budgets;

    /// Of one folder and the folders of one user. Blocking; reads only what instruction files and budgets ask
    /// for, starts nothing.
    [[nodiscard]] static RepositoryCheck of(const std::string& folder, const Budget& budget);
};

} // namespace loadscope
