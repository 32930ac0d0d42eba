// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <cstddef>
#include <optional>
#include <string>

namespace loadscope {

/// What `loadscope scan --details` prints below the categories: the members of each, what loads on demand and
/// the largest parts that can be changed. With `top` no more members of a group than that.
[[nodiscard]] std::string detailsText(const ScanReport& report, std::optional<std::size_t> top,
                                      const Terminal& terminal);

} // namespace loadscope
