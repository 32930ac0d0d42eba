// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/SystemWords.h"
#include "LoadscopeCore/Presentation/ConditionTexts.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <algorithm>
#include <set>
#include <utility>

namespace loadscope {
namespace {

constexpr const char* overTime = "tartup context over time, against the Lean, Heavy and Excessive bands.";

std::string grouped(std::size_t count) { return LocaleFormat::grouped(static_cast<std::int64_t>(count)); }

std::string plural(std::size_t count, const char* one, const char* many) {
    return grouped(count) + " " + (count == 1 ? one : many);
}

} // namespace

TrendsPresentation::TrendsPresentation(std::vector<RecordedScan> history,
                                       const std::optional<std::string>& selectedRepositoryPath,
                                       Timestamp now)
    : history_(std::move(history)),
      shownPath_(selectedRepositoryPath ? selectedRepositoryPath
                                        : ScanHistory::mostRecentRepositoryPath(history_)),
      now_(now),
      listedRuns_(ScanHistory::newestFirst(history_)) {
    if (listedRuns_.size() > maximumListedRuns)
        listedRuns_.erase(listedRuns_.begin() + maximumListedRuns, listedRuns_.end());
    if (!shownPath_) return;
    const std::string_view tools[] = {RecordedScan::claudeTool, RecordedScan::codexTool};
    for (std::size_t i = 0; i < std::size(tools); ++i) {
        std::vector<RecordedScan> scans = ScanHistory::scans(history_, *shownPath_, tools[i]);
        if (scans.empty()) continue;
        for (std::size_t scan = 0; scan < scans.size(); ++scan)
            places_.push_back({series_.size(), scan});
        std::vector<ScanChange> changes = ScanHistory::changes(scans);
        series_.push_back({std::string(tools[i]), RecordedScanPresentation::labelForTool(tools[i]), i,
                           std::move(scans), std::move(changes)});
    }
    const auto scanAt = [this](const Place& place) -> const RecordedScan& {
        return series_[place.series].scans[place.scan];
    };
    std::stable_sort(places_.begin(), places_.end(),
                     [&](const Place& a, const Place& b) { return scanAt(a).date < scanAt(b).date; });
    for (const Place& place : places_)
        scans_.push_back(scanAt(place));
}

const TrendsPresentation::ToolSeries* TrendsPresentation::seriesOf(std::string_view tool) const {
    const auto found =
        std::find_if(series_.begin(), series_.end(), [&](const ToolSeries& s) { return s.tool == tool; });
    return found == series_.end() ? nullptr : &*found;
}

bool TrendsPresentation::hasTrend() const {
    return std::any_of(series_.begin(), series_.end(),
                       [](const ToolSeries& s) { return s.scans.size() >= 2; });
}

const std::vector<RecordedScan>& TrendsPresentation::summarySeries() const {
    static const std::vector<RecordedScan> none;
    return series_.empty() ? none : series_.front().scans; // Claude Code comes first when it has scans
}

std::string TrendsPresentation::summaryToolLabel() const {
    return RecordedScanPresentation::labelForTool(
        seriesOf(RecordedScan::claudeTool) != nullptr ? RecordedScan::claudeTool : RecordedScan::codexTool);
}

std::size_t TrendsPresentation::driftStart() const {
    std::size_t start = 0;
    if (series_.empty()) return start;
    for (const ScanChange& change : series_.front().changes)
        if (change.kind == ScanChange::Kind::model) start = change.scan;
    return start;
}

std::int64_t TrendsPresentation::drift() const {
    const std::vector<RecordedScan>& scans = summarySeries();
    SaturatingSum drift;
    if (!scans.empty()) {
        drift.add(scans.back().total);
        drift.subtract(scans[driftStart()].total);
    }
    return drift.value();
}

std::size_t TrendsPresentation::repositoryCount() const {
    std::set<std::string_view> paths;
    for (const RecordedScan& scan : history_) {
        paths.insert(scan.repositoryPath);
    }
    return paths.size();
}

std::string TrendsPresentation::headerLine() const {
    return scans_.empty() ? std::string("S") + overTime : scans_.back().repositoryName + ": s" + overTime;
}

EmptyStateText TrendsPresentation::emptyState() const {
    if (scans_.empty()) {
        return {"No recorded scans yet",
                history_.empty() ? "Scans are recorded locally as you run them. Run one scan, then another, "
                                   "and the trend appears here."
                                 : "Nothing recorded for this repository yet. Scan it twice and its trend "
                                   "appears here."};
    }
    const std::vector<RecordedScan>& summary = summarySeries();
    const std::int64_t total = summary.empty() ? 0 : summary.back().total;
    const Timestamp date = summary.empty() ? now_ : summary.back().date;
    return {"One scan recorded", "A trend needs at least two scans of " + scans_.back().repositoryName +
                                     " by the same tool. The latest " + summaryToolLabel() +
                                     " scan measured " + LocaleFormat::grouped(total) + " tokens on " +
                                     LocaleFormat::date(date) + ". Scan again to plot a line."};
}

std::string TrendsPresentation::summaryDetail() const {
    return "Read from the " + summaryToolLabel() +
           " scans above. Two tools measure two different sessions, so their totals are never combined.";
}

std::vector<TrendsPresentation::Metric> TrendsPresentation::metrics() const {
    std::vector<Metric> metrics;
    const std::vector<RecordedScan>& summary = summarySeries();
    if (!summary.empty()) {
        const RecordedScan& last = summary.back();
        metrics.push_back(
            {"Latest scan", LocaleFormat::grouped(last.total), LocaleFormat::date(last.date), std::nullopt});
        metrics.push_back({"Band", OpinionBands::title(last.band()),
                           RecordedScanPresentation::bandScaleCaption(last), last.band()});
    }
    metrics.push_back(driftMetric());
    return metrics;
}

TrendsPresentation::Metric TrendsPresentation::driftMetric() const {
    constexpr const char* title = "Drift across recorded scans";
    const std::size_t start = driftStart();
    const std::size_t count = summarySeries().size() - start;
    const std::string caption = start > 0
                                    ? plural(count, "recorded scan", "recorded scans") + " with this model"
                                    : grouped(count) + " recorded " + summaryToolLabel() + " scans";
    if (start > 0 && count == 1) return {title, ConditionTexts::otherModel, caption, std::nullopt};
    const std::int64_t change = drift();
    return {title, LocaleFormat::signedGrouped(change), caption,
            change <= 0 ? OpinionBand::lean : OpinionBand::heavy};
}

std::string TrendsPresentation::pictureTitle() const {
    return scans_.back().repositoryName + " — " + chartTitle;
}

std::string TrendsPresentation::runsDetail() const {
    if (history_.size() <= maximumListedRuns)
        return "Every recorded scan, newest first, across every repository.";
    return "The newest " + grouped(maximumListedRuns) + " of " + grouped(history_.size()) +
           " recorded scans, across every repository.";
}

std::vector<TrendsPresentation::Run> TrendsPresentation::runs() const {
    std::vector<Run> runs;
    for (const RecordedScan& scan : listedRuns_) {
        runs.push_back({{std::nullopt, scan.repositoryName,
                         LocaleFormat::dateAndTime(scan.date) + " · " + categorySummary(scan),
                         LocaleFormat::grouped(scan.total), scan.band(), OpinionBands::title(scan.band()),
                         scan.repositoryPath},
                        RecordedScanPresentation::toolLabel(scan)});
    }
    return runs;
}

std::string TrendsPresentation::recordedDataDetail() const {
    return plural(history_.size(), "record", "records") + " — one per tool per scan — across " +
           plural(repositoryCount(), "repository", "repositories") + ", stored on " +
           SystemWords::thisComputer +
           ". Totals only — no instruction-file contents are ever written. The newest " +
           grouped(ScanHistoryStore::maximumScans) + " are kept.";
}

std::string TrendsPresentation::clearConfirmationButton() const {
    return "Delete " + plural(history_.size(), "Recorded Scan", "Recorded Scans");
}

std::string TrendsPresentation::categorySummary(const RecordedScan& scan) {
    if (scan.tool == RecordedScan::codexTool) return "No categories — Codex does not report a breakdown.";
    if (scan.categories.empty()) return "No category estimates";
    return RecordedScanPresentation::largestCategories(scan);
}

} // namespace loadscope
