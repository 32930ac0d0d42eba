// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UserFolders.h"

#include <optional>
#include <string>
#include <string_view>

/// Where Claude Code keeps its configuration.
namespace loadscope::ClaudeConfigFolder {

inline constexpr const char* environmentKey = "CLAUDE_CONFIG_DIR";

/// CLAUDE_CONFIG_DIR when that is usable, else .claude in the home folder.
[[nodiscard]] std::string path(const std::string& home, const Environment& environment);

/// A CLAUDE_CONFIG_DIR value as an absolute, standardized path (links unresolved); nothing when it is blank.
[[nodiscard]] std::optional<std::string> normalized(std::string_view value,
                                                    const std::string& workingDirectory);

} // namespace loadscope::ClaudeConfigFolder
