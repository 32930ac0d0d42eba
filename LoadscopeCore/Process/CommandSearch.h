// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Finds the executable of a tool: in a configured place, in the usual ones, in the folders of the search
/// path, then where the user's login shell would take it from. What tries the places is passed in, so that a
/// search needs no file system.
namespace loadscope::CommandSearch {

using ExecutableTest = std::function<bool(const std::string& path)>;
using LoginShellLookup = std::function<std::optional<std::string>()>;

/// The override and then the usual places. A blank override is left out; any other is listed exactly as
/// given.
[[nodiscard]] std::vector<std::string> places(const std::optional<std::string>& override,
                                              std::vector<std::string> usualPlaces);

/// The places and then the command in each of the folders where it does not stand already.
[[nodiscard]] std::vector<std::string> withFolders(std::vector<std::string> places,
                                                   const std::vector<std::string>& folders,
                                                   const std::string& command);

/// The first place that holds an executable, else the lookup's answer when that is one; the lookup is only
/// asked when no place does.
[[nodiscard]] std::optional<std::string> find(const std::vector<std::string>& places,
                                              const ExecutableTest& isExecutable,
                                              const LoginShellLookup& loginShellLookup);

/// The absolute path of what `shell`, as a login shell, runs for the command: that of an alias when it names
/// one, else of the file. A shell function, or an alias that names something else, is passed over. Blocking,
/// bounded by the time-out and the grace period, in seconds.
[[nodiscard]] std::optional<std::string> pathFromLoginShell(const std::string& shell,
                                                            const std::string& command, double timeoutSeconds,
                                                            double killGraceSeconds);

/// The path in what a shell says of a command: lines such as "/usr/bin/tool", "alias tool='/opt/x'",
/// "tool=/opt/x" or "tool: aliased to /opt/x". The first absolute path counts. An alias with arguments counts
/// only when it runs a file of the command's own name: another program may merely start the command.
[[nodiscard]] std::optional<std::string> pathInAnswer(std::string_view answer, std::string_view command);

} // namespace loadscope::CommandSearch
