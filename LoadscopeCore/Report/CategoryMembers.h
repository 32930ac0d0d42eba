// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// Who knows a member of a category.
enum class MemberOrigin {
    listed,          ///< a line of the tool's report
    loadedElsewhere, ///< an instruction file of the tool's report that was not found here
    found,           ///< an instruction file found here
    foundNotListed,  ///< an instruction file found here that the tool's report does not list
};

/// One line below a category.
struct CategoryMember {
    std::string name;
    std::int64_t tokens = 0; ///< what it adds to its row: the tool's count, or the estimate of a found file
    CountPrecision precision = CountPrecision::exact;
    MemberOrigin origin = MemberOrigin::listed;
    std::optional<PreciseCount> reported{}; ///< of a found file: the tool's own count, beside the estimate

    [[nodiscard]] PreciseCount count() const { return {tokens, precision}; }
    bool operator==(const CategoryMember&) const = default;
};

/// The members of one server, source or type, by tokens descending, then name.
struct MemberGroup {
    std::string name; ///< empty when the members have no group
    std::int64_t tokens = 0;
    CountPrecision precision = CountPrecision::exact;
    std::vector<CategoryMember> members{};

    [[nodiscard]] PreciseCount count() const { return {tokens, precision}; }
    bool operator==(const MemberGroup&) const = default;
};

/// What a row, or a table without one, opens to. The groups stand by tokens descending, then name.
struct MemberList {
    std::string table; ///< the heading of the tool's table; empty for found files
    std::vector<MemberGroup> groups{};
    /// What the tool counts for the found files less what their sizes were estimated to, where the row holds
    /// that difference.
    std::optional<PreciseCount> estimateDifference{};
    /// What the members do not explain of the category's own number; absent when they explain all of it.
    std::optional<PreciseCount> notItemised{};
    /// The table also lists what is loaded on demand only, and does not tell which.
    bool mayHoldOnDemand = false;
    bool isInTotal = true; ///< else the members are no part of it, or it is not told

    [[nodiscard]] bool isEmpty() const { return groups.empty() && !estimateDifference && !notItemised; }
    /// False when the members stand below their row without a group between.
    [[nodiscard]] bool isGrouped() const {
        return groups.size() > 1 || (!groups.empty() && !groups.front().name.empty());
    }
    [[nodiscard]] std::size_t memberCount() const;
    [[nodiscard]] PreciseCount sum() const;
    bool operator==(const MemberList&) const = default;
};

/// A report's members where its reader looks for them: below the rows, below what is loaded on demand, or
/// below neither. Made once for a report. The numbers of members never replace that of their category.
class CategoryMembers {
public:
    struct OnDemand {
        std::string category; ///< as printed, without "(deferred)"
        std::int64_t tokens = 0;
        MemberList members{};
    };

    explicit CategoryMembers(const ScanReport& report);

    /// One list per row of the report, in their order; empty for a row that does not open.
    [[nodiscard]] const std::vector<MemberList>& rows() const { return rows_; }

    [[nodiscard]] const std::vector<OnDemand>& onDemand() const { return onDemand_; }

    /// Tables of whose name the report has no category: it does not tell whether they are in its total.
    [[nodiscard]] const std::vector<MemberList>& withoutCategory() const { return withoutCategory_; }

private:
    std::vector<MemberList> rows_;
    std::vector<OnDemand> onDemand_;
    std::vector<MemberList> withoutCategory_;
};

} // namespace loadscope
