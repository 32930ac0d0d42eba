// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// How closely a count of a report says how many tokens there are.
enum class CountPrecision {
    exact,   ///< "447"
    rounded, ///< "1.5k": thousands with one decimal
    about,   ///< "~160"
    below,   ///< "< 20": the count is the bound
};

/// "exact", "rounded", "about" or "below".
[[nodiscard]] std::string rawValue(CountPrecision precision);

struct PreciseCount {
    std::int64_t tokens = 0;
    CountPrecision precision = CountPrecision::exact;

    bool operator==(const PreciseCount&) const = default;
};

/// One row of a table below the categories: a tool of a server, a memory file, an agent, a skill. Names are
/// data from outside, whatever they hold.
struct ContextMember {
    std::string table; ///< the heading as printed, such as "MCP Tools"
    std::string group; ///< the server, the source or the type; empty when the table has no such column
    std::string name;
    std::int64_t tokens = 0;
    CountPrecision precision = CountPrecision::exact;
    /// Not part of the total: only a category that is loaded on demand has the name of the table.
    bool onDemand = false;

    bool operator==(const ContextMember&) const = default;
};

/// What a `/context` report holds besides its total and its loaded categories.
struct ContextDetails {
    std::optional<std::string> model;       ///< of the "Model:" line
    std::vector<ContextMember> members;     ///< in the order of the report
    std::vector<SelfReportedSlab> deferred; ///< categories that are loaded on demand, without "(deferred)"
    std::vector<SelfReportedSlab> reserved; ///< categories that hold space free, such as "Autocompact buffer"
    std::optional<std::int64_t> free;       ///< of the "Free space" category

    bool operator==(const ContextDetails&) const = default;
};

/// Reads the details of a `/context` report in Markdown. Reads the text once, never fails; what cannot be
/// read is absent.
namespace ContextDetailsParser {

inline constexpr std::string_view toolsTable = "MCP Tools";
inline constexpr std::string_view agentsTable = "Custom Agents";
inline constexpr std::string_view memoryFilesTable = "Memory Files";
inline constexpr std::string_view skillsTable = "Skills";

[[nodiscard]] ContextDetails parse(std::string_view text);

/// A count with what it says of its precision: 447, 1.5k, ~160 or < 20; nothing for anything else.
[[nodiscard]] std::optional<PreciseCount> preciseCount(std::string_view text);

} // namespace ContextDetailsParser
} // namespace loadscope
