// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ConfiguredServers.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <functional>
#include <string>
#include <vector>

namespace loadscope {

/// Finds what a person could change about a total, and which of their servers are not in it. What belongs to
/// the tool, to a plugin or to whoever manages the computer is never among it.
namespace LargestChangeable {

inline constexpr std::size_t mostGroups = 3;

/// Whether a regular file is there.
using FileCheck = std::function<bool(const std::string& path)>;
[[nodiscard]] bool isRegularFile(const std::string& path);

/// The largest groups of a report by tokens descending, then kind and name. A server counts where a settings
/// file names it; skills and agents are looked for in the folders `configFolder` and `.claude`, by at most
/// two questions each.
[[nodiscard]] std::vector<ChangeableGroup> groups(const ScanReport& report,
                                                  const std::vector<ConfiguredServer>& configured,
                                                  const std::string& configFolder,
                                                  const FileCheck& isFile = isRegularFile);

/// Configured servers without a line in the tool's report, once each; none when the report lists nothing at
/// all.
[[nodiscard]] std::vector<std::string> missingServers(const ScanReport& report,
                                                      const std::vector<ConfiguredServer>& configured);

/// Sets both in the report.
void addTo(ScanReport& report, const std::vector<ConfiguredServer>& configured,
           const std::string& configFolder);

} // namespace LargestChangeable
} // namespace loadscope
