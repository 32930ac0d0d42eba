// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/RecordedScan.h"

#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>

namespace loadscope {
namespace {

/// A version or a name as it may be recorded: what is too long for one is none.
std::optional<std::string> recordedWord(const std::optional<std::string>& word) {
    constexpr std::size_t maximumCharacters = 80;
    if (!word) return std::nullopt;
    std::string text = Text::repaired(Text::trimmed(*word));
    if (text.empty() || Text::characterCount(text) > maximumCharacters) return std::nullopt;
    return text;
}

} // namespace

RecordedScan RecordedScan::recordable(RecordedScan scan) {
    for (RecordedCategory& category : scan.categories)
        category.name = RecordedCategoryName::recorded(category.name);
    scan.toolVersion = recordedWord(scan.toolVersion);
    scan.model = recordedWord(scan.model);
    return scan;
}

RecordedScan RecordedScan::ofReport(const ScanReport& report, Timestamp date, UUID id) {
    std::vector<RecordedCategory> categories;
    categories.reserve(report.rows.size());
    for (const SlabAttribution& row : report.rows)
        categories.push_back({row.name, row.tokens});
    return recordable({.id = std::move(id),
                       .repositoryName = report.repositoryName,
                       .repositoryPath = report.repositoryPath,
                       .date = date,
                       .total = report.total,
                       .categories = std::move(categories),
                       .tool = claudeTool,
                       .contextWindow = report.contextWindow,
                       .toolVersion = report.conditions.toolVersion,
                       .model = report.conditions.model});
}

RecordedScan RecordedScan::ofCodex(const CodexProbeResult& result, const RepoSelection& selection,
                                   Timestamp date, UUID id) {
    return recordable({.id = std::move(id),
                       .repositoryName = selection.displayName,
                       .repositoryPath = selection.path,
                       .date = date,
                       .total = result.total,
                       .categories = {},
                       .tool = codexTool,
                       .contextWindow = result.contextWindow,
                       .toolVersion = result.toolVersion,
                       .model = result.model});
}

namespace RecordedCategoryName {
namespace {

bool isLettersAndDigits(std::string_view text) {
    while (!text.empty()) {
        // By user-perceived characters: an accent written as its own code point belongs to its letter.
        const std::string_view character = Text::prefix(text, 1);
        if (character.empty() || Text::lettersAndNumbers(character).empty()) return false;
        text.remove_prefix(character.size());
    }
    return true;
}

bool hasFileNameExtension(std::string_view word) {
    const std::size_t dot = word.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == word.size()) return false;
    return isLettersAndDigits(word.substr(dot + 1));
}

} // namespace

std::string recorded(std::string_view name) {
    const std::string_view trimmed = Text::trimmed(name);
    const bool kept =
        !trimmed.empty() && !looksLikeAPath(trimmed) && Text::characterCount(trimmed) <= maximumCharacters;
    return kept ? std::string(trimmed) : withheld;
}

bool looksLikeAPath(std::string_view name) {
    if (name.find_first_of("/\\~") != std::string_view::npos) return true;
    while (!name.empty()) {
        const std::size_t space = std::min(name.find(' '), name.size());
        if (hasFileNameExtension(name.substr(0, space))) return true;
        name.remove_prefix(std::min(space + 1, name.size()));
    }
    return false;
}

} // namespace RecordedCategoryName
} // namespace loadscope
