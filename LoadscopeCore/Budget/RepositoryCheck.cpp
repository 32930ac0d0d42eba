// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/RepositoryCheck.h"

#include "LoadscopeCore/Instructions/InstructionFileScanner.h"
#include "LoadscopeCore/Instructions/PathLookup.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include <algorithm>

namespace loadscope {

RepositoryCheck RepositoryCheck::of(const std::string& folder, const Budget& budget) {
    const RepoSelection selection(folder);
    const std::string home = UserFolders::home();
    RepositoryCheck check;
    check.repositoryName = selection.displayName;
    check.repositoryPath = selection.path;
    check.files = InstructionFileScanner(home, ClaudeConfigFolder::path(home, UserFolders::environment()))
                      .scan(selection.path);
    const std::string inside = PathLookup().find(selection.path).path;
    for (const InstructionFileEstimate& file : check.files.repositoryFiles)
        if (!isUnder(file.path, inside) && !isUnder(file.path, selection.path))
            check.importedFromOutside.push_back(file.path);
    std::sort(check.importedFromOutside.begin(), check.importedFromOutside.end());
    check.codexInstructions = CodexInstructions::find(selection.path, CodexConfiguration::forUser());
    check.budgets = BudgetCheck::results(
        budget, {.repository = selection.path, .codexInstructions = &check.codexInstructions});
    return check;
}

} // namespace loadscope
