// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/LoginShell.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

namespace loadscope::ClaudeCLILocator {

std::vector<std::string> candidates(const std::optional<std::string>& override, const std::string& home) {
    return CommandSearch::places(
        override, {home + "/.local/bin/claude", "/opt/homebrew/bin/claude", "/usr/local/bin/claude"});
}

std::vector<std::string> searchedPaths(const std::optional<std::string>& override, const std::string& home,
                                       const std::vector<std::string>& pathFolders) {
    std::vector<std::string> places =
        CommandSearch::withFolders(candidates(override, home), pathFolders, "claude");
    places.emplace_back(loginShellProbeLabel);
    return places;
}

std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds) {
    return CommandSearch::pathFromLoginShell(shell, "claude", timeoutSeconds, loginShellKillGraceSeconds);
}

std::string resolve(const std::optional<std::string>& override, const std::string& home,
                    const ExecutableTest& isExecutable, const LoginShellLookup& loginShellLookup,
                    const std::vector<std::string>& pathFolders) {
    const std::vector<std::string> places =
        CommandSearch::withFolders(candidates(override, home), pathFolders, "claude");
    if (auto found = CommandSearch::find(places, isExecutable, loginShellLookup)) return *std::move(found);
    throw ProbeError(ProbeError::CLINotFound{searchedPaths(override, home, pathFolders)});
}

std::string resolveForUser(const std::optional<std::string>& override) {
    try {
        return resolve(
            override, UserFolders::home(), FilePath::isExecutableFile,
            [] { return loginShellPath(LoginShell::path(), loginShellTimeoutSeconds); },
            SearchPath::folders(SearchPath::current()));
    } catch (const ProbeError&) {
        throw ProbeError(ProbeError::CLINotFound{searchedForUser(override)});
    }
}

std::vector<std::string> searchedForUser(const std::optional<std::string>& override) {
    auto places = searchedPaths(override, UserFolders::home(), SearchPath::folders(SearchPath::current()));
    // The one that was really asked.
    places.back() = FilePath::lastComponent(LoginShell::path()) + " -lc 'command -v claude'";
    return places;
}

} // namespace loadscope::ClaudeCLILocator
