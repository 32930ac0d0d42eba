// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Where the tokens of a row come from.
enum class Provenance { claudeReported, selfReported, localEstimate, remainder };

[[nodiscard]] std::string rawValue(Provenance provenance);

/// Shown beside a row, for example "derived: total minus attributed".
[[nodiscard]] std::string sourceLabel(Provenance provenance);

/// One row of a report. `ordinal` is its position in the order of creation, before sorting.
struct SlabAttribution {
    std::string name;
    std::int64_t tokens = 0;
    Provenance provenance = Provenance::selfReported;
    std::int64_t ordinal = 0;

    /// Identity in lists and charts: ordinal, provenance and name joined by vertical bars.
    [[nodiscard]] std::string id() const;
    bool operator==(const SlabAttribution&) const = default;
};

struct AttributionOutcome {
    std::vector<SlabAttribution> rows; ///< by tokens descending, then name
    std::int64_t remainder = 0;        ///< what the rows did not cover; never negative
    bool overAttributed = false;       ///< the rows add up to more than the total
    bool categoriesSelfReported = false;

    bool operator==(const AttributionOutcome&) const = default;
};

/// Turns a measured total into rows: reported categories, local estimates that explain part of them, and a
/// derived remainder. Pure computation; sums saturate at the limits of 64 bits.
namespace SlabAttributor {

inline constexpr const char* remainderLabel = "Unattributed";
inline constexpr const char* unreportedCategoriesLabel = "Startup context (categories not self-reported)";
inline constexpr const char* beyondLocalEstimateSuffix = " (beyond local estimate)";

[[nodiscard]] AttributionOutcome attribute(std::int64_t total,
                                           const std::vector<SelfReportedSlab>& selfReported,
                                           const std::vector<LocalCategoryEstimate>& localEstimates);

/// Lower-cased letters and numbers of a category name; names match when these are equal.
[[nodiscard]] std::string normalize(std::string_view text);

/// Categories of equal normalised names joined into the first of them.
[[nodiscard]] std::vector<SelfReportedSlab> merged(const std::vector<SelfReportedSlab>& selfReported);

} // namespace SlabAttributor
} // namespace loadscope
