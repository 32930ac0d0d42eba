// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace loadscope {

enum class MoveOutcome { moved, targetExists, failed };

/// Moves whatever is at `from` (a link itself, not its target) to `to` on the same file system, and never
/// replaces what is there.
[[nodiscard]] MoveOutcome moveWithoutReplacing(const std::string& from, const std::string& to);

} // namespace loadscope
