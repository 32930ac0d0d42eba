// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/LoginShell.h"

namespace loadscope::ClaudeCLILocator {

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
    places.push_back(home + "/.local/bin/claude");
    places.emplace_back("/opt/homebrew/bin/claude");
    places.emplace_back("/usr/local/bin/claude");
    return places;
}

std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds) {
    return LoginShell::output(shell, "command -v claude", timeoutSeconds, loginShellKillGraceSeconds);
}

std::string resolve(const std::optional<std::string>& override, const std::string& home,
                    const ExecutableTest& isExecutable, const LoginShellLookup& loginShellLookup) {
    std::vector<std::string> places = candidates(override, home);
    for (const auto& place : places) {
        if (isExecutable(place)) return place;
    }
    if (const auto answer = loginShellLookup()) {
        std::string path(Text::trimmed(*answer));
        if (!path.empty() && isExecutable(path)) return path;
    }
    places.emplace_back(loginShellProbeLabel);
    throw ProbeError(ProbeError::CLINotFound{std::move(places)});
}

std::string resolveForUser(const std::optional<std::string>& override) {
    return resolve(override, UserFolders::home(), FilePath::isExecutableFile, absolutePathFromLoginShell);
}

} // namespace loadscope::ClaudeCLILocator
