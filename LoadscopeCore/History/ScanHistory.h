// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Report/RepoSelection.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace loadscope {

enum class TrendDirection { up, down, flat };

/// One repository's line in a tool's ranking. Two scans with different models have no trend: their totals are
/// of two kinds. A scan that does not tell its model is compared with any.
struct LeaderboardEntry {
    RecordedScan latest;
    std::optional<std::int64_t> previousTotal; ///< of the scan before `latest`
    std::int64_t scanCount = 0;
    std::optional<std::string> previousModel{}; ///< of the scan before `latest`

    [[nodiscard]] const UUID& id() const { return latest.id; }
    /// The scan before `latest` is known to have used another model.
    [[nodiscard]] bool followsOtherModel() const;
    [[nodiscard]] std::optional<TrendDirection> trend() const;
    [[nodiscard]] std::optional<std::int64_t> delta() const;
    bool operator==(const LeaderboardEntry&) const = default;
};

/// The version or the model of a tool changed between two scans.
struct ScanChange {
    enum class Kind { version, model };

    Kind kind = Kind::version;
    std::size_t scan = 0; ///< position of the first scan after the change
    std::string before;
    std::string after;

    bool operator==(const ScanChange&) const = default;
};

/// An axis on which the categories of several scans line up. The n-th category of a name within one scan
/// shares its place with the n-th of that name in every other scan.
class CategoryChartAxis {
public:
    struct Entry {
        std::string coordinate; ///< "category-" and the position from 0
        std::string label;
        bool operator==(const Entry&) const = default;
    };
    struct Row {
        std::string coordinate;
        std::string label;
        std::int64_t tokens = 0;
        bool operator==(const Row&) const = default;
    };

    [[nodiscard]] static CategoryChartAxis make(const std::vector<RecordedScan>& scans);

    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
    [[nodiscard]] std::vector<std::string> coordinates() const;

    /// The categories placed on the axis, in list order; those that are not on it are skipped.
    [[nodiscard]] std::vector<Row> rows(const std::vector<RecordedCategory>& categories) const;

    [[nodiscard]] std::optional<std::string> label(std::string_view coordinate) const;

private:
    struct Occurrence {
        std::string label;
        std::int64_t ordinal = 0; ///< from 0, among the categories of that label within one scan
        bool operator==(const Occurrence&) const = default;
    };
    struct OccurrenceHash {
        [[nodiscard]] std::size_t operator()(const Occurrence& occurrence) const;
    };

    [[nodiscard]] static std::vector<Occurrence> occurrences(const std::vector<RecordedCategory>& categories);

    std::vector<Entry> entries_;
    std::unordered_map<Occurrence, std::string, OccurrenceHash> coordinatesByOccurrence_;
};

/// Views of the recorded history. Pure functions of their input.
namespace ScanHistory {

/// Records of one repository and tool, in input order.
[[nodiscard]] std::vector<RecordedScan> scans(const std::vector<RecordedScan>& history,
                                              std::string_view repositoryPath, std::string_view tool);

/// Repository of the last record, if there is one.
[[nodiscard]] std::optional<std::string> mostRecentRepositoryPath(const std::vector<RecordedScan>& history);

/// The folders that were scanned, with any tool, the last scanned first; no more than `limit`.
[[nodiscard]] std::vector<RepoSelection> recentFolders(const std::vector<RecordedScan>& history,
                                                       std::size_t limit);

/// What changed within the scans of one repository and tool, in input order; the version first. A scan that
/// does not tell is passed over: the next one that does is compared with the last one that did.
[[nodiscard]] std::vector<ScanChange> changes(const std::vector<RecordedScan>& scans);

/// The newest record of each repository, by repository name, then path.
[[nodiscard]] std::vector<RecordedScan> latestPerRepository(const std::vector<RecordedScan>& history,
                                                            std::string_view tool);

[[nodiscard]] std::vector<RecordedScan> newestFirst(std::vector<RecordedScan> scans);

/// One entry per repository, heaviest first.
[[nodiscard]] std::vector<LeaderboardEntry> leaderboard(const std::vector<RecordedScan>& history,
                                                        std::string_view tool);

[[nodiscard]] CategoryChartAxis categoryAxis(const std::vector<RecordedScan>& scans);

} // namespace ScanHistory
} // namespace loadscope
