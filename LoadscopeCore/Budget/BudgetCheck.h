// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/Budget.h"
#include "LoadscopeCore/CodexProbe/CodexInstructions.h"
#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// One limit beside what it limits.
struct BudgetResult {
    enum class Kind { total, increase, category, server, files, codexInstructions };

    /// A part of the value, largest first.
    struct Reason {
        std::string name;
        std::int64_t value = 0;

        bool operator==(const Reason&) const = default;
    };

    Kind kind = Kind::total;
    std::string name; ///< of the category, the server or the pattern; empty for the others
    Budget::Unit unit = Budget::Unit::tokens;
    std::int64_t limit = 0;
    std::optional<std::int64_t> value{}; ///< absent when nothing was measured that it could limit
    bool isEstimate = false;             ///< from the sizes of files
    bool withinRounding = false;         ///< an increase that the tool's rounding alone explains
    bool isComplete = true;              ///< false when there was too much to look at
    std::vector<Reason> reasons{};       ///< at most three

    [[nodiscard]] bool isExceeded() const { return value && *value > limit && !withinRounding; }
    bool operator==(const BudgetResult&) const = default;
};

/// Holds a budget against what is known. Pure, except for the walk that a pattern of files asks for.
namespace BudgetCheck {

inline constexpr std::size_t mostReasons = 3;

/// What the budget is held against; what is not there leaves its limits out, or without a value.
struct Facts {
    std::string repository;
    const ScanMeasurement* measurement = nullptr;
    const ScanComparison* sinceBaseline = nullptr;
    const CodexInstructions* codexInstructions = nullptr;
};

/// One result for each limit that the facts are about, in the order of the budget file's keys: without a
/// measurement neither the total nor categories nor servers, without a baseline no increase.
[[nodiscard]] std::vector<BudgetResult> results(const Budget& budget, const Facts& facts);

[[nodiscard]] bool isExceeded(const std::vector<BudgetResult>& results);

} // namespace BudgetCheck
} // namespace loadscope
