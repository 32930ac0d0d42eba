// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scan/ScanBatch.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace loadscope {

/// How the command scans.
struct ScanRequest {
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
[[nodiscard]] ScanOutcome runScan(const std::string& folder, const ScanRequest& request, Terminal& errors);

/// What became of several folders.
struct BatchResult {
    std::vector<ScanBatch::Item> items;
    bool wasInterrupted = false; ///< the scans that had not ended were stopped
};

/// Which folders to scan, found out on a worker thread.
using FolderList = std::function<std::vector<RepoSelection>(const StopToken& stop)>;

/// The same for several folders, `jobs` of them at a time, each recorded when it has ended. Why no scan could
/// begin, if so; without a folder the result has no items.
[[nodiscard]] std::variant<BatchResult, ProbeError, ScanInterrupted>
runScans(const FolderList& folders, std::size_t jobs, const ScanRequest& request, Terminal& errors);

} // namespace loadscope
