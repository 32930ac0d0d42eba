// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unicode/utf8.h>

/// Decoding of single UTF-8 characters, for the files behind `Text.h` only.
namespace loadscope::Utf8 {

/// One decoded character: `value` is negative for a byte that belongs to no valid character, and `size` is
/// then 1.
struct Character {
    std::int32_t value = -1;
    std::size_t size = 0;

    [[nodiscard]] bool isValid() const { return value >= 0; }
};

#pragma GCC diagnostic push
// ICU's macros do their arithmetic in int.
#pragma GCC diagnostic ignored "-Wconversion"

/// The character that begins at `offset`, which must lie within the text.
[[nodiscard]] inline Character at(std::string_view text, std::size_t offset) {
    std::size_t end = offset;
    UChar32 value = 0;
    U8_NEXT(text.data(), end, text.size(), value);
    if (value < 0) return {-1, 1};
    return {value, end - offset};
}

/// The character that ends at `offset`, which must be greater than 0.
[[nodiscard]] inline Character before(std::string_view text, std::size_t offset) {
    // No character is longer than four bytes, so that offsets beyond 32 bits need no care here.
    const std::size_t start = offset > 4 ? offset - 4 : 0;
    const char* const bytes = text.data() + start;
    const auto length = static_cast<std::int32_t>(offset - start);
    std::int32_t begin = length;
    UChar32 value = 0;
    U8_PREV(bytes, 0, begin, value);
    if (value < 0) return {-1, 1};
    return {value, static_cast<std::size_t>(length - begin)};
}

/// Size in bytes of the longest beginning of the text that is valid UTF-8.
[[nodiscard]] std::size_t validPrefix(std::string_view text);

/// Calls `run` for each longest valid piece and `invalidByte` for each byte between them, in order. Pieces
/// are cut where they would exceed what ICU's 32-bit lengths can hold.
template <typename Run, typename InvalidByte>
void forEachRun(std::string_view text, Run run, InvalidByte invalidByte) {
    constexpr std::size_t longestRun = std::size_t{1} << 28;
    while (!text.empty()) {
        const std::size_t size = validPrefix(text.substr(0, longestRun));
        if (size == 0) {
            invalidByte(text.front());
            text.remove_prefix(1);
        } else {
            run(text.substr(0, size));
            text.remove_prefix(size);
        }
    }
}

#pragma GCC diagnostic pop

} // namespace loadscope::Utf8
