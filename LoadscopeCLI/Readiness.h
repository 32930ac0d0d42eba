// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include <functional>
#include <optional>

namespace loadscope {

/// Runs blocking work on a worker thread while the loop stays responsive; a signal stops the work. Blocks
/// until the worker has ended. Returns whether it ran to its end without a signal.
bool runOnWorker(LoopUIThread& loop, const std::function<void(StopToken)>& work);

/// Asks both tools, showing the progress on `errors`; Claude Code in the environment that a scan with
/// `settings` would give it. Nothing when a signal came.
[[nodiscard]] std::optional<ReadinessChecker::Result> checkReadiness(LoopUIThread& loop, Terminal& errors,
                                                                     const ProbeSettings& settings = {});

} // namespace loadscope
