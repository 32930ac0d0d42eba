// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <string>

namespace loadscope {

/// A comparison for people: the totals, what makes them unlike, and a table of what changed.
[[nodiscard]] std::string diffText(const ScanComparison& comparison, const Terminal& terminal);

} // namespace loadscope
