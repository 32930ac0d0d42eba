// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/RepositoryCheck.h"

#include "LoadscopeCore/Instructions/InstructionFileScanner.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include <utility>

namespace loadscope {

RepositoryCheck RepositoryCheck::of(const std::string& folder, const Budget& budget) {
    const RepoSelection selection(folder);
    const std::string home = UserFolders::home();
    RepositoryCheck check;
    check.repositoryName = selection.displayName;
    check.repositoryPath = selection.path;
    auto found = InstructionFileScanner(home, ClaudeConfigFolder::path(home, UserFolders::environment()))
                     .scanWithOutside(selection.path);
    check.files = std::move(found.files);
    check.importedFromOutside = std::move(found.outside);
    check.codexInstructions = CodexInstructions::find(selection.path, CodexConfiguration::forUser());
    check.budgets = BudgetCheck::results(
        budget, {.repository = selection.path, .codexInstructions = &check.codexInstructions});
    return check;
}

} // namespace loadscope
