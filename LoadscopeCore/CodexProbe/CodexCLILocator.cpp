// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/LoginShell.h"

namespace loadscope::CodexCLILocator {

namespace {

/// An alias or a shell function is answered with a bare name: that must not run a file of the same name in
/// whatever folder the application happens to be.
std::optional<std::string> absolutePathFromLoginShell() {
    auto answer = loginShellPath(LoginShell::path(), loginShellTimeoutSeconds);
    if (answer && !Text::trimmed(*answer).starts_with('/')) return std::nullopt;
    return answer;
}

} // namespace

std::vector<std::string> candidates(const std::optional<std::string>& override, const std::string& home) {
    std::vector<std::string> places;
    if (override && !Text::trimmedHorizontally(*override).empty()) places.push_back(*override);
    places.push_back(home + "/.npm-global/bin/codex");
    places.push_back(home + "/.local/bin/codex");
    places.emplace_back("/opt/homebrew/bin/codex");
    places.emplace_back("/usr/local/bin/codex");
    return places;
}

std::vector<std::string> searchedPaths(const std::optional<std::string>& override, const std::string& home) {
    std::vector<std::string> places = candidates(override, home);
    places.emplace_back(loginShellProbeLabel);
    return places;
}

CodexAvailability locate(const std::optional<std::string>& override, const std::string& home,
                         const ExecutableTest& isExecutable, const LoginShellLookup& loginShellLookup) {
    for (auto& place : candidates(override, home)) {
        if (isExecutable(place)) return CodexAvailability::found(std::move(place));
    }
    if (const auto answer = loginShellLookup()) {
        std::string path(Text::trimmed(*answer));
        if (!path.empty() && isExecutable(path)) return CodexAvailability::found(std::move(path));
    }
    return CodexAvailability::notInstalled();
}

std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds) {
    return LoginShell::output(shell, "command -v codex", timeoutSeconds, loginShellKillGraceSeconds);
}

CodexAvailability locateForUser(const std::optional<std::string>& override) {
    return locate(override, UserFolders::home(), FilePath::isExecutableFile, absolutePathFromLoginShell);
}

} // namespace loadscope::CodexCLILocator
