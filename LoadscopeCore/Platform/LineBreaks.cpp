// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LineBreaks.h"

#include <algorithm>
#include <array>

namespace loadscope::LineBreaks {

namespace {

constexpr unsigned char byteAt(std::string_view text, std::size_t offset) {
    return static_cast<unsigned char>(text[offset]);
}

/// True for bytes with which a break may begin.
constexpr std::array<bool, 256> leadTable = [] {
    std::array<bool, 256> table{};
    for (const int byte : {0x0A, 0x0B, 0x0C, 0x0D, 0xC2, 0xE2})
        table[static_cast<std::size_t>(byte)] = true;
    return table;
}();

/// Size in bytes of the break that begins at `offset`; 0 when none does.
std::size_t sizeAt(std::string_view text, std::size_t offset) {
    const unsigned char lead = byteAt(text, offset);
    if (lead >= 0x0A && lead <= 0x0D) return 1;
    const std::string_view rest = text.substr(offset);
    if (rest.starts_with("\xC2\x85")) return 2;
    if (rest.starts_with("\xE2\x80\xA8") || rest.starts_with("\xE2\x80\xA9")) return 3;
    return 0;
}

} // namespace

std::size_t next(std::string_view text, std::size_t from) {
    for (std::size_t offset = from; offset < text.size(); ++offset) {
        if (leadTable[byteAt(text, offset)] && sizeAt(text, offset) > 0) return offset;
    }
    return text.size();
}

std::size_t lineStart(std::string_view text, std::size_t end, std::size_t floor) {
    std::size_t offset = std::min(end, text.size());
    while (offset > floor && sizeBefore(text, offset) == 0)
        --offset;
    return std::max(offset, floor);
}

std::size_t sizeBefore(std::string_view text, std::size_t offset) {
    if (offset == 0) return 0;
    const unsigned char last = byteAt(text, offset - 1);
    if (last >= 0x0A && last <= 0x0D) return 1;
    if (last == 0x85) return text.substr(0, offset).ends_with("\xC2\x85") ? 2 : 0;
    if (last != 0xA8 && last != 0xA9) return 0;
    return offset >= 3 && sizeAt(text, offset - 3) == 3 ? 3 : 0;
}

std::string_view trimmedLine(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

bool Walker::advance() {
    while (position_ < text_.size()) {
        const std::size_t end = next(text_, position_);
        line_ = text_.substr(position_, end - position_);
        position_ = end < text_.size() ? end + sizeAt(text_, end) : end;
        if (!line_.empty()) return true;
    }
    line_ = {};
    return false;
}

} // namespace loadscope::LineBreaks
