// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/PathBytes.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

namespace loadscope::PathBytes {
namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

bool isPlain(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           std::string_view("/-._~").find(byte) != std::string_view::npos;
}

/// Nothing when the text was not encoded.
std::optional<std::string> decoded(std::string_view text) {
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            if (!isPlain(text[i])) return std::nullopt;
            path += text[i];
            continue;
        }
        const std::size_t high = i + 1 < text.size() ? digits.find(text[i + 1]) : std::string_view::npos;
        const std::size_t low = i + 2 < text.size() ? digits.find(text[i + 2]) : std::string_view::npos;
        if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
        path += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return path;
}

} // namespace

std::optional<std::string> encoded(std::string_view path) {
    if (Text::repaired(path) == path) return std::nullopt;
    std::string text;
    for (const char byte : path) {
        if (isPlain(byte)) {
            text += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        text += {'%', digits[value / 16], digits[value % 16]};
    }
    return text;
}

std::string path(std::string_view text, const std::optional<std::string>& encoded) {
    const std::optional<std::string> bytes = encoded ? decoded(*encoded) : std::nullopt;
    const bool areOfText = bytes && Text::repaired(*bytes) == text;
    return std::string(FilePath::withoutTrailingSeparators(areOfText ? *bytes : text));
}

} // namespace loadscope::PathBytes
