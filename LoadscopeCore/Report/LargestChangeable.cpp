// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/LargestChangeable.h"

#include "LoadscopeCore/ClaudeProbe/CountSum.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <utility>

namespace loadscope::LargestChangeable {
namespace {

using Kind = ChangeableGroup::Kind;

constexpr std::size_t longestFileName = 200;

/// Visits the members of the tables of one name.
template <typename Visitor>
void visitTable(const ScanReport& report, std::string_view name, const Visitor& visit) {
    const std::string wanted = SlabAttributor::normalize(name);
    const std::string* heading = nullptr;
    bool isWanted = false;
    for (const ContextMember& member : report.details.members) {
        if (heading == nullptr || *heading != member.table) {
            heading = &member.table;
            isWanted = SlabAttributor::normalize(member.table) == wanted;
        }
        if (isWanted) visit(member);
    }
}

bool isOneOf(std::string_view group, const std::vector<std::string_view>& names) {
    return std::ranges::find(names, Text::lowercased(group)) != names.end();
}

/// Collects what can be changed, of whatever size.
class Candidates {
public:
    Candidates(const ScanReport& report, const std::vector<ConfiguredServer>& configured)
        : report_(report), configured_(configured) {
        for (const SelfReportedSlab& category : report.categories)
            loaded_.insert(SlabAttributor::normalize(category.name));
        for (const SelfReportedSlab& category : report.details.deferred)
            deferred_.insert(SlabAttributor::normalize(category.name));
    }

    [[nodiscard]] std::vector<ChangeableGroup> all() && {
        addServers();
        addFiles();
        addOwn(ContextDetailsParser::skillsTable, Kind::skill);
        addOwn(ContextDetailsParser::agentsTable, Kind::agent);
        std::erase_if(groups_, [](const ChangeableGroup& group) { return group.count.tokens < 1; });
        return std::move(groups_);
    }

private:
    /// Whether the members of a table are surely part of the total.
    [[nodiscard]] bool isCounted(std::string_view table) const {
        const std::string name = SlabAttributor::normalize(table);
        return loaded_.contains(name) && !deferred_.contains(name);
    }

    void addServers() {
        if (!isCounted(ContextDetailsParser::toolsTable)) return;
        std::map<std::string, CountSum> sums;
        visitTable(report_, ContextDetailsParser::toolsTable, [&](const ContextMember& tool) {
            sums[ConfiguredServers::normalized(tool.group)].add({tool.tokens, tool.precision});
        });
        std::set<std::string> seen;
        for (const ConfiguredServer& server : configured_) {
            const std::string name = ConfiguredServers::normalized(server.name);
            const auto sum = sums.find(name);
            if (sum == sums.end() || !seen.insert(name).second) continue;
            groups_.push_back(
                {Kind::server, server.name, sum->second.value(), false, server.file, server.scope});
        }
    }

    void addFiles() {
        const std::vector<std::string>& notLoaded = report_.memoryFiles.foundNotListed;
        const std::set<std::string_view> passedOver(notLoaded.begin(), notLoaded.end());
        for (const InstructionFileEstimate& file : report_.files()) {
            if (passedOver.contains(file.path)) continue;
            const bool isEstimated = !report_.reportedTokens(file);
            groups_.push_back(
                {Kind::instructionFile, file.path, report_.shownTokens(file), isEstimated, file.path});
        }
        for (const ContextMember& file : report_.memoryFiles.loadedElsewhere)
            if (isOneOf(file.group, {"user", "project", "local"}))
                groups_.push_back(
                    {Kind::instructionFile, file.name, {file.tokens, file.precision}, false, file.name});
    }

    void addOwn(std::string_view table, Kind kind) {
        if (!isCounted(table)) return;
        visitTable(report_, table, [&](const ContextMember& own) {
            if (isOneOf(own.group, {"user", "project"}))
                groups_.push_back(
                    {kind, own.name, {own.tokens, own.precision}, false, {}, Text::lowercased(own.group)});
        });
    }

    const ScanReport& report_;
    const std::vector<ConfiguredServer>& configured_;
    std::set<std::string> loaded_;
    std::set<std::string> deferred_;
    std::vector<ChangeableGroup> groups_;
};

bool isPlainName(const std::string& name) {
    return !name.empty() && name.size() <= longestFileName && name.find('/') == std::string::npos &&
           name != "." && name != ".." && Text::visible(name) == name;
}

/// The file that holds a skill or an agent of the person's own, where it goes by the name that the tool
/// gives.
std::string fileOf(const ChangeableGroup& group, const std::string& repository,
                   const std::string& configFolder, const FileCheck& isFile) {
    if (!isPlainName(group.name)) return {};
    const std::string folder = group.scope == "user" ? configFolder : FilePath::joined(repository, ".claude");
    std::vector<std::string> places;
    if (group.kind == Kind::agent) {
        places = {"agents/" + group.name + ".md"};
    } else {
        places = {"skills/" + group.name + "/SKILL.md", "commands/" + group.name + ".md"};
    }
    for (const std::string& place : places)
        if (std::string path = FilePath::joined(folder, place); isFile(path)) return path;
    return {};
}

} // namespace

bool isRegularFile(const std::string& path) {
    struct stat attributes {};
    return stat(path.c_str(), &attributes) == 0 && S_ISREG(attributes.st_mode);
}

std::vector<ChangeableGroup> groups(const ScanReport& report, const std::vector<ConfiguredServer>& configured,
                                    const std::string& configFolder, const FileCheck& isFile) {
    std::vector<ChangeableGroup> all = Candidates(report, configured).all();
    const auto comesFirst = [](const ChangeableGroup& left, const ChangeableGroup& right) {
        return std::tie(right.count.tokens, left.kind, left.name) <
               std::tie(left.count.tokens, right.kind, right.name);
    };
    const std::size_t kept = std::min(mostGroups, all.size());
    std::ranges::partial_sort(all, all.begin() + static_cast<std::ptrdiff_t>(kept), comesFirst);
    all.resize(kept);
    for (ChangeableGroup& group : all) {
        if (group.kind != Kind::skill && group.kind != Kind::agent) continue;
        group.file = fileOf(group, report.repositoryPath, configFolder, isFile);
        group.scope.clear();
    }
    return all;
}

std::vector<std::string> missingServers(const ScanReport& report,
                                        const std::vector<ConfiguredServer>& configured) {
    if (report.details.members.empty()) return {};
    std::set<std::string> known;
    visitTable(report, ContextDetailsParser::toolsTable,
               [&](const ContextMember& tool) { known.insert(ConfiguredServers::normalized(tool.group)); });
    std::vector<std::string> missing;
    for (const ConfiguredServer& server : configured)
        if (known.insert(ConfiguredServers::normalized(server.name)).second) missing.push_back(server.name);
    return missing;
}

void addTo(ScanReport& report, const std::vector<ConfiguredServer>& configured,
           const std::string& configFolder) {
    report.largestChangeable = groups(report, configured, configFolder);
    report.missingServers = missingServers(report, configured);
}

} // namespace loadscope::LargestChangeable
