// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UserFolders.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

/// What environment a child process of a coding tool receives: variables that would redirect it to another
/// account or endpoint are removed, the user's own sign-in and configuration folder stay, everything else
/// passes through. Pure functions.
namespace loadscope::ProbeEnvironment {

enum class Tool { claude, codex };

inline constexpr const char* scrubbedKeyPrefix = "CLAUDE_CODE_";
inline constexpr const char* claudeOAuthTokenKey = "CLAUDE_CODE_OAUTH_TOKEN";

/// "claude" or "codex".
[[nodiscard]] std::string rawValue(Tool tool);

[[nodiscard]] std::set<std::string> preservedKeys(Tool tool);
[[nodiscard]] std::set<std::string> scrubbedExactKeys(Tool tool);

/// What a scan may ask for beyond the rules.
struct Options {
    bool keepsSignIn = false;     ///< nothing is removed but the mark of a session that is under way
    bool waitsForServers = false; ///< Claude Code is told to wait for servers that start slowly

    bool operator==(const Options&) const = default;
};

/// The environment for a child of `tool`. `workingDirectory` is the application's own current folder, against
/// which a relative CLAUDE_CONFIG_DIR is made absolute; one without a usable value is removed.
[[nodiscard]] Environment childEnvironment(Tool tool, const Environment& base,
                                           const std::string& workingDirectory, const Options& options = {});

/// Names of the variables in `base` that a child of `tool` does not get, sorted.
[[nodiscard]] std::vector<std::string> removedVariables(Tool tool, const Environment& base,
                                                        const Options& options = {});

/// Names of the variables in `base` that choose an account, an endpoint or a configuration and reach a child
/// of `tool` all the same, sorted.
[[nodiscard]] std::vector<std::string> keptVariables(Tool tool, const Environment& base,
                                                     const Options& options = {});

/// Those of the removed variables that sign Claude Code in or lead it to another service.
[[nodiscard]] std::vector<std::string> removedSignInVariables(const Environment& base);

} // namespace loadscope::ProbeEnvironment
