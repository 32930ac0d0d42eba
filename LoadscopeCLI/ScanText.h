// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <string>

namespace loadscope {

[[nodiscard]] TextStyle styleOf(OpinionBand band);

/// A report for people: the summary, the rows, the instruction files and what there is to note. Ends with a
/// line feed.
[[nodiscard]] std::string scanText(const ScanReport& report, const Terminal& terminal);

} // namespace loadscope
