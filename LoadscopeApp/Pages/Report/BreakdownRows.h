// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/TableRow.h"
#include "LoadscopeCore/Report/CategoryMembers.h"

#include <cstddef>
#include <string>
#include <vector>

namespace loadscope {

/// The rows of a report's tables of categories: each category, below it its groups, below those their
/// members.
struct BreakdownRows {
    std::vector<TableRow> rows;
    std::vector<std::size_t> categories; ///< of each row
    std::vector<std::size_t> tops;       ///< the row of each category
    std::vector<std::string> paths;      ///< the file of each row; empty for a row that is none

    /// Of what is in the total.
    [[nodiscard]] static BreakdownRows loaded(const ScanReport& report, const CategoryMembers& members);

    /// Of what the tool lists besides: what it loads on demand, and tables that none of its categories names.
    /// Empty when it lists nothing.
    [[nodiscard]] static BreakdownRows besides(const ScanReport& report, const CategoryMembers& members);

private:
    void add(const ScanReport& report, const MemberList& list, std::size_t category);
};

} // namespace loadscope
