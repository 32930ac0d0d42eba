// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Tells that a tool could not run because the interpreter of its script is missing: `node`, mostly, which a
/// version manager puts into the search path of a shell only.
namespace loadscope::MissingInterpreter {

/// The interpreter that a shell or `env` could not find, by what it says on standard error.
[[nodiscard]] std::optional<std::string> inErrorText(std::string_view standardError);

/// The interpreter in the first line of the script, when there is no such file.
[[nodiscard]] std::optional<std::string> ofScript(const std::string& script);

/// For the user: what is missing, and where it was looked for.
[[nodiscard]] std::string detail(const std::string& tool, const std::string& interpreter,
                                 const std::string& searchPath);

} // namespace loadscope::MissingInterpreter
