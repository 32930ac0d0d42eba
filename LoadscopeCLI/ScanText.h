// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <cstddef>
#include <optional>
#include <string>

namespace loadscope {

[[nodiscard]] TextStyle styleOf(OpinionBand band);

struct ScanTextOptions {
    bool details = false;             ///< the members of the categories, too
    std::optional<std::size_t> top{}; ///< of each group no more members than that
};

/// A report for people: the summary, the rows, the instruction files and what there is to note. Ends with a
/// line feed.
[[nodiscard]] std::string scanText(const ScanReport& report, const ScanTextOptions& options,
                                   const Terminal& terminal);

} // namespace loadscope
