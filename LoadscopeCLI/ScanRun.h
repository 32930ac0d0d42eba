// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace loadscope {

/// What one scan of the command needs to know.
struct ScanRequest {
    std::string folder;       ///< absolute
    ProbeSettings settings{}; ///< whether the sign-in is verified is found out by the check
    bool includeCodex = false;
    bool records = true;
    bool checksReadiness = true;
};

/// A scan was interrupted by a signal; its child has ended and nothing was recorded.
struct ScanInterrupted {};

using ScanOutcome = std::variant<std::shared_ptr<const ScanReport>, ProbeError, ScanInterrupted>;

/// Checks the folder and the tools, measures and records, with the stages shown on `errors`. A Codex that is
/// not installed or not signed in is left out with its reason. Blocks until the scan has ended or a signal
/// has stopped it.
[[nodiscard]] ScanOutcome runScan(const ScanRequest& request, Terminal& errors);

} // namespace loadscope
