// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// The part of `Text.h` that makes foreign bytes safe to show.

#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/Utf8.h"

#include <cstdint>
#include <unicode/uchar.h>

namespace loadscope {

namespace {

void appendHex(std::string& result, std::uint32_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        result.push_back("0123456789abcdef"[(value >> shift) & 0xF]);
}

/// What a terminal obeys instead of showing it. Joiners stay: emoji and several scripts are written with
/// them.
bool isObeyed(std::int32_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x2028 ||
           character == 0x2029 || u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL);
}

void appendEscaped(std::string& result, std::int32_t character) {
    switch (character) {
    case '\n':
        result += "\\n";
        return;
    case '\t':
        result += "\\t";
        return;
    case '\r':
        result += "\\r";
        return;
    default:
        break;
    }
    // Two digits are kept for bytes, so that U+009B and the broken byte 0x9B look different.
    result += character < 0x80 ? "\\x" : "\\u";
    appendHex(result, static_cast<std::uint32_t>(character), character < 0x80 ? 2 : 4);
}

std::string madeVisible(std::string_view text, bool keepLineFeeds) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const char byte = text[offset];
        if ((byte >= 0x20 && byte < 0x7F) || (byte == '\n' && keepLineFeeds)) {
            result.push_back(byte);
            ++offset;
            continue;
        }
        const Utf8::Character character = Utf8::at(text, offset);
        if (!character.isValid()) {
            result += "\\x";
            appendHex(result, static_cast<unsigned char>(byte), 2);
        } else if (isObeyed(character.value)) {
            appendEscaped(result, character.value);
        } else {
            result.append(text.substr(offset, character.size));
        }
        offset += character.size;
    }
    return result;
}

} // namespace

std::string Text::visible(std::string_view text) { return madeVisible(text, false); }

std::string Text::visibleLines(std::string_view text) { return madeVisible(text, true); }

std::string Text::repaired(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    Utf8::forEachRun(
        bytes, [&](std::string_view run) { result.append(run); },
        [&](char) { result.append("\xEF\xBF\xBD"); });
    return result;
}

} // namespace loadscope
