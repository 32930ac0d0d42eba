// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Unicode-aware text operations over UTF-8. Bytes that are not valid UTF-8 never make a function fail: they
/// count as one character each and belong to no class. Offsets and views refer to the caller's bytes.
/// Thread-safe.
namespace loadscope::Text {

[[nodiscard]] bool isValidUTF8(std::string_view bytes);

/// The text without white space (Unicode White_Space, line breaks included) at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// The text without spaces, tabs and other horizontal space characters at both ends; line breaks stay.
[[nodiscard]] std::string_view trimmedHorizontally(std::string_view text);

/// True when the text begins with a White_Space character; `length` receives its size in bytes.
[[nodiscard]] bool beginsWithWhitespace(std::string_view text, std::size_t& length);

[[nodiscard]] std::string lowercased(std::string_view text);

/// Only the letters and numbers (in the Unicode sense) of the text, in order.
[[nodiscard]] std::string lettersAndNumbers(std::string_view text);

/// Number of user-perceived characters (extended grapheme clusters).
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The first `count` user-perceived characters; the whole text when it has no more than that.
[[nodiscard]] std::string_view prefix(std::string_view text, std::size_t count);

/// Compares by code point after canonical normalisation: negative, 0 or positive.
[[nodiscard]] int compareCanonically(std::string_view left, std::string_view right);

/// The text with control characters, escape bytes, bidirectional overrides and invalid bytes written out
/// (`\x1b`, `\n`, `\u202e`), so that a terminal shows them and does not obey them.
[[nodiscard]] std::string visible(std::string_view text);

/// `visible`, but line feeds stay line feeds: for texts of several lines.
[[nodiscard]] std::string visibleLines(std::string_view text);

/// Columns that the text takes on a terminal (wide characters take two, combining marks none).
[[nodiscard]] std::size_t terminalWidth(std::string_view text);

/// The text with every invalid byte replaced by U+FFFD.
[[nodiscard]] std::string repaired(std::string_view bytes);

} // namespace loadscope::Text
