// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Folders of a chosen size for the comparisons. Each function fills an existing folder.
namespace loadscope::Samples {

/// Empty transcripts of this many sessions, a hundred to a project. Returns the name of one session that
/// stands among the last.
std::string fillWithTranscripts(const std::string& folder, std::size_t sessions);

/// A repository whose instruction file imports this many files of some kilobytes. Returns the paths of all.
std::vector<std::string> fillWithImports(const std::string& folder, std::size_t imports);

/// A home folder in which both stand-in tools are installed.
void fillWithTools(const std::string& home, const std::string& standIns);

} // namespace loadscope::Samples
