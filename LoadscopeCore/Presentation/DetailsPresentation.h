// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/CategoryMembers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The sentences that say what a category is made of. Pure functions; numbers are written in the user's
/// locale. Names come from outside and stand in the texts as they are: whoever shows one makes it visible.
namespace DetailsPresentation {

inline constexpr const char* copyButton = "Copy Details";
inline constexpr const char* copied = "The details are on the clipboard.";
inline constexpr const char* notItemised = "not itemised by the tool";
inline constexpr const char* reported = "reported by Claude Code";
inline constexpr const char* estimatedBySize = "estimated from its size";
inline constexpr const char* loadedElsewhere = "loaded, not found here";
inline constexpr const char* foundNotListed = "found, not listed by the tool";
inline constexpr const char* estimateDifference =
    "Claude Code's counts of the files found, less their estimates";
inline constexpr const char* notCounted = "not counted";
inline constexpr const char* onDemand = "on demand, not counted";
inline constexpr const char* withoutCategory = "listed without a category";
inline constexpr const char* noDetails = "Claude Code's report lists nothing below its categories.";
inline constexpr const char* mayHoldOnDemandNote =
    "The tool lists these together with what loads on demand and does not tell which is which.";

/// 447, 1.5k, ~160 or < 20.
[[nodiscard]] std::string tokens(const PreciseCount& count);

/// The same in words: "447 tokens", "1,500 tokens, rounded", "about 160 tokens", "fewer than 20 tokens".
[[nodiscard]] std::string spokenTokens(const PreciseCount& count);

/// The part of the total: "15.7%".
[[nodiscard]] std::string share(const ScanReport& report, std::int64_t tokens);

/// "On demand, not counted: 71,800 (MCP tools, system tools)"
[[nodiscard]] std::optional<std::string> onDemandLine(const ScanReport& report);

/// "Reserved: 33,000 autocompact buffer · Free: 134,800"
[[nodiscard]] std::optional<std::string> spaceLine(const ScanReport& report);

/// "3 servers, 41 tools"; empty for a list without members.
[[nodiscard]] std::string contents(const MemberList& list);

/// What stands in the columns of a line below a row.
struct Line {
    std::string name;
    std::string tokens;
    std::string share; ///< "15.7%"
    std::string source;
    std::string spoken; ///< the whole line for assistive technologies

    bool operator==(const Line&) const = default;
};

/// A group or a member of `list`. What is no part of the total has no share.
[[nodiscard]] Line line(const ScanReport& report, const MemberList& list, const MemberGroup& group);
[[nodiscard]] Line line(const ScanReport& report, const MemberList& list, const CategoryMember& member);

/// The lines below the groups: the difference of the estimates, what is not itemised.
[[nodiscard]] std::vector<Line> restLines(const ScanReport& report, const MemberList& list);

/// What stands for the members of a group behind the first `shown`: "13 more".
[[nodiscard]] Line moreLine(const ScanReport& report, const MemberList& list, const MemberGroup& group,
                            std::size_t shown);

/// The tokens of a row's groups, then of the lines below them: what its part of the outer ring shows. None is
/// negative.
[[nodiscard]] std::vector<std::int64_t> ringTokens(const MemberList& list);

/// What "Copy Details" puts on the clipboard: every member of the tool's report in a table with tabs between
/// the columns, in the order of the report.
[[nodiscard]] std::string copyableDetails(const ScanReport& report);

} // namespace DetailsPresentation
} // namespace loadscope
