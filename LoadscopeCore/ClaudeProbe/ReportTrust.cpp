// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ReportTrust.h"

#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>

namespace loadscope::ReportTrust {
namespace {

constexpr std::string_view promptCategory = "system prompt";
/// Categories of the tool's own, by which a report is recognised as one that would have the prompt's row.
constexpr std::array<std::string_view, 7> knownCategories{
    "system tools", "mcp tools", "custom agents", "memory files", "skills", "messages", "slash commands"};

constexpr std::size_t fewestFiles = 2;
constexpr std::int64_t fewestCharacters = 200;
constexpr std::size_t mostFilesRead = 64;
constexpr std::size_t largestFileRead = std::size_t{4} << 20;

bool isIn(const ContextMember& member, std::string_view table) {
    return Text::lowercased(member.table) == Text::lowercased(table);
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// Nothing unless the report misses what every counted one has.
std::optional<std::string> whatIsMissing(const std::vector<SelfReportedSlab>& categories,
                                         const ContextDetails& details) {
    bool isRecognised = false;
    for (const SelfReportedSlab& category : categories) {
        const std::string name = Text::lowercased(category.name);
        if (name == promptCategory) return std::nullopt;
        isRecognised = isRecognised || std::ranges::find(knownCategories, name) != knownCategories.end();
    }
    if (!isRecognised) return std::nullopt;

    std::size_t files = 0;
    std::size_t agents = 0;
    for (const ContextMember& member : details.members) {
        const bool isFile = isIn(member, ContextDetailsParser::memoryFilesTable);
        const bool isAgent = isIn(member, ContextDetailsParser::agentsTable);
        if ((isFile || isAgent) && member.tokens != 0) return std::nullopt;
        files += isFile ? 1 : 0;
        agents += isAgent ? 1 : 0;
    }
    std::string reason = "Its report has no \"System prompt\" row";
    if (files + agents == 0) return reason;
    reason += " and gives 0 tokens for ";
    if (files > 0) reason += counted(files, "memory file");
    if (files > 0 && agents > 0) reason += " and ";
    if (agents > 0) reason += counted(agents, "agent");
    return reason;
}

/// Whether a count is what the rule of thumb makes of so many characters, as closely as it is printed.
bool isAThird(const ContextMember& file, std::int64_t characters) {
    const std::int64_t third = (characters + 1) / 3; // to the nearest: no third lies halfway
    const std::int64_t tolerance = file.precision == CountPrecision::exact ? 0 : 50;
    return std::abs(file.tokens - third) <= tolerance;
}

} // namespace

Finding judge(const std::vector<SelfReportedSlab>& categories, const ContextDetails& details,
              const CharacterCounter& counter) {
    if (auto reason = whatIsMissing(categories, details)) return {Verdict::incomplete, *std::move(reason)};

    std::size_t obeying = 0;
    std::set<std::string> seen;
    for (const ContextMember& file : details.members) {
        if (!isIn(file, ContextDetailsParser::memoryFilesTable)) continue;
        if (seen.size() == mostFilesRead || !seen.insert(file.name).second) continue;
        const auto characters = counter(file.name);
        if (!characters || characters->whole < fewestCharacters) continue;
        if (!isAThird(file, characters->whole) && !isAThird(file, characters->trimmed))
            return {Verdict::counted, {}};
        ++obeying;
    }
    if (obeying < fewestFiles) return {Verdict::cannotTell, {}};
    return {Verdict::estimated,
            "Each of its " + counted(obeying, "memory file") + " is given a third of its characters"};
}

std::optional<CharacterCounts> charactersOnDisk(const std::string& path) {
    const std::string expanded = FilePath::tildeExpanded(path);
    if (!expanded.starts_with('/')) return std::nullopt;
    const auto text = AtomicFile::read(expanded, largestFileRead);
    if (!text) return std::nullopt;
    const auto units = [](std::string_view bytes) {
        std::int64_t count = 0;
        for (const char byte : bytes) {
            const auto value = static_cast<unsigned char>(byte);
            if ((value & 0xC0U) != 0x80U) ++count;
            if (value >= 0xF0U) ++count; // a pair of units
        }
        return count;
    };
    return CharacterCounts{units(*text), units(Text::trimmed(*text))};
}

} // namespace loadscope::ReportTrust
