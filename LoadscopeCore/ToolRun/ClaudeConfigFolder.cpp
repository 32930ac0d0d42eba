// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

namespace loadscope::ClaudeConfigFolder {

std::optional<std::string> normalized(std::string_view value, const std::string& workingDirectory) {
    const std::string_view trimmed = Text::trimmed(value);
    if (trimmed.empty()) return std::nullopt;
    const std::string expanded = FilePath::tildeExpanded(trimmed);
    const bool isAbsolute = expanded.starts_with('/');
    return FilePath::standardized(isAbsolute ? expanded : FilePath::joined(workingDirectory, expanded));
}

std::string path(const std::string& home, const Environment& environment) {
    std::optional<std::string> folder;
    const auto configDir = environment.find(environmentKey);
    if (configDir != environment.end()) folder = normalized(configDir->second, UserFolders::current());
    return folder ? *std::move(folder) : FilePath::joined(home, ".claude");
}

} // namespace loadscope::ClaudeConfigFolder
