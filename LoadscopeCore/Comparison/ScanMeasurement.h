// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// What a comparison needs of one measurement, whether it comes from a scan, from the history or from the
/// JSON of an earlier scan. What its source does not tell is absent.
struct ScanMeasurement {
    struct Category {
        std::string name;
        std::int64_t tokens = 0;
        std::optional<Provenance> provenance{}; ///< absent in the history

        bool operator==(const Category&) const = default;
    };

    std::string tool = RecordedScan::claudeTool;
    std::string repositoryName;
    std::string repositoryPath;
    std::optional<Timestamp> date;
    std::int64_t total = 0;
    std::optional<TotalSource> totalSource; ///< absent in the history
    bool isEstimate = false;
    std::vector<Category> categories;                  ///< in the order of the report's rows
    std::optional<std::vector<ContextMember>> members; ///< absent in the history
    std::optional<std::string> model;
    std::optional<std::string> toolVersion;
    std::optional<std::int64_t> contextWindow;

    [[nodiscard]] static ScanMeasurement ofReport(const ScanReport& report, std::optional<Timestamp> date);
    [[nodiscard]] static ScanMeasurement ofRecord(const RecordedScan& record);

    bool operator==(const ScanMeasurement&) const = default;
};

/// Where a figure comes from: the tool's own words, the sizes of files, or what others leave of a total.
enum class FigureSource { reported, estimated, derived };

/// Of a category; in the history its name tells.
[[nodiscard]] FigureSource sourceOf(const ScanMeasurement::Category& category);

/// "reported", "estimated" or "derived".
[[nodiscard]] std::string rawValue(FigureSource source);

/// How far the number that a tool printed may lie from the one that it counted. Tools print thousands with
/// one decimal.
namespace PrintedCount {

/// Half of the last digit that a count may have been rounded to: 0 below 1,000 and for a number that cannot
/// have been rounded, 50 for 2,600, 50,000 for 1,200,000.
[[nodiscard]] std::int64_t uncertainty(std::int64_t tokens);

/// The same where the report says how closely it counts.
[[nodiscard]] std::int64_t uncertainty(const ContextMember& member);

/// For each category of a measurement. Estimates of local files are exact; a row that is what others leave
/// of a printed number inherits its uncertainty.
[[nodiscard]] std::vector<std::int64_t> uncertainties(const ScanMeasurement& measurement);

/// Of the total, which only the tool's own report prints rounded.
[[nodiscard]] std::int64_t uncertaintyOfTotal(const ScanMeasurement& measurement);

} // namespace PrintedCount
} // namespace loadscope
