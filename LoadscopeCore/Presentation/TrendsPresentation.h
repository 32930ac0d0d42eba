// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/TrendChartGeometry.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Presentation/HistoryTexts.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// All that the Trends page shows, derived from the recorded history and the repository that is selected. A
/// value: make a new one when either changes. The page itself decides nothing.
class TrendsPresentation {
public:
    static constexpr std::size_t maximumListedRuns = 30;

    static constexpr const char* title = "Trends";
    static constexpr const char* chartTitle = "Startup tokens per scan";
    static constexpr const char* chartDetail =
        "Each point is one recorded scan; every total was reported by the tool that measured it.";
    static constexpr const char* summaryTitle = "Where this repository landed";
    static constexpr const char* runsTitle = "Previous runs";
    static constexpr const char* runsFooter =
        "Each session total was reported by the tool that measured it; category "
        "totals come from Claude Code's `/context`.";
    static constexpr const char* recordedDataTitle = "Recorded data";
    static constexpr const char* clearButton = "Clear Recorded Data…";
    static constexpr const char* clearingButton = "Deleting…"; ///< the same button while it is done
    static constexpr const char* clearTitle = "Delete every recorded scan?";
    static constexpr const char* clearMessage =
        "This cannot be undone. The scan currently on screen stays; only the "
        "recorded history is deleted.";
    static constexpr const char* methodTitle = "How to read this";
    static constexpr std::array methodSentences = {
        "A point is one scan: the total that the tool itself reported for a session that had only just "
        "started.",
        "Each line is one tool. Claude Code and Codex load different things, so their totals are never added "
        "up.",
        "The dashed lines are fixed at 30,000 and 60,000 tokens. They are left out as soon as one scan was "
        "judged "
        "against a context window that its tool reported, because the same total can then fall into another "
        "band.",
        "Lines are smoothed between scans; only the points were measured.",
        "A dotted upright line stands where the tool's version changed between two scans, a solid one where "
        "its model did. Totals of two models are not compared, so the drift begins anew there.",
        "\"Other (name withheld)\" stands for a category whose name looked like a file or a path. Such names "
        "are not "
        "recorded."};

    static constexpr const char* chartKeys =
        "Left and right walk the recorded scans, Return chooses one; two that are chosen are compared.";
    static constexpr const char* chooseHint = "Choose two points to see what changed between them.";
    static constexpr const char* chooseSecondHint = "Choose a second point to compare it with.";

    /// The scans of one tool in the shown repository.
    struct ToolSeries {
        std::string tool;
        std::string label;
        std::size_t paletteIndex = 0;
        std::vector<RecordedScan> scans; ///< in the order of the history
        std::vector<ScanChange> changes; ///< within `scans`
    };

    /// A number of the summary card.
    struct Metric {
        std::string title;
        std::string value;
        std::string caption;
        std::optional<OpinionBand> tint; ///< the primary colour without one
        bool operator==(const Metric&) const = default;
    };

    struct Tooltip {
        std::string heading; ///< tool and date
        std::string total;   ///< to be followed by "tokens"
        std::string bandTitle;
        OpinionBand band = OpinionBand::lean;
        std::vector<std::string> conditions{}; ///< version and model, as far as they are known

        /// The same in one line, for assistive technologies.
        [[nodiscard]] std::string spoken() const;
    };

    struct Run {
        HistoryRowText row;
        std::string toolLabel;
    };

    /// `history` is the published list, oldest first. `now` is only a stand-in for a missing date.
    TrendsPresentation(std::vector<RecordedScan> history,
                       const std::optional<std::string>& selectedRepositoryPath, Timestamp now);

    [[nodiscard]] const std::vector<RecordedScan>& history() const { return history_; }
    [[nodiscard]] const std::vector<ToolSeries>& series() const { return series_; }

    /// What a saved picture of the chart is headed with.
    [[nodiscard]] std::string pictureTitle() const;

    /// The scans of all series by date; on equal dates Claude Code comes first.
    [[nodiscard]] const std::vector<RecordedScan>& scans() const { return scans_; }

    /// True when some series holds at least two scans: there is a chart to draw.
    [[nodiscard]] bool hasTrend() const;

    /// The shown repository's Claude Code scans, or, when there are none, its Codex scans.
    [[nodiscard]] const std::vector<RecordedScan>& summarySeries() const;
    [[nodiscard]] std::string summaryToolLabel() const;

    /// Last total of the summary series minus its first one by the model that is known last.
    [[nodiscard]] std::int64_t drift() const;

    /// Top of the value axis.
    [[nodiscard]] std::int64_t upperBound() const;

    /// Position in `scans` of the scan nearest to a date; the earlier position when two are equally near.
    [[nodiscard]] std::optional<std::size_t> selectedScan(std::optional<Timestamp> selectedDate) const;

    /// The newest scans of every repository, newest first, no more than `maximumListedRuns`.
    [[nodiscard]] const std::vector<RecordedScan>& listedRuns() const { return listedRuns_; }
    [[nodiscard]] std::size_t repositoryCount() const;

    /// False when nothing is recorded: there are no runs to list and no data to clear.
    [[nodiscard]] bool hasHistory() const { return !history_.empty(); }

    [[nodiscard]] std::string headerLine() const;
    [[nodiscard]] EmptyStateText emptyState() const;

    /// False as soon as one of the scans was judged against a context window.
    [[nodiscard]] bool showsThresholds() const;
    [[nodiscard]] std::string chartCaption() const;

    /// The chart's marks come in the order of `scans`, its lines in the order of `series`.
    [[nodiscard]] TrendChartData chart() const;
    [[nodiscard]] Tooltip tooltip(std::size_t scan) const;

    /// Lines of conditions in the tallest tooltip.
    [[nodiscard]] std::size_t mostConditionLines() const;

    [[nodiscard]] std::string summaryDetail() const;
    [[nodiscard]] std::vector<Metric> metrics() const;
    [[nodiscard]] std::string runsDetail() const;
    [[nodiscard]] std::vector<Run> runs() const;
    [[nodiscard]] std::string recordedDataDetail() const;
    [[nodiscard]] std::string clearConfirmationButton() const;

    /// The two largest categories in short, or why there are none.
    [[nodiscard]] static std::string categorySummary(const RecordedScan& scan);

private:
    /// Where a scan stands among the series.
    struct Place {
        std::size_t series = 0;
        std::size_t scan = 0;
    };

    [[nodiscard]] const ToolSeries* seriesOf(std::string_view tool) const;
    [[nodiscard]] bool hasChanges() const;
    /// Position of the first scan in the summary series that compares with its last.
    [[nodiscard]] std::size_t driftStart() const;
    [[nodiscard]] Metric driftMetric() const;

    std::vector<RecordedScan> history_;
    std::optional<std::string> shownPath_;
    Timestamp now_;
    std::vector<ToolSeries> series_;
    std::vector<RecordedScan> scans_;
    std::vector<Place> places_; ///< of `scans_`
    std::vector<RecordedScan> listedRuns_;
};

} // namespace loadscope
