// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <string>

namespace loadscope {

[[nodiscard]] TextStyle styleOf(OpinionBand band);

/// A number with its minus sign and the digits grouped, after a plus sign when it is above 0.
[[nodiscard]] std::string signedNumber(std::int64_t number);

/// A report for people: the summary, the rows, the instruction files and what there is to note. Ends with a
/// line feed.
[[nodiscard]] std::string scanText(const ScanReport& report, const Terminal& terminal);

} // namespace loadscope
