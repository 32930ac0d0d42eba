// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionImports.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>

namespace loadscope::InstructionImports {
namespace {

constexpr std::string_view strippedAtTheEnd = ".,;:!?)]}\"'`";

bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

bool isContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

bool isWhitespaceAt(std::string_view text, std::size_t offset) {
    const char byte = text[offset];
    if (isASCII(byte)) return byte == ' ' || (byte >= '\t' && byte <= '\r');
    std::size_t length = 0;
    return Text::beginsWithWhitespace(text.substr(offset), length);
}

bool startsToken(std::string_view line, std::size_t at) {
    if (at == 0) return true;
    std::size_t previous = at - 1;
    while (previous > 0 && isContinuationByte(line[previous]))
        --previous;
    return isWhitespaceAt(line, previous);
}

std::size_t endOfWord(std::string_view line, std::size_t offset) {
    while (offset < line.size() && !isWhitespaceAt(line, offset))
        ++offset;
    return offset;
}

std::string_view withoutTrailingPunctuation(std::string_view word) {
    return word.substr(0, word.find_last_not_of(strippedAtTheEnd) + 1);
}

/// The character that a fence line is made of; 0 for any other line.
char fenceCharacter(std::string_view line) {
    const std::string_view content = Text::trimmedHorizontally(line);
    if (content.starts_with("```")) return '`';
    return content.starts_with("~~~") ? '~' : '\0';
}

} // namespace

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> result;
    while (true) {
        const std::size_t lineFeed = text.find('\n');
        std::string_view line = text.substr(0, lineFeed);
        if (lineFeed == std::string_view::npos) {
            result.push_back(line);
            return result;
        }
        if (line.ends_with('\r')) line.remove_suffix(1);
        result.push_back(line);
        text.remove_prefix(lineFeed + 1);
    }
}

std::vector<bool> fencedLines(const std::vector<std::string_view>& lines) {
    std::vector<bool> fenced(lines.size());
    char open = '\0';
    std::size_t openedAt = 0;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const char fence = fenceCharacter(lines[index]);
        if (fence == '\0') continue;
        if (open == '\0') {
            open = fence;
            openedAt = index;
        } else if (fence == open) {
            std::fill(fenced.begin() + static_cast<std::ptrdiff_t>(openedAt),
                      fenced.begin() + static_cast<std::ptrdiff_t>(index) + 1, true);
            open = '\0';
        }
    }
    return fenced;
}

std::vector<std::string_view> importTokens(std::string_view line) {
    std::vector<std::string_view> tokens;
    for (std::size_t at = line.find('@'); at != std::string_view::npos; at = line.find('@', at)) {
        if (!startsToken(line, at)) {
            ++at;
            continue;
        }
        const std::size_t end = endOfWord(line, at + 1);
        const std::string_view token = withoutTrailingPunctuation(line.substr(at + 1, end - at - 1));
        at = end;
        if (token.empty() || token.front() == '@' || token.find("://") != std::string_view::npos) continue;
        tokens.push_back(token);
    }
    return tokens;
}

std::string target(std::string_view token, std::string_view folder, std::string_view home) {
    if (!token.starts_with('~')) return FilePath::standardized(FilePath::joined(folder, token));
    const std::size_t rest = token.find_first_not_of('/', 1);
    if (rest == std::string_view::npos) return {};
    return FilePath::standardized(FilePath::joined(home, token.substr(rest)));
}

void visitTargets(std::string_view text, std::string_view folder, std::string_view home,
                  const std::function<bool(const std::string& target)>& visit) {
    const std::vector<std::string_view> all = lines(text);
    const std::vector<bool> fenced = fencedLines(all);
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (fenced[index]) continue;
        for (const std::string_view token : importTokens(all[index])) {
            const std::string path = target(token, folder, home);
            if (!path.empty() && !visit(path)) return;
        }
    }
}

} // namespace loadscope::InstructionImports
