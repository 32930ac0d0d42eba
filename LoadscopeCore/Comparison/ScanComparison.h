// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanMeasurement.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// One number in two measurements; a side that lacks it is absent.
struct TokenChange {
    enum class Kind { added, gone, grown, shrunk, unchanged };

    std::optional<std::int64_t> before;
    std::optional<std::int64_t> after;
    bool withinRounding = false; ///< they differ, but the rounding of what the tool prints alone explains it

    /// After minus before, absent counting as 0.
    [[nodiscard]] std::int64_t change() const { return after.value_or(0) - before.value_or(0); }
    [[nodiscard]] Kind kind() const;
    /// The tool's own words changed, beyond its rounding.
    [[nodiscard]] bool isReal() const { return kind() != Kind::unchanged && !withinRounding; }
    bool operator==(const TokenChange&) const = default;
};

struct CategoryChange {
    std::string name;
    TokenChange tokens;
    FigureSource source = FigureSource::reported; ///< of the newer side that has it

    bool operator==(const CategoryChange&) const = default;
};

struct MemberChange {
    std::string table;
    std::string group;
    std::string name;
    TokenChange tokens;

    bool operator==(const MemberChange&) const = default;
};

/// Two measurements, side by side: what came, went, grew and shrank, the largest change first. Numbers that
/// are not alike in kind are compared all the same, but said to be: the warnings tell why.
struct ScanComparison {
    enum class Warning {
        otherTool,
        otherRepository,
        otherModel,
        otherWindow,
        otherVersion,
        otherSource, ///< of the total
        estimate,    ///< the tool estimated one of the totals
    };

    ScanMeasurement before;
    ScanMeasurement after;
    TokenChange total;
    std::vector<CategoryChange> categories;
    std::optional<std::vector<MemberChange>> members; ///< absent unless both measurements tell theirs
    std::vector<Warning> warnings;                    ///< in the order of the enumeration

    /// The two totals are of one kind. Another version, window or folder alone does not make them differ.
    [[nodiscard]] bool isComparable() const;

    /// Pure; sides that do not tell a condition are taken to have the other's. Of several categories or
    /// members with one name within a measurement, the n-th is compared with the n-th of the other.
    [[nodiscard]] static ScanComparison of(ScanMeasurement before, ScanMeasurement after);

    bool operator==(const ScanComparison&) const = default;
};

/// "otherModel" and so on.
[[nodiscard]] std::string rawValue(ScanComparison::Warning warning);

} // namespace loadscope
