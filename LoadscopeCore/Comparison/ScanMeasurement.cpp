// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Comparison/ScanMeasurement.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace loadscope {
namespace {

constexpr std::int64_t thousand = 1'000;
constexpr std::int64_t million = 1'000'000;

using Category = ScanMeasurement::Category;

bool isBeyondEstimate(const Category& category) {
    return category.name.ends_with(SlabAttributor::beyondLocalEstimateSuffix);
}

/// Of the printed number of which the estimates of local files explain a part.
std::int64_t uncertaintyOfSplit(const ScanMeasurement& measurement, const Category& beyond) {
    SaturatingSum printed;
    printed.add(beyond.tokens);
    for (const Category& category : measurement.categories)
        if (sourceOf(category) == FigureSource::estimated) printed.add(category.tokens);
    return PrintedCount::uncertainty(printed.value());
}

} // namespace

ScanMeasurement ScanMeasurement::ofReport(const ScanReport& report, std::optional<Timestamp> date) {
    ScanMeasurement measurement;
    measurement.repositoryName = report.repositoryName;
    measurement.repositoryPath = report.repositoryPath;
    measurement.date = date;
    measurement.total = report.total;
    measurement.totalSource = report.totalSource;
    measurement.isEstimate = report.conditions.isEstimate;
    for (const SlabAttribution& row : report.rows)
        measurement.categories.push_back({row.name, row.tokens, row.provenance});
    // Without the tool's own report nothing is known of what is inside.
    if (report.categoriesSelfReported) measurement.members = report.details.members;
    measurement.model = report.conditions.model;
    measurement.toolVersion = report.conditions.toolVersion;
    measurement.contextWindow = report.contextWindow;
    return measurement;
}

ScanMeasurement ScanMeasurement::ofRecord(const RecordedScan& record) {
    ScanMeasurement measurement;
    measurement.tool = record.tool;
    measurement.repositoryName = record.repositoryName;
    measurement.repositoryPath = record.repositoryPath;
    measurement.date = record.date;
    measurement.total = record.total;
    for (const RecordedCategory& category : record.categories)
        measurement.categories.push_back({category.name, category.tokens});
    measurement.model = record.model;
    measurement.toolVersion = record.toolVersion;
    measurement.contextWindow = record.contextWindow;
    return measurement;
}

FigureSource sourceOf(const ScanMeasurement::Category& category) {
    constexpr std::array<std::string_view, 3> tiers{ScanReport::repositoryCategoryName,
                                                    ScanReport::inheritedCategoryName,
                                                    ScanReport::personalCategoryName};
    switch (category.provenance.value_or(Provenance::selfReported)) {
    case Provenance::localEstimate:
        return FigureSource::estimated;
    case Provenance::remainder:
        return FigureSource::derived;
    case Provenance::claudeReported:
    case Provenance::selfReported:
        break;
    }
    if (category.provenance) return FigureSource::reported;
    if (std::find(tiers.begin(), tiers.end(), category.name) != tiers.end()) return FigureSource::estimated;
    return category.name == SlabAttributor::remainderLabel ? FigureSource::derived : FigureSource::reported;
}

std::string rawValue(FigureSource source) {
    constexpr std::array names{"reported", "estimated", "derived"};
    return names.at(static_cast<std::size_t>(source));
}

std::int64_t PrintedCount::uncertainty(std::int64_t tokens) {
    if (tokens >= million && tokens % (million / 10) == 0) return million / 20;
    if (tokens >= thousand && tokens % (thousand / 10) == 0) return thousand / 20;
    return 0;
}

std::int64_t PrintedCount::uncertainty(const ContextMember& member) {
    switch (member.precision) {
    case CountPrecision::exact:
        return 0;
    case CountPrecision::rounded:
        return uncertainty(member.tokens);
    case CountPrecision::about:
        // Nothing tells how far off it is; such counts were seen in steps of ten.
        return std::max<std::int64_t>(uncertainty(member.tokens), 5);
    case CountPrecision::below:
        return member.tokens;
    }
    return 0;
}

std::vector<std::int64_t> PrintedCount::uncertainties(const ScanMeasurement& measurement) {
    std::vector<std::int64_t> all;
    SaturatingSum sum;
    for (const Category& category : measurement.categories) {
        std::int64_t one = 0;
        if (isBeyondEstimate(category))
            one = uncertaintyOfSplit(measurement, category);
        else if (sourceOf(category) == FigureSource::reported)
            one = uncertainty(category.tokens);
        sum.add(one);
        all.push_back(one);
    }
    sum.add(uncertaintyOfTotal(measurement));
    for (std::size_t i = 0; i < all.size(); ++i)
        if (sourceOf(measurement.categories[i]) == FigureSource::derived) all[i] = sum.value();
    return all;
}

std::int64_t PrintedCount::uncertaintyOfTotal(const ScanMeasurement& measurement) {
    const bool isPrinted =
        measurement.tool == RecordedScan::claudeTool &&
        measurement.totalSource.value_or(TotalSource::contextCommand) == TotalSource::contextCommand;
    return isPrinted ? uncertainty(measurement.total) : 0;
}

} // namespace loadscope
