// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Process/CommandSearch.h"

#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// Where the `codex` executable is; no path means that it is not installed.
struct CodexAvailability {
    std::optional<std::string> path;

    [[nodiscard]] static CodexAvailability found(std::string path) { return {std::move(path)}; }
    [[nodiscard]] static CodexAvailability notInstalled() { return {}; }
    bool operator==(const CodexAvailability&) const = default;
};

/// Finds the `codex` executable: a configured path, the usual places, the folders of `PATH`, then whatever
/// the user's login shell would run.
namespace CodexCLILocator {

inline constexpr const char* loginShellProbeLabel = "zsh -lc 'command -v codex'";
inline constexpr double loginShellTimeoutSeconds = 5.0;
inline constexpr double loginShellKillGraceSeconds = 1.0;

using CommandSearch::ExecutableTest;
using CommandSearch::LoginShellLookup;

[[nodiscard]] std::vector<std::string> candidates(const std::optional<std::string>& override,
                                                  const std::string& home);

/// The candidates, the command in each of the other folders, and then the login shell's label: every place
/// that a search tries.
[[nodiscard]] std::vector<std::string> searchedPaths(const std::optional<std::string>& override,
                                                     const std::string& home,
                                                     const std::vector<std::string>& pathFolders = {});

/// Never fails: what cannot be tried counts as not there.
[[nodiscard]] CodexAvailability locate(const std::optional<std::string>& override, const std::string& home,
                                       const ExecutableTest& isExecutable,
                                       const LoginShellLookup& loginShellLookup,
                                       const std::vector<std::string>& pathFolders = {});

/// Where the login shell has the command from, as `CommandSearch::pathFromLoginShell` says; nothing when it
/// takes longer than `timeoutSeconds`. Blocking, bounded by the time-out plus its grace periods.
[[nodiscard]] std::optional<std::string> loginShellPath(const std::string& shell, double timeoutSeconds);

/// `locate` over the real file system, the user's home folder, search path and login shell.
[[nodiscard]] CodexAvailability locateForUser(const std::optional<std::string>& override = {});

/// The places that such a search tries.
[[nodiscard]] std::vector<std::string> searchedForUser(const std::optional<std::string>& override = {});

} // namespace CodexCLILocator
} // namespace loadscope
