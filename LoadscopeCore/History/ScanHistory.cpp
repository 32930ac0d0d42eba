// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistory.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <unordered_map>

namespace loadscope {
namespace {

/// By repository name, then path.
bool isNamedBefore(const RecordedScan& left, const RecordedScan& right) {
    const int names = Text::compareCanonically(left.repositoryName, right.repositoryName);
    if (names != 0) return names < 0;
    const int paths = Text::compareCanonically(left.repositoryPath, right.repositoryPath);
    // Two folders may differ in nothing but how an accent is written.
    return paths != 0 ? paths < 0 : left.repositoryPath < right.repositoryPath;
}

bool isHeavierThan(const LeaderboardEntry& left, const LeaderboardEntry& right) {
    if (left.latest.total != right.latest.total) return left.latest.total > right.latest.total;
    return isNamedBefore(left.latest, right.latest);
}

/// `group` holds the records of one repository.
LeaderboardEntry makeEntry(std::vector<const RecordedScan*> group) {
    std::stable_sort(group.begin(), group.end(), [](const RecordedScan* left, const RecordedScan* right) {
        return std::tie(left->date, left->id) < std::tie(right->date, right->id);
    });
    LeaderboardEntry entry{*group.back(), std::nullopt, static_cast<std::int64_t>(group.size()),
                           std::nullopt};
    if (group.size() > 1) {
        const RecordedScan& previous = *group[group.size() - 2];
        entry.previousTotal = previous.total;
        entry.previousModel = previous.model;
    }
    return entry;
}

} // namespace

bool LeaderboardEntry::followsOtherModel() const {
    return latest.model && previousModel && *latest.model != *previousModel;
}

std::optional<TrendDirection> LeaderboardEntry::trend() const {
    if (!previousTotal || followsOtherModel()) return std::nullopt;
    if (latest.total == *previousTotal) return TrendDirection::flat;
    return latest.total > *previousTotal ? TrendDirection::up : TrendDirection::down;
}

std::optional<std::int64_t> LeaderboardEntry::delta() const {
    if (!previousTotal || followsOtherModel()) return std::nullopt;
    SaturatingSum difference;
    difference.add(latest.total);
    difference.subtract(*previousTotal);
    return difference.value();
}

namespace ScanHistory {

std::vector<RecordedScan> scans(const std::vector<RecordedScan>& history, std::string_view repositoryPath,
                                std::string_view tool) {
    std::vector<RecordedScan> matches;
    std::copy_if(history.begin(), history.end(), std::back_inserter(matches), [&](const RecordedScan& scan) {
        return scan.repositoryPath == repositoryPath && scan.tool == tool;
    });
    return matches;
}

std::optional<std::string> mostRecentRepositoryPath(const std::vector<RecordedScan>& history) {
    if (history.empty()) return std::nullopt;
    return history.back().repositoryPath;
}

std::vector<RepoSelection> recentFolders(const std::vector<RecordedScan>& history, std::size_t limit) {
    std::vector<RepoSelection> folders;
    for (const RecordedScan& scan : newestFirst(history)) {
        if (folders.size() >= limit) break;
        const auto isIt = [&](const RepoSelection& folder) { return folder.path == scan.repositoryPath; };
        if (std::none_of(folders.begin(), folders.end(), isIt))
            folders.emplace_back(scan.repositoryPath, scan.repositoryName);
    }
    return folders;
}

std::vector<ScanChange> changes(const std::vector<RecordedScan>& scans) {
    using Kind = ScanChange::Kind;
    std::vector<ScanChange> found;
    const std::string* version = nullptr;
    const std::string* model = nullptr;
    const auto follow = [&](Kind kind, std::size_t scan, const std::optional<std::string>& told,
                            const std::string*& known) {
        if (!told) return;
        if (known && *known != *told) found.push_back({kind, scan, *known, *told});
        known = &*told;
    };
    for (std::size_t i = 0; i < scans.size(); ++i) {
        follow(Kind::version, i, scans[i].toolVersion, version);
        follow(Kind::model, i, scans[i].model, model);
    }
    return found;
}

std::vector<RecordedScan> latestPerRepository(const std::vector<RecordedScan>& history,
                                              std::string_view tool) {
    std::unordered_map<std::string_view, const RecordedScan*> newest;
    for (const RecordedScan& scan : history) {
        if (scan.tool != tool) continue;
        const RecordedScan*& held = newest[scan.repositoryPath];
        if (!held || held->date <= scan.date) held = &scan;
    }
    std::vector<RecordedScan> latest;
    latest.reserve(newest.size());
    for (const auto& [path, scan] : newest)
        latest.push_back(*scan);
    std::sort(latest.begin(), latest.end(), isNamedBefore);
    return latest;
}

std::vector<RecordedScan> newestFirst(std::vector<RecordedScan> scans) {
    std::stable_sort(scans.begin(), scans.end(), [](const RecordedScan& left, const RecordedScan& right) {
        return std::tie(left.date, left.id) > std::tie(right.date, right.id);
    });
    return scans;
}

std::vector<LeaderboardEntry> leaderboard(const std::vector<RecordedScan>& history, std::string_view tool) {
    std::unordered_map<std::string_view, std::vector<const RecordedScan*>> groups;
    for (const RecordedScan& scan : history)
        if (scan.tool == tool) groups[scan.repositoryPath].push_back(&scan);
    std::vector<LeaderboardEntry> entries;
    entries.reserve(groups.size());
    for (auto& [path, group] : groups)
        entries.push_back(makeEntry(std::move(group)));
    std::sort(entries.begin(), entries.end(), isHeavierThan);
    return entries;
}

CategoryChartAxis categoryAxis(const std::vector<RecordedScan>& scans) {
    return CategoryChartAxis::make(scans);
}

} // namespace ScanHistory
} // namespace loadscope
