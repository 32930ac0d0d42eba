// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/BudgetCheck.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The JSON object by which scripts read a scan: what `loadscope scan --json` prints and the window exports.
namespace loadscope::ScanReportJson {

/// One object of schema version 1, indented, without a line feed at the end. Texts that are not UTF-8 are
/// repaired. `budgets` is what it was held against. The same in every locale: the numbers of its sentences
/// are written as in English.
[[nodiscard]] std::string report(const ScanReport& report, const std::vector<BudgetResult>& budgets = {});

/// The object of an estimate of Codex alone, of the same schema version.
[[nodiscard]] std::string codexEstimate(const RepoSelection& selection, const CodexItems& items);

/// The object of a failed scan; `caseName` is the failure's name for scripts.
[[nodiscard]] std::string failure(std::string_view caseName, std::string_view headline,
                                  std::string_view detail);

/// What became of one of several folders: a report, or a failure.
struct Entry {
    RepoSelection selection;
    std::shared_ptr<const ScanReport> report{};
    std::vector<BudgetResult> budgets{};
    std::optional<ProbeError> error{};
};

/// The object of several folders: an array of the objects above, in their order; a failure names its folder,
/// too.
[[nodiscard]] std::string reports(const std::vector<Entry>& entries);

} // namespace loadscope::ScanReportJson
