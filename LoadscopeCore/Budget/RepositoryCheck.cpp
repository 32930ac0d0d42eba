// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/RepositoryCheck.h"

#include "LoadscopeCore/Instructions/InstructionFileReader.h"
#include "LoadscopeCore/Instructions/InstructionFileScanner.h"
#include "LoadscopeCore/Instructions/InstructionImports.h"
#include "LoadscopeCore/Instructions/PathLookup.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include <set>

namespace loadscope {

namespace {

/// Where the imports of files lead that do not lead into the repository, whether something is there or not.
std::vector<std::string> importsFromOutside(const std::vector<InstructionFileEstimate>& files,
                                            const std::string& repository, const std::string& home) {
    PathLookup lookup(repository);
    InstructionFileReader reader;
    const std::string inside = lookup.find(repository).path;
    std::set<std::string> outside;
    for (const InstructionFileEstimate& file : files) {
        const auto result =
            reader.read(lookup, lookup.findAndOpen(file.path), InstructionFileScanner::maximumParsedBytes);
        if (!result.text) continue;
        const auto visit = [&](const std::string& target) {
            const std::string path = lookup.find(target).path;
            if (!isUnder(path, inside)) outside.insert(path);
            return outside.size() < RepositoryCheck::mostOutside;
        };
        InstructionImports::visitTargets(*result.text, FilePath::parent(file.path), home, visit);
    }
    return {outside.begin(), outside.end()};
}

} // namespace

RepositoryCheck RepositoryCheck::of(const std::string& folder, const Budget& budget) {
    const RepoSelection selection(folder);
    const std::string home = UserFolders::home();
    RepositoryCheck check;
    check.repositoryName = selection.displayName;
    check.repositoryPath = selection.path;
    check.files = InstructionFileScanner(home, ClaudeConfigFolder::path(home, UserFolders::environment()))
                      .scan(selection.path);
    check.importedFromOutside = importsFromOutside(check.files.repositoryFiles, selection.path, home);
    check.codexInstructions = CodexInstructions::find(selection.path, CodexConfiguration::forUser());
    check.budgets = BudgetCheck::results(
        budget, {.repository = selection.path, .codexInstructions = &check.codexInstructions});
    return check;
}

} // namespace loadscope
