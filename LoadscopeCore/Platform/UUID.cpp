// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/UUID.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <unistd.h>

#ifdef __APPLE__
#include <sys/random.h>
#endif

namespace loadscope {

namespace {

constexpr std::size_t textSize = 36;
constexpr std::string_view upperCaseDigits = "0123456789ABCDEF";

bool isSeparatorPlace(std::size_t index) { return index == 8 || index == 13 || index == 18 || index == 23; }

std::array<unsigned char, 16> randomBytes() {
    std::array<unsigned char, 16> bytes{};
    if (::getentropy(bytes.data(), bytes.size()) != 0) {
        // Kernels that refuse the call still have their device behind the standard library.
        std::random_device device;
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(device()); });
    }
    return bytes;
}

/// FNV-1a with a start of one's own.
std::uint64_t hash(std::string_view content, std::uint64_t value) {
    constexpr std::uint64_t prime = 0x100000001B3;
    for (const char character : content)
        value = (value ^ static_cast<unsigned char>(character)) * prime;
    return value;
}

} // namespace

UUID UUID::generate() { return ofBytes(randomBytes(), 4); }

UUID UUID::derived(std::string_view content) {
    constexpr std::array<std::uint64_t, 2> starts{0xCBF29CE484222325, 0x9AE16A3B2F90404F};
    std::array<unsigned char, 16> bytes{};
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<unsigned char>(hash(content, starts[index / 8]) >> (index % 8 * 8));
    return ofBytes(bytes, 8);
}

UUID UUID::ofBytes(std::array<unsigned char, 16> bytes, unsigned char version) {
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | (version << 4));
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80); // the variant of RFC 4122
    std::string text;
    text.reserve(textSize);
    for (const unsigned char byte : bytes) {
        if (isSeparatorPlace(text.size())) text.push_back('-');
        text.push_back(upperCaseDigits[byte >> 4]);
        text.push_back(upperCaseDigits[byte & 0x0F]);
    }
    return UUID(std::move(text));
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textSize) return std::nullopt;
    std::string canonical(text);
    for (std::size_t index = 0; index < textSize; ++index) {
        char& character = canonical[index];
        if (character >= 'a' && character <= 'f') character = static_cast<char>(character - 'a' + 'A');
        const bool fits = isSeparatorPlace(index) ? character == '-'
                                                  : upperCaseDigits.find(character) != std::string_view::npos;
        if (!fits) return std::nullopt;
    }
    return UUID(std::move(canonical));
}

} // namespace loadscope
