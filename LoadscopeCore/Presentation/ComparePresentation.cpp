// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include "LoadscopeCore/Geometry/ChartPalette.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace loadscope {
namespace {

/// Names of repositories, with the path behind each that is not the only one of its name.
class DistinctNames {
public:
    void add(const RecordedScan& scan) { ++count_[scan.repositoryName]; }

    [[nodiscard]] std::string of(const RecordedScan& scan) const {
        const auto found = count_.find(scan.repositoryName);
        const bool isShared = found != count_.end() && found->second > 1;
        return isShared ? scan.repositoryName + " — " + scan.repositoryPath : scan.repositoryName;
    }

private:
    std::map<std::string, int, std::less<>> count_;
};

} // namespace

ComparePresentation::ComparePresentation(const std::vector<RecordedScan>& history, const Choice& choice) {
    const std::vector<RecordedScan> all = ScanHistory::latestPerRepository(history, RecordedScan::claudeTool);
    DistinctNames names;
    for (const RecordedScan& scan : all) {
        names.add(scan);
    }
    std::vector<Column> columns;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::string label = names.of(all[i]);
        const bool isCompared = !choice.leftOut.contains(all[i].repositoryPath);
        repositories_.push_back({all[i].repositoryPath, label, isCompared});
        if (!isCompared) continue;
        latest_.push_back(all[i]);
        // The colour is its own whatever else is compared.
        columns.push_back({all[i], label, i % chartPaletteSize});
    }
    axis_ = ScanHistory::categoryAxis(latest_);
    page_ = std::min(choice.page, pageCount() - 1);
    const std::size_t first = page_ * columnsPerPage;
    for (std::size_t i = first; i < std::min(first + columnsPerPage, columns.size()); ++i)
        columns_.push_back(std::move(columns[i]));
    for (const std::string_view tool : {RecordedScan::claudeTool, RecordedScan::codexTool}) {
        std::vector<LeaderboardEntry> entries = ScanHistory::leaderboard(history, tool);
        if (entries.empty()) continue;
        groups_.push_back(
            {std::string(tool), RecordedScanPresentation::labelForTool(tool), std::move(entries)});
    }
}

std::int64_t ComparePresentation::maximumRowTokens() const {
    std::int64_t largest = 1;
    for (const RecordedScan& scan : latest_) {
        for (const RecordedCategory& category : scan.categories) {
            largest = std::max(largest, category.tokens);
        }
    }
    return largest;
}

std::string ComparePresentation::headerLine() {
    return std::string("The latest recorded Claude Code scan of each repository, side by side, category for "
                       "category. ") +
           CodexPresentation::noBreakdownNote;
}

std::size_t ComparePresentation::pageCount() const {
    return std::max<std::size_t>(1, (latest_.size() + columnsPerPage - 1) / columnsPerPage);
}

std::string ComparePresentation::choiceSummary() const {
    const auto number = [](std::size_t value) {
        return LocaleFormat::grouped(static_cast<std::int64_t>(value));
    };
    if (latest_.size() == repositories_.size())
        return "All " + number(repositories_.size()) + " repositories are compared.";
    return number(latest_.size()) + " of " + number(repositories_.size()) + " repositories are compared.";
}

std::string ComparePresentation::pageText() const {
    const auto number = [](std::size_t value) {
        return LocaleFormat::grouped(static_cast<std::int64_t>(value));
    };
    const std::size_t first = page_ * columnsPerPage;
    return "Repositories " + number(first + 1) + " to " + number(first + columns_.size()) + " of " +
           number(latest_.size());
}

EmptyStateText ComparePresentation::emptyState() const {
    if (latest_.size() < 2 && repositories_.size() >= 2) {
        return {"Fewer than two repositories are chosen",
                "Check at least two above and their latest results appear here side by side."};
    }
    if (latest_.empty()) {
        return {"No recorded scans yet",
                "Scan two repositories and their latest results appear here side by side."};
    }
    const RecordedScan& only = latest_.front();
    return {"Only one repository recorded",
            only.repositoryName + " measured " + LocaleFormat::grouped(only.total) +
                " tokens. Choose a second repository and scan it to compare the two."};
}

std::vector<ComparePresentation::LeaderboardRow> ComparePresentation::rows(const LeaderboardGroup& group) {
    DistinctNames names;
    for (const LeaderboardEntry& entry : group.entries) {
        names.add(entry.latest);
    }
    std::vector<LeaderboardRow> rows;
    for (const LeaderboardEntry& entry : group.entries) {
        const RecordedScan& latest = entry.latest;
        const std::string detail = group.label + " · " + LocaleFormat::grouped(entry.scanCount) +
                                   (entry.scanCount == 1 ? " scan" : " scans") + " · latest " +
                                   LocaleFormat::date(latest.date);
        rows.push_back({{rows.size() + 1, names.of(latest), detail, LocaleFormat::grouped(latest.total),
                         latest.band(), OpinionBands::title(latest.band()), latest.repositoryPath},
                        TrendPillText::of(entry)});
    }
    return rows;
}

ComparePresentation::ColumnText ComparePresentation::text(const Column& column) {
    const RecordedScan& scan = column.scan;
    const std::string scanned = "Scanned " + LocaleFormat::date(scan.date);
    const std::string pill =
        OpinionBands::title(scan.band()) + " · " + RecordedScanPresentation::bandScaleCaption(scan);
    return {scanned,
            LocaleFormat::grouped(scan.total),
            pill,
            scan.band(),
            "Latest scan of " + column.label,
            "Categories of " + column.label,
            {column.label, scanned, TokenTexts::count(scan.total), pill}};
}

std::string ComparePresentation::longestPill() const {
    std::string longest;
    for (const Column& column : columns_) {
        std::string pill = text(column).pill;
        if (pill.size() > longest.size()) longest = std::move(pill);
    }
    return longest;
}

std::string ComparePresentation::combinedDetail() {
    return std::string(
               "Same categories, every recorded repository, on one axis. Totals are authoritative and the "
               "category totals are reported by Claude Code's `/context`. ") +
           CodexPresentation::noBreakdownNote;
}

BarChartData ComparePresentation::emptyChart() const {
    BarChartData chart;
    chart.maximum = maximumRowTokens();
    for (const CategoryChartAxis::Entry& entry : axis_.entries()) {
        chart.slotLabels.push_back(entry.label);
    }
    return chart;
}

std::vector<BarChartData::Bar> ComparePresentation::bars(const RecordedScan& scan) const {
    std::map<std::string_view, std::size_t> slots;
    for (std::size_t i = 0; i < axis_.entries().size(); ++i) {
        slots.emplace(axis_.entries()[i].coordinate, i);
    }
    std::vector<BarChartData::Bar> bars;
    for (const CategoryChartAxis::Row& row : axis_.rows(scan.categories)) {
        bars.push_back({slots.at(row.coordinate), row.tokens});
    }
    return bars;
}

BarChartData ComparePresentation::columnChart(const Column& column) const {
    BarChartData chart = emptyChart();
    chart.series.push_back(bars(column.scan));
    return chart;
}

BarChartData ComparePresentation::combinedChart() const {
    BarChartData chart = emptyChart();
    for (const Column& column : columns_) {
        chart.series.push_back(bars(column.scan));
    }
    return chart;
}

} // namespace loadscope
