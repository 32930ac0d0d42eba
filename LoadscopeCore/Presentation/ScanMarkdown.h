// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/BudgetCheck.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <string>
#include <vector>

/// A scan for a comment below a pull request, or for the summary of a job.
namespace loadscope::ScanMarkdown {

/// One heading, the total, what changed since `baseline` (may be null), the budgets, a table of the
/// categories, and folded what is inside. The same in every locale.
[[nodiscard]] std::string report(const ScanReport& report, const std::vector<BudgetResult>& budgets,
                                 const ScanComparison* baseline);

} // namespace loadscope::ScanMarkdown
