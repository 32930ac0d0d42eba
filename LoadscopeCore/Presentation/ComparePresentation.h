// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/BarChartGeometry.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Presentation/HistoryTexts.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace loadscope {

/// All that the Compare page shows, derived from the recorded history. A value: make a new one when the
/// history changes. The page itself decides nothing.
class ComparePresentation {
public:
    static constexpr const char* title = "Compare";
    static constexpr const char* leaderboardTitle = "Leaderboard";
    static constexpr const char* leaderboardDetail =
        "Every scanned repository, ranked by its latest recorded total — heaviest first, one ranking per "
        "tool. The "
        "trend compares each repository's two most recent scans by that tool.";
    static constexpr const char* combinedTitle = "Category for category";
    static constexpr const char* methodTitle = "How to read this";
    static constexpr std::array methodSentences = {
        "The ranking uses each repository's latest scan; the pill beside it compares that scan with the one "
        "before. Totals of two models are not compared: the pill then says \"other model\".",
        "Claude Code and Codex load different things, so each has a ranking of its own and totals are never "
        "added up.",
        "Every chart lists the same categories in the same order. An empty place means that the scan had no "
        "such "
        "category.",
        "The bars of all columns share one scale, so their lengths compare across repositories.",
        "\"Other (name withheld)\" stands for a category whose name looked like a file or a path. Such names "
        "are not "
        "recorded; two of them in one scan keep two places."};

    static constexpr const char* choiceTitle = "Compared repositories";
    static constexpr const char* choiceDetail =
        "Expand to leave some of them out. The leaderboard always has all of them.";
    /// So many cards are side by side at a time: of hundreds nobody would find one.
    static constexpr std::size_t columnsPerPage = 12;

    /// What the user wants to see of it.
    struct Choice {
        std::set<std::string> leftOut{}; ///< paths of repositories that are not compared
        std::size_t page = 0;            ///< the last one there is stands for any behind it

        bool operator==(const Choice&) const = default;
    };

    struct Repository {
        std::string path;
        std::string label;
        bool isCompared = true;
    };

    /// The latest Claude Code scan of one repository.
    struct Column {
        RecordedScan scan;
        std::string label; ///< the repository's name, made distinct by its path where two are named the same
        std::size_t paletteIndex = 0;
    };

    struct LeaderboardGroup {
        std::string tool;
        std::string label;
        std::vector<LeaderboardEntry> entries;
    };

    struct LeaderboardRow {
        HistoryRowText row;
        TrendPillText trend;
    };

    struct ColumnText {
        std::string scanned; ///< "Scanned " and the date
        std::string total;   ///< to be followed by "tokens"
        std::string pill;
        OpinionBand band = OpinionBand::lean;
        std::string cardName;             ///< of the whole column
        std::string chartName;            ///< of its chart
        std::vector<std::string> summary; ///< what is copied of it above its categories
    };

    explicit ComparePresentation(const std::vector<RecordedScan>& history)
        : ComparePresentation(history, Choice()) {}
    ComparePresentation(const std::vector<RecordedScan>& history, const Choice& choice);

    /// Those of the page.
    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    /// All that could be compared.
    [[nodiscard]] const std::vector<Repository>& repositories() const { return repositories_; }
    /// With two there is nothing to leave out.
    [[nodiscard]] bool hasChoice() const { return repositories_.size() > 2; }
    /// "38 of 40 repositories are compared."
    [[nodiscard]] std::string choiceSummary() const;
    [[nodiscard]] std::size_t page() const { return page_; }
    [[nodiscard]] std::size_t pageCount() const;
    /// "Repositories 13 to 24 of 40"
    [[nodiscard]] std::string pageText() const;
    [[nodiscard]] const std::vector<LeaderboardGroup>& leaderboardGroups() const { return groups_; }

    /// Largest category of all that is compared, on whatever page, at least 1: the end of every column's
    /// scale.
    [[nodiscard]] std::int64_t maximumRowTokens() const;

    /// True when there are two repositories to set side by side.
    [[nodiscard]] bool hasComparison() const { return latest_.size() >= 2; }

    [[nodiscard]] static std::string headerLine();
    [[nodiscard]] EmptyStateText emptyState() const;
    [[nodiscard]] static std::vector<LeaderboardRow> rows(const LeaderboardGroup& group);
    [[nodiscard]] static ColumnText text(const Column& column);

    /// The pill with the most characters among all columns.
    [[nodiscard]] std::string longestPill() const;
    [[nodiscard]] static std::string combinedDetail();

    /// One series: the column's categories, in the places that they have in every column.
    [[nodiscard]] BarChartData columnChart(const Column& column) const;

    /// One series per column.
    [[nodiscard]] BarChartData combinedChart() const;

private:
    [[nodiscard]] BarChartData emptyChart() const;
    [[nodiscard]] std::vector<BarChartData::Bar> bars(const RecordedScan& scan) const;

    std::vector<Repository> repositories_;
    std::vector<RecordedScan> latest_; ///< of those that are compared
    std::size_t page_ = 0;
    std::vector<Column> columns_;
    CategoryChartAxis axis_;
    std::vector<LeaderboardGroup> groups_;
};

} // namespace loadscope
