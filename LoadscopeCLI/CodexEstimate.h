// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

#include <string>

namespace loadscope {

/// Asks Codex, without a session, what it would load in the folder and prints the estimate, as text or as one
/// JSON object. Records nothing. Blocks until the answer is there or a signal has ended the tool.
[[nodiscard]] ExitCode estimateCodex(const std::string& folder, bool json);

} // namespace loadscope
