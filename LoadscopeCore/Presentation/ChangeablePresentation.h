// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <optional>
#include <string>

namespace loadscope {

/// The sentences of "Largest you can change". Pure functions. Names and paths come from outside and stand in
/// the texts as they are, but never in one that is made to be pasted.
namespace ChangeablePresentation {

inline constexpr const char* title = "Largest you can change";
inline constexpr const char* detail =
    "Servers, instruction files, skills and agents of yours with the most tokens in this total. Nothing is "
    "changed here: what you copy is for you to use.";
inline constexpr const char* copyButton = "Copy";

/// "Server", "Instruction file", "Skill" or "Agent".
[[nodiscard]] std::string kind(const ChangeableGroup& group);

/// "6,000 tokens · 15.7% of total", for an estimate by size with its label.
[[nodiscard]] std::string number(const ScanReport& report, const ChangeableGroup& group);

/// "named in /src/app/.mcp.json"; empty for a group whose file is its name, or is not known.
[[nodiscard]] std::string place(const ChangeableGroup& group);

/// The command that switches a server off, else the path of the file to edit, quoted for a shell. Nothing
/// when there is none, or when it would hold characters that a terminal obeys.
[[nodiscard]] std::optional<std::string> copyable(const ChangeableGroup& group);

/// "2 configured servers are not in this report: …", with their names.
[[nodiscard]] std::optional<std::string> missingServersNote(const ScanReport& report);

/// A word of a command line that every shell reads as this text.
[[nodiscard]] std::string shellQuoted(const std::string& text);

} // namespace ChangeablePresentation
} // namespace loadscope
