// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers of tokens with what they are of, as charts and rows tell them. Numbers are written in the user's
/// locale.
namespace loadscope::TokenTexts {

inline constexpr const char* unit = "tokens";

/// "9,000 tokens", also of a number that is written already.
[[nodiscard]] std::string count(std::int64_t tokens);
[[nodiscard]] std::string count(std::string_view tokens);

/// "MCP tools: 9,000 tokens".
[[nodiscard]] std::string named(std::string_view name, std::string_view tokens);

/// "web-app · MCP tools".
[[nodiscard]] std::string within(std::string_view whole, std::string_view part);

/// The name and the number with a tab between, as tables take them.
[[nodiscard]] std::string copyable(std::string_view name, std::string_view number);

/// "9,000 tokens, 20.0%".
[[nodiscard]] std::string withShare(std::string_view tokens, std::string_view share);

/// "20.0%" of a fifth.
[[nodiscard]] std::string percent(double share);

} // namespace loadscope::TokenTexts
