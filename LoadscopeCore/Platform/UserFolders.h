// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>

namespace loadscope {

/// Variables by name; names and values are the bytes that the system holds.
using Environment = std::map<std::string, std::string>;

/// The user's folders and environment as the operating system gives them, read anew at each call. Paths are
/// absolute and without a trailing separator.
namespace UserFolders {

[[nodiscard]] Environment environment();

/// HOME when it is an absolute path, else the home of the password database, else "/".
[[nodiscard]] std::string home();

/// Home folder of a named user, if there is such a user.
[[nodiscard]] std::optional<std::string> homeOfUser(const std::string& name);

[[nodiscard]] std::string temporary();

/// Folder below which applications keep their data: $XDG_DATA_HOME, else .local/share in the home folder;
/// Application Support on macOS. Absent when the user has no usable home folder.
[[nodiscard]] std::optional<std::string> applicationSupport();

[[nodiscard]] std::string current();

/// The user's shell in the password database, if it names one.
[[nodiscard]] std::optional<std::string> passwordDatabaseShell();

} // namespace UserFolders
} // namespace loadscope
