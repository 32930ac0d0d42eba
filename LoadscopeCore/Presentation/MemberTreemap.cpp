// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/MemberTreemap.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Report/MemberPath.h"

#include <algorithm>

namespace loadscope {

MemberTreemap::MemberTreemap(const ScanReport& report, const CategoryMembers& members)
    : report_(report), members_(members) {
    std::size_t line = 0;
    for (std::size_t row = 0; row < report.rows.size(); ++row) {
        const std::size_t first = line++;
        if (report.rows[row].tokens < 1) {
            line += lineCount(members.rows()[row]);
            continue;
        }
        add(0, report.rows[row].tokens, {row, first});
        addList(row, line);
    }
}

std::size_t MemberTreemap::lineCount(const MemberList& list) {
    const std::size_t groups = list.isGrouped() ? list.groups.size() : 0;
    return groups + list.memberCount() + (list.estimateDifference ? 1 : 0) + (list.notItemised ? 1 : 0);
}

std::optional<std::size_t> MemberTreemap::nodeOfLine(std::size_t line) const {
    const auto place = std::ranges::lower_bound(places_, line, {}, &Place::line);
    if (place == places_.end() || place->line != line) return std::nullopt;
    return static_cast<std::size_t>(place - places_.begin());
}

std::vector<std::string> MemberTreemap::steps(std::optional<std::size_t> node) const {
    std::vector<std::string> names;
    if (node) {
        std::size_t depth = nodes_.at(*node).depth + 1;
        for (std::size_t before = *node + 1; before-- > 0 && depth > 0;) {
            if (nodes_[before].depth >= depth) continue;
            depth = nodes_[before].depth;
            names.push_back(name(before));
        }
    }
    names.emplace_back(all);
    std::ranges::reverse(names);
    return names;
}

void MemberTreemap::add(std::size_t depth, std::int64_t tokens, const Place& place) {
    if (tokens < 1) return;
    nodes_.push_back({static_cast<double>(tokens), depth});
    places_.push_back(place);
}

void MemberTreemap::addList(std::size_t row, std::size_t& line) {
    const MemberList& list = members_.rows()[row];
    const std::size_t depth = list.isGrouped() ? 2 : 1;
    for (std::size_t group = 0; group < list.groups.size(); ++group) {
        const MemberGroup& shown = list.groups[group];
        if (list.isGrouped()) add(1, shown.tokens, {row, line++, group});
        for (std::size_t member = 0; member < shown.members.size(); ++member)
            add(depth, shown.members[member].tokens, {row, line++, group, member});
    }
    if (list.estimateDifference) add(1, list.estimateDifference->tokens, {row, line++, {}, {}, true});
    if (list.notItemised) add(1, list.notItemised->tokens, {row, line++, {}, {}, false, true});
}

PreciseCount MemberTreemap::countOf(const Place& place) const {
    const MemberList& list = members_.rows()[place.row];
    if (place.isDifference) return *list.estimateDifference;
    if (place.isNotItemised) return *list.notItemised;
    if (!place.group) return {report_.rows[place.row].tokens, CountPrecision::exact};
    const MemberGroup& group = list.groups[*place.group];
    return place.member ? group.members[*place.member].count() : group.count();
}

std::string MemberTreemap::name(std::size_t node) const {
    const Place& place = places_.at(node);
    const MemberList& list = members_.rows()[place.row];
    if (place.isDifference) return DetailsPresentation::estimateDifference;
    if (place.isNotItemised) return DetailsPresentation::notItemised;
    if (!place.group) return report_.rows[place.row].name;
    const MemberGroup& group = list.groups[*place.group];
    if (place.member) return group.members[*place.member].name;
    return DetailsPresentation::line(report_, list, group).name;
}

std::string MemberTreemap::label(std::size_t node) const {
    const std::string whole = name(node);
    if (!whole.starts_with('/') && !whole.starts_with('~')) return whole;
    const std::string folder = FilePath::lastComponent(FilePath::parent(whole));
    const std::string file = FilePath::lastComponent(whole);
    return folder.empty() || folder == "/" ? file : folder + "/" + file;
}

std::string MemberTreemap::path(std::size_t node) const {
    const Place& place = places_.at(node);
    if (!place.member) return {};
    const MemberList& list = members_.rows()[place.row];
    return MemberPath::ofMember(report_, list, list.groups[*place.group].members[*place.member]);
}

std::string MemberTreemap::tokens(std::size_t node) const {
    return DetailsPresentation::tokens(countOf(places_.at(node)));
}

std::string MemberTreemap::detail(std::size_t node) const {
    const PreciseCount count = countOf(places_.at(node));
    return DetailsPresentation::tokens(count) + (count.tokens == 1 ? " token · " : " tokens · ") +
           InstructionFileShare::text(count.tokens, report_.total);
}

std::string MemberTreemap::spoken(std::size_t node) const {
    const PreciseCount count = countOf(places_.at(node));
    return name(node) + ", " + DetailsPresentation::spokenTokens(count) + ", " +
           InstructionFileShare::text(count.tokens, report_.total);
}

} // namespace loadscope
