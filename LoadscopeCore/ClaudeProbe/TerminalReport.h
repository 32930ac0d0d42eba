// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// The form in which the first versions with a `/context` command drew their report for a terminal: a picture
/// of small symbols, and beside it lines such as "claude-x • 61k/200k tokens (30%)" and
/// "⛁ System tools: 10.0k tokens (5.0%)".
namespace loadscope::TerminalReport {

/// The same report as the Markdown that later versions print, so that one parser reads both. A text that is
/// not of this form comes back as it is. Escape sequences are taken out.
[[nodiscard]] std::string asMarkdown(std::string_view text);

} // namespace loadscope::TerminalReport
