// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What a session says of its own failure, in everything that it printed: the event stream with the standard
/// error after it. Pure functions; a text of hundreds of megabytes costs little more than a search.
namespace loadscope::CodexSessionText {

/// The message of the last event {"type":"error","message":…}.
[[nodiscard]] std::optional<std::string> lastError(std::string_view output);

/// The first line that begins with "error:", as the reader of the command line prints it.
[[nodiscard]] std::optional<std::string_view> complaint(std::string_view output);

/// The version does not know the flag that keeps it from recording the session.
[[nodiscard]] bool refusesEphemeral(std::string_view output);

/// The last lines that are not blank, joined by line feeds.
[[nodiscard]] std::string lastLines(std::string_view output, std::size_t count);

/// An event {"type":"error","message":…} in one line, as its message.
[[nodiscard]] std::optional<std::string> errorMessage(std::string_view line);

} // namespace loadscope::CodexSessionText
