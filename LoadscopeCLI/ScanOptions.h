// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/BudgetOptions.h"
#include "LoadscopeCLI/OutputFormat.h"
#include "LoadscopeCLI/ScanRun.h"
#include "LoadscopeCLI/ScanText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// What `scan` was asked for.
struct ScanOptions {
    std::vector<std::string> folders; ///< empty: the current one
    bool scansAll = false;            ///< every recorded folder that still exists
    std::size_t jobs = ScanBatch::defaultJobs();
    bool estimatesCodex = false;
    OutputFormat format = OutputFormat::text;
    BudgetOptions budget;
    std::string baseline;
    ScanRequest request;
    ScanTextOptions text;
    std::optional<std::int64_t> maxTokens;

    [[nodiscard]] bool isSeveral() const { return scansAll || folders.size() > 1; }
};

/// The budget of a folder under the options; says what is wrong with it and gives the code with which the
/// command ends.
[[nodiscard]] std::variant<Budget, ExitCode> budgetFor(const ScanOptions& options, const std::string& folder,
                                                       Terminal& errors);

/// Whether a total is above --max-tokens, which is said then. `name` is the folder's among several, else
/// empty.
[[nodiscard]] bool isAboveMaximum(const ScanOptions& options, const ScanReport& report,
                                  const std::string& name, Terminal& errors);

} // namespace loadscope
