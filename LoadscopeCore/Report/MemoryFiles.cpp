// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/MemoryFiles.h"

#include "LoadscopeCore/ClaudeProbe/CountSum.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <optional>
#include <unordered_map>
#include <utility>

namespace loadscope::MemoryFileMatcher {
namespace {

using Sums = std::unordered_map<std::string, std::optional<CountSum>>;

/// The ways to read a path of a report: a bar in it may have lost the backslash before it.
std::vector<std::string> readings(const std::string& name, const std::string& repository) {
    std::vector<std::string> paths{FilePath::joined(repository, FilePath::tildeExpanded(name))};
    if (name.find('|') == std::string::npos) return paths;
    std::string escaped;
    for (const char character : paths.front()) {
        if (character == '|') escaped += '\\';
        escaped += character;
    }
    paths.push_back(std::move(escaped));
    return paths;
}

/// Looks up the paths of a report among those of the files that were found.
class Lookup {
public:
    Lookup(Sums& sums, const std::string& repository, const PathResolver& resolver)
        : sums_(sums), repository_(repository), resolver_(resolver) {}

    Sums::iterator find(const std::string& name) {
        const std::vector<std::string> paths = readings(name, repository_);
        for (const std::string& path : paths) {
            const auto found = sums_.find(FilePath::standardized(path));
            if (found != sums_.end()) return found;
        }
        for (const std::string& path : paths) {
            if (resolved_ == mostResolved) break;
            ++resolved_;
            const auto found = sums_.find(resolver_(path));
            if (found != sums_.end()) return found;
        }
        return sums_.end();
    }

private:
    Sums& sums_;
    const std::string& repository_;
    const PathResolver& resolver_;
    std::size_t resolved_ = 0;
};

} // namespace

MemoryFiles match(const ContextDetails& details, const InstructionFileSet& found,
                  const std::string& repository, const PathResolver& resolver) {
    MemoryFiles result{};
    if (details.members.empty()) return result; // the tool listed nothing at all
    Sums sums;
    const std::vector<InstructionFileEstimate> files = found.allFiles();
    for (const InstructionFileEstimate& file : files)
        sums.try_emplace(file.path);

    Lookup lookup(sums, repository, resolver);
    const std::string table = Text::lowercased(ContextDetailsParser::memoryFilesTable);
    for (const ContextMember& member : details.members) {
        if (Text::lowercased(member.table) != table) continue;
        const auto file = lookup.find(member.name);
        if (file == sums.end()) {
            result.loadedElsewhere.push_back(member);
            continue;
        }
        if (!file->second) file->second.emplace();
        file->second->add({member.tokens, member.precision});
    }
    for (const InstructionFileEstimate& file : files) {
        if (const auto& sum = sums.at(file.path))
            result.reported.emplace(file.path, sum->value());
        else
            result.foundNotListed.push_back(file.path);
    }
    return result;
}

} // namespace loadscope::MemoryFileMatcher
