// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Path arithmetic and the few questions about files that several folders ask. Paths are bytes. Thread-safe.
namespace loadscope::FilePath {

/// `base` and `name` with one separator between them; an absolute `name` stands for itself.
[[nodiscard]] std::string joined(std::string_view base, std::string_view name);

/// Without the separators at its end; the root keeps its one.
[[nodiscard]] std::string_view withoutTrailingSeparators(std::string_view path);

/// Removes "." and "..", doubled and trailing separators, without touching the file system. What is nothing
/// but removed components becomes "."; the empty path stays empty.
[[nodiscard]] std::string standardized(std::string_view path);

/// Standardizes the path and replaces every symbolic link in it by its target; a relative path starts at the
/// current folder. The part that does not exist is kept as it is; a loop of links ends the resolution before
/// the component that leads into it.
[[nodiscard]] std::string resolved(std::string_view path);

/// What the symbolic link at `path` holds; nothing when no link is there. The path may be longer than the
/// system takes in one piece.
[[nodiscard]] std::optional<std::string> linkTarget(const std::string& path);

/// Expands a leading "~" or "~name" followed by a separator or nothing; other texts come back unchanged.
[[nodiscard]] std::string tildeExpanded(std::string_view path);

/// The last component: "app" of "/src/app" and of "/src/app/"; "/" of the root.
[[nodiscard]] std::string lastComponent(std::string_view path);

/// The path without its last component; the root is its own parent, and a single name has an empty one.
[[nodiscard]] std::string parent(std::string_view path);

/// A text as a piece of a file's name, on any system: what no name may hold becomes "-", and what cannot be
/// seen is written out. Not empty for a text that is not, and short enough to leave room for more.
[[nodiscard]] std::string namePiece(std::string_view text);

/// True when a regular file is there (links followed) and the user may execute it.
[[nodiscard]] bool isExecutableFile(const std::string& path);

} // namespace loadscope::FilePath
