// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace loadscope {
namespace {

using Warning = ScanComparison::Warning;

/// How large a change is, without its sign.
std::int64_t size(const TokenChange& tokens) {
    const std::int64_t change = tokens.change();
    return change < 0 ? -change : change;
}

/// One number of one side, with how far it may be off.
struct Counted {
    std::int64_t tokens = 0;
    std::int64_t uncertainty = 0;
};

TokenChange changeOf(const std::optional<Counted>& before, const std::optional<Counted>& after) {
    TokenChange result;
    if (before) result.before = before->tokens;
    if (after) result.after = after->tokens;
    const std::int64_t uncertain = (before ? before->uncertainty : 0) + (after ? after->uncertainty : 0);
    result.withinRounding = before && after && result.change() != 0 && size(result) <= uncertain;
    return result;
}

/// What entries are lined up by: table, group and name. Refers to the texts of the measurements.
using Key = std::array<std::string_view, 3>;

/// Lines up the entries of two lists by key and occurrence: the n-th of a key with the n-th.
class Alignment {
public:
    struct Line {
        Key key;
        std::optional<std::size_t> before;
        std::optional<std::size_t> after;
    };

    /// All of the older list are added before the first of the newer one.
    void addBefore(const Key& key, std::size_t index) {
        places_[key].lines.push_back(lines_.size());
        lines_.push_back({key, index, {}});
    }
    void addAfter(const Key& key, std::size_t index) {
        const auto place = places_.find(key);
        if (place == places_.end() || place->second.taken == place->second.lines.size())
            lines_.push_back({key, {}, index});
        else
            lines_[place->second.lines[place->second.taken++]].after = index;
    }
    [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }

private:
    struct Place {
        std::vector<std::size_t> lines;
        std::size_t taken = 0; ///< how many of them the newer list has found
    };
    struct Hash {
        std::size_t operator()(const Key& key) const {
            std::size_t hash = 0;
            for (const std::string_view part : key)
                hash = hash * 31 + std::hash<std::string_view>()(part);
            return hash;
        }
    };

    std::unordered_map<Key, Place, Hash> places_;
    std::vector<Line> lines_;
};

std::vector<CategoryChange> categoryChanges(const ScanMeasurement& before, const ScanMeasurement& after) {
    const auto beforeOff = PrintedCount::uncertainties(before);
    const auto afterOff = PrintedCount::uncertainties(after);
    Alignment alignment;
    for (std::size_t i = 0; i < before.categories.size(); ++i)
        alignment.addBefore({before.categories[i].name}, i);
    for (std::size_t i = 0; i < after.categories.size(); ++i)
        alignment.addAfter({after.categories[i].name}, i);
    std::vector<CategoryChange> changes;
    for (const auto& line : alignment.lines()) {
        std::optional<Counted> old;
        std::optional<Counted> now;
        if (line.before) old = {before.categories[*line.before].tokens, beforeOff[*line.before]};
        if (line.after) now = {after.categories[*line.after].tokens, afterOff[*line.after]};
        CategoryChange change{std::string(line.key[0]), changeOf(old, now)};
        change.source =
            line.after ? sourceOf(after.categories[*line.after]) : sourceOf(before.categories[*line.before]);
        changes.push_back(std::move(change));
    }
    std::stable_sort(changes.begin(), changes.end(),
                     [](const CategoryChange& left, const CategoryChange& right) {
                         if (size(left.tokens) != size(right.tokens))
                             return size(left.tokens) > size(right.tokens);
                         return left.name < right.name;
                     });
    return changes;
}

std::vector<MemberChange> memberChanges(const std::vector<ContextMember>& before,
                                        const std::vector<ContextMember>& after) {
    const auto keyOf = [](const ContextMember& member) {
        return Key{member.table, member.group, member.name};
    };
    const auto counted = [](const ContextMember& member) {
        return Counted{member.tokens, PrintedCount::uncertainty(member)};
    };
    Alignment alignment;
    for (std::size_t i = 0; i < before.size(); ++i)
        alignment.addBefore(keyOf(before[i]), i);
    for (std::size_t i = 0; i < after.size(); ++i)
        alignment.addAfter(keyOf(after[i]), i);
    std::vector<MemberChange> changes;
    changes.reserve(alignment.lines().size());
    for (const auto& line : alignment.lines()) {
        std::optional<Counted> old;
        std::optional<Counted> now;
        if (line.before) old = counted(before[*line.before]);
        if (line.after) now = counted(after[*line.after]);
        const auto& [table, group, name] = line.key;
        changes.push_back({std::string(table), std::string(group), std::string(name), changeOf(old, now)});
    }
    std::stable_sort(changes.begin(), changes.end(), [](const MemberChange& left, const MemberChange& right) {
        if (size(left.tokens) != size(right.tokens)) return size(left.tokens) > size(right.tokens);
        return std::tie(left.name, left.group, left.table) < std::tie(right.name, right.group, right.table);
    });
    return changes;
}

/// Both tell, and not the same.
template <typename T>
bool differ(const std::optional<T>& before, const std::optional<T>& after) {
    return before && after && *before != *after;
}

std::vector<Warning> warningsFor(const ScanMeasurement& before, const ScanMeasurement& after) {
    const bool isOneTool = before.tool == after.tool; // versions and windows of two tools say nothing
    const std::pair<Warning, bool> all[] = {
        {Warning::otherTool, !isOneTool},
        {Warning::otherRepository, before.repositoryPath != after.repositoryPath},
        {Warning::otherModel, isOneTool && differ(before.model, after.model)},
        {Warning::otherWindow, isOneTool && differ(before.contextWindow, after.contextWindow)},
        {Warning::otherVersion, isOneTool && differ(before.toolVersion, after.toolVersion)},
        {Warning::otherSource, differ(before.totalSource, after.totalSource)},
        {Warning::estimate, before.isEstimate || after.isEstimate},
    };
    std::vector<Warning> warnings;
    for (const auto& [warning, applies] : all)
        if (applies) warnings.push_back(warning);
    return warnings;
}

} // namespace

TokenChange::Kind TokenChange::kind() const {
    if (!before) return after ? Kind::added : Kind::unchanged;
    if (!after) return Kind::gone;
    if (*before == *after) return Kind::unchanged;
    return *before < *after ? Kind::grown : Kind::shrunk;
}

bool ScanComparison::isComparable() const {
    return std::none_of(warnings.begin(), warnings.end(), [](Warning warning) {
        return warning == Warning::otherTool || warning == Warning::otherModel ||
               warning == Warning::otherSource || warning == Warning::estimate;
    });
}

ScanComparison ScanComparison::of(ScanMeasurement before, ScanMeasurement after) {
    ScanComparison comparison;
    comparison.total = changeOf(Counted{before.total, PrintedCount::uncertaintyOfTotal(before)},
                                Counted{after.total, PrintedCount::uncertaintyOfTotal(after)});
    comparison.categories = categoryChanges(before, after);
    if (before.members && after.members) comparison.members = memberChanges(*before.members, *after.members);
    comparison.warnings = warningsFor(before, after);
    comparison.before = std::move(before);
    comparison.after = std::move(after);
    return comparison;
}

std::string rawValue(ScanComparison::Warning warning) {
    constexpr std::array names{"otherTool",    "otherRepository", "otherModel", "otherWindow",
                               "otherVersion", "otherSource",     "estimate"};
    return names.at(static_cast<std::size_t>(warning));
}

} // namespace loadscope
