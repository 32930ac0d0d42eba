// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// What the Trends page's chart shows and says.
#include "LoadscopeCore/Presentation/ConditionTexts.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <algorithm>

namespace loadscope {

std::int64_t TrendsPresentation::upperBound() const {
    std::int64_t largest = 0;
    for (const RecordedScan& scan : scans_) {
        largest = std::max(largest, scan.total);
    }
    return TrendChartData::upperBoundFor(largest);
}

std::optional<std::size_t> TrendsPresentation::selectedScan(std::optional<Timestamp> selectedDate) const {
    if (!selectedDate) return std::nullopt;
    std::vector<Timestamp> dates;
    for (const RecordedScan& scan : scans_) {
        dates.push_back(scan.date);
    }
    return nearestDate(dates, *selectedDate);
}

bool TrendsPresentation::hasChanges() const {
    return std::any_of(series_.begin(), series_.end(),
                       [](const ToolSeries& s) { return !s.changes.empty(); });
}

bool TrendsPresentation::showsThresholds() const {
    return !scans_.empty() && std::none_of(scans_.begin(), scans_.end(), [](const RecordedScan& scan) {
        return scan.contextWindow.has_value();
    });
}

std::string TrendsPresentation::chartCaption() const {
    const std::string changes =
        hasChanges() ? " Upright lines mark where the tool's version or its model changed." : "";
    if (showsThresholds()) {
        return "Hover the chart to read a single scan. Dashed lines mark the band thresholds, which are "
               "absolute anchors." +
               changes;
    }
    return "Hover the chart to read a single scan. The band thresholds are not drawn: they are absolute "
           "anchors, while "
           "a point whose tool reported a context window is banded against that window, so such a point can "
           "sit above "
           "the Excessive line and still read Heavy." +
           changes;
}

TrendChartData TrendsPresentation::chart() const {
    TrendChartData data{{}, upperBound(), showsThresholds()};
    for (const ToolSeries& series : series_) {
        // The first series needs no name: it is the one that is nearly always there.
        const std::string tool = data.series.empty() ? "" : series.label + " ";
        for (const ScanChange& change : series.changes)
            data.changes.push_back({data.series.size(), change.scan, change.kind == ScanChange::Kind::model,
                                    tool + ConditionTexts::label(change),
                                    tool + ConditionTexts::shortLabel(change)});
        std::vector<TrendChartData::Point>& points = data.series.emplace_back();
        for (const RecordedScan& scan : series.scans) {
            points.push_back({scan.date, scan.total});
        }
    }
    return data;
}

TrendsPresentation::Tooltip TrendsPresentation::tooltip(std::size_t scan) const {
    const RecordedScan& s = scans_.at(scan);
    std::vector<ScanChange> changes = series_[places_[scan].series].changes;
    std::erase_if(changes, [&](const ScanChange& change) { return change.scan != places_[scan].scan; });
    return {RecordedScanPresentation::toolLabel(s) + " · " + LocaleFormat::date(s.date),
            LocaleFormat::grouped(s.total), OpinionBands::title(s.band()), s.band(),
            ConditionTexts::lines(s, changes)};
}

std::string TrendsPresentation::Tooltip::spoken() const {
    std::string text = heading + ": " + total + " tokens, " + bandTitle;
    for (const std::string& line : conditions)
        text += ", " + line;
    return text;
}

std::size_t TrendsPresentation::mostConditionLines() const {
    if (hasChanges()) return 2;
    const bool isKnown = std::any_of(scans_.begin(), scans_.end(),
                                     [](const RecordedScan& scan) { return scan.toolVersion || scan.model; });
    return isKnown ? 1 : 0;
}

} // namespace loadscope
