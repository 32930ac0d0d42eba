// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UserFolders.h"

#include <optional>
#include <set>
#include <string>

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

/// The environment for a child of `tool`. `workingDirectory` is the application's own current folder, against
/// which a relative CLAUDE_CONFIG_DIR is made absolute; one without a usable value is removed.
[[nodiscard]] Environment childEnvironment(Tool tool, const Environment& base,
                                           const std::string& workingDirectory);

} // namespace loadscope::ProbeEnvironment
