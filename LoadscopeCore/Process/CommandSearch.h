// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Finds the executable of a tool: in a configured place, in the usual ones, then where the user's login
/// shell would take it from. What tries the places is passed in, so that a search needs no file system.
namespace loadscope::CommandSearch {

using ExecutableTest = std::function<bool(const std::string& path)>;
using LoginShellLookup = std::function<std::optional<std::string>()>;

/// The override and then the usual places. A blank override is left out; any other is listed exactly as
/// given.
[[nodiscard]] std::vector<std::string> places(const std::optional<std::string>& override,
                                              std::vector<std::string> usualPlaces);

/// The first place that holds an executable, else the lookup's answer when that is one; the lookup is only
/// asked when no place does.
[[nodiscard]] std::optional<std::string> find(const std::vector<std::string>& places,
                                              const ExecutableTest& isExecutable,
                                              const LoginShellLookup& loginShellLookup);

/// What the user's login shell answers to "command -v `command`", when that is an absolute path: an alias or
/// a shell function is answered with a bare name, which must not run a file of the same name in whatever
/// folder the application happens to be. Blocking, bounded by the time-out and the grace period, in seconds.
[[nodiscard]] std::optional<std::string>
absolutePathFromLoginShell(const std::string& command, double timeoutSeconds, double killGraceSeconds);

} // namespace loadscope::CommandSearch
