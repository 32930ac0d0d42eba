// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Text.h"

#include "LoadscopeCore/Platform/Utf8.h"

#include <cstdint>
#include <cstring>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>

namespace loadscope {

namespace {

constexpr std::uint64_t highBits = 0x8080808080808080U;

std::uint64_t eightBytes(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Offset of the first byte at or after `offset` that is not ASCII.
std::size_t endOfASCII(std::string_view text, std::size_t offset) {
    const char* const bytes = text.data();
    while (text.size() - offset >= 32) {
        const char* const block = bytes + offset;
        const std::uint64_t all =
            eightBytes(block) | eightBytes(block + 8) | eightBytes(block + 16) | eightBytes(block + 24);
        if ((all & highBits) != 0) break;
        offset += 32;
    }
    while (offset < text.size() && static_cast<unsigned char>(bytes[offset]) < 0x80)
        ++offset;
    return offset;
}

template <typename Predicate>
std::string_view trimmedOf(std::string_view text, Predicate belongs) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        const Utf8::Character character = Utf8::at(text, begin);
        if (!belongs(character.value)) break;
        begin += character.size;
    }
    std::size_t end = text.size();
    while (end > begin) {
        const Utf8::Character character = Utf8::before(text, end);
        if (!belongs(character.value)) break;
        end -= character.size;
    }
    return text.substr(begin, end - begin);
}

bool isWhitespace(std::int32_t character) { return character >= 0 && u_isUWhiteSpace(character); }

bool isHorizontalSpace(std::int32_t character) {
    if (character <= 0x7F) return character == ' ' || character == '\t';
    return u_charType(character) == U_SPACE_SEPARATOR;
}

} // namespace

std::size_t Utf8::validPrefix(std::string_view text) {
    std::size_t offset = 0;
    while ((offset = endOfASCII(text, offset)) < text.size()) {
        // Other scripts come in runs; going back to the search after each character would slow them down.
        do {
            const Character character = at(text, offset);
            if (!character.isValid()) return offset;
            offset += character.size;
        } while (offset < text.size() && static_cast<unsigned char>(text[offset]) >= 0x80);
    }
    return offset;
}

bool Text::isValidUTF8(std::string_view bytes) { return Utf8::validPrefix(bytes) == bytes.size(); }

std::string_view Text::trimmed(std::string_view text) { return trimmedOf(text, isWhitespace); }

std::string_view Text::trimmedHorizontally(std::string_view text) {
    return trimmedOf(text, isHorizontalSpace);
}

bool Text::beginsWithWhitespace(std::string_view text, std::size_t& length) {
    length = 0;
    if (text.empty()) return false;
    const Utf8::Character character = Utf8::at(text, 0);
    if (!isWhitespace(character.value)) return false;
    length = character.size;
    return true;
}

std::string Text::lowercased(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    if (endOfASCII(text, 0) == text.size()) {
        for (const char byte : text)
            result.push_back(byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte);
        return result;
    }
    Utf8::forEachRun(
        text,
        [&](std::string_view run) {
            UErrorCode status = U_ZERO_ERROR;
            const std::size_t before = result.size();
            icu::StringByteSink<std::string> sink(&result);
            icu::CaseMap::utf8ToLower("", 0, {run.data(), static_cast<std::int32_t>(run.size())}, sink,
                                      nullptr, status);
            if (U_FAILURE(status)) result.replace(before, std::string::npos, run);
        },
        [&](char byte) { result.push_back(byte); });
    return result;
}

std::string Text::lettersAndNumbers(std::string_view text) {
    std::string result;
    for (std::size_t offset = 0; offset < text.size();) {
        const Utf8::Character character = Utf8::at(text, offset);
        if (character.isValid() && (U_GET_GC_MASK(character.value) & (U_GC_L_MASK | U_GC_N_MASK)) != 0)
            result.append(text.substr(offset, character.size));
        offset += character.size;
    }
    return result;
}

} // namespace loadscope
