// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// A server that a settings file of Claude Code names. Nothing but that name is kept of the file.
struct ConfiguredServer {
    /// How far the setting reaches, in the tool's own words; empty where the tool has no word for the file.
    std::string scope;
    std::string name;
    std::string file; ///< the path of the settings file

    bool operator==(const ConfiguredServer&) const = default;
};

/// Finds which servers are configured. Of the settings only keys are kept; values are passed over as the text
/// is read.
namespace ConfiguredServers {

inline constexpr std::size_t largestFile = std::size_t{16} << 20;
inline constexpr std::size_t mostServers = 1000; ///< of one file
inline constexpr std::size_t longestName = 200;  ///< bytes; longer ones are passed over

/// In falling order of precedence: those of the user's `.claude.json` (in the home folder or, where that is
/// elsewhere, in the configuration's) for this folder, of the folder's `.mcp.json`, of the `.claude.json` for
/// every folder, and of the user's and the folder's settings. Blocking; never fails: what cannot be read
/// names no server.
[[nodiscard]] std::vector<ConfiguredServer> read(const std::string& repository, const std::string& home,
                                                 const std::string& configFolder);

/// The keys of the object "mcpServers" in a JSON document, or of that in the entry of `project` below
/// "projects" when a project is named; none when the text is no JSON.
[[nodiscard]] std::vector<std::string> names(std::string_view text, std::string_view project = {});

/// The name as the tool writes it where only letters, digits, "_" and "-" may stand.
[[nodiscard]] std::string normalized(std::string_view name);

} // namespace ConfiguredServers
} // namespace loadscope
