// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// What the tool says of its memory files, beside the instruction files that were found.
struct MemoryFiles {
    std::map<std::string, PreciseCount> reported; ///< the tool's own counts, by the path of a found file
    std::vector<ContextMember> loadedElsewhere{}; ///< listed by the tool, not found; in its order
    std::vector<std::string> foundNotListed{};    ///< paths of found files that the tool does not list

    bool operator==(const MemoryFiles&) const = default;
};

/// Tells which files of a report are the ones that were found.
namespace MemoryFileMatcher {

/// A path without links, "." and ".."; may ask the file system.
using PathResolver = std::function<std::string(std::string_view path)>;

/// How many paths of a report are resolved at most; the others only match as they are written.
inline constexpr std::size_t mostResolved = 2000;

/// Compares resolved paths. Those of the report may begin with "~", be relative to `repository`, and have a
/// bar where the file's name has a backslash before it. A file that is listed twice is loaded twice: its
/// counts add up. As blocking as `resolver` is.
[[nodiscard]] MemoryFiles match(const ContextDetails& details, const InstructionFileSet& found,
                                const std::string& repository, const PathResolver& resolver);

} // namespace MemoryFileMatcher
} // namespace loadscope
