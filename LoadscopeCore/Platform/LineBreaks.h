// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Finds lines without splitting the whole text, for texts of hundreds of megabytes. Breaks are LF,
/// VT, FF, CR, CR LF, U+0085, U+2028 and U+2029. Offsets are in bytes. Thread-safe.
namespace loadscope::LineBreaks {

/// Offset of the first break at or after `from`; the size of the text when there is none.
[[nodiscard]] std::size_t next(std::string_view text, std::size_t from);

/// Offset just behind the last break that ends at or before `end`, but never before `floor`, which is the
/// answer when there is none.
[[nodiscard]] std::size_t lineStart(std::string_view text, std::size_t end, std::size_t floor = 0);

/// Size in bytes of the break that ends at `offset`; 0 when none does.
[[nodiscard]] std::size_t sizeBefore(std::string_view text, std::size_t offset);

/// A line without spaces and tabs, and no other characters, at both ends.
[[nodiscard]] std::string_view trimmedLine(std::string_view line);

/// Walks over the lines of a text one by one; empty lines are passed over.
class Walker {
public:
    explicit Walker(std::string_view text) : text_(text) {}

    /// Moves to the next line; false when there is none.
    bool advance();

    /// The present line without its break, a view of the caller's bytes.
    [[nodiscard]] std::string_view line() const { return line_; }

private:
    std::string_view text_;
    std::string_view line_;
    std::size_t position_ = 0;
};

} // namespace loadscope::LineBreaks
