// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/LoginShell.h"

namespace loadscope::CodexCLILocator {

std::vector<std::string> candidates(const std::optional<std::string>& override, const std::string& home) {
    return CommandSearch::places(override, {home + "/.npm-global/bin/codex", home + "/.local/bin/codex",
                                            "/opt/homebrew/bin/codex", "/usr/local/bin/codex"});
}

std::vector<std::string> searchedPaths(const std::optional<std::string>& override, const std::string& home) {
    std::vector<std::string> places = candidates(override, home);
    places.emplace_back(loginShellProbeLabel);
    return places;
}

CodexAvailability locate(const std::optional<std::string>& override, const std::string& home,
                         const ExecutableTest& isExecutable, const LoginShellLookup& loginShellLookup) {
    return {CommandSearch::find(candidates(override, home), isExecutable, loginShellLookup)};
}

std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds) {
    return LoginShell::output(shell, "command -v codex", timeoutSeconds, loginShellKillGraceSeconds);
}

CodexAvailability locateForUser(const std::optional<std::string>& override) {
    return locate(override, UserFolders::home(), FilePath::isExecutableFile, [] {
        return CommandSearch::absolutePathFromLoginShell("codex", loginShellTimeoutSeconds,
                                                         loginShellKillGraceSeconds);
    });
}

} // namespace loadscope::CodexCLILocator
