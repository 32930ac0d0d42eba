// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/LoginShell.h"
#include "LoadscopeCore/Process/SearchPath.h"

namespace loadscope::CodexCLILocator {

std::vector<std::string> candidates(const std::optional<std::string>& override, const std::string& home) {
    return CommandSearch::places(override, {home + "/.npm-global/bin/codex", home + "/.local/bin/codex",
                                            "/opt/homebrew/bin/codex", "/usr/local/bin/codex"});
}

std::vector<std::string> searchedPaths(const std::optional<std::string>& override, const std::string& home,
                                       const std::vector<std::string>& pathFolders) {
    std::vector<std::string> places =
        CommandSearch::withFolders(candidates(override, home), pathFolders, "codex");
    places.emplace_back(loginShellProbeLabel);
    return places;
}

CodexAvailability locate(const std::optional<std::string>& override, const std::string& home,
                         const ExecutableTest& isExecutable, const LoginShellLookup& loginShellLookup,
                         const std::vector<std::string>& pathFolders) {
    return {CommandSearch::find(CommandSearch::withFolders(candidates(override, home), pathFolders, "codex"),
                                isExecutable, loginShellLookup)};
}

std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds) {
    return CommandSearch::pathFromLoginShell(shell, "codex", timeoutSeconds, loginShellKillGraceSeconds);
}

CodexAvailability locateForUser(const std::optional<std::string>& override) {
    return locate(
        override, UserFolders::home(), FilePath::isExecutableFile,
        [] { return loginShellPath(LoginShell::path(), loginShellTimeoutSeconds); },
        SearchPath::folders(SearchPath::current()));
}

std::vector<std::string> searchedForUser(const std::optional<std::string>& override) {
    return searchedPaths(override, UserFolders::home(), SearchPath::folders(SearchPath::current()));
}

} // namespace loadscope::CodexCLILocator
