// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <string>

/// A scan as a table for spreadsheets.
namespace loadscope::ScanCsv {

/// A line for the total, each row of the breakdown, each member and each instruction file: what it is, its
/// table or tier, its group, its name, its tokens as a plain number, how closely that is known, and whether
/// it is part of the total. The same in every locale.
[[nodiscard]] std::string report(const ScanReport& report);

} // namespace loadscope::ScanCsv
