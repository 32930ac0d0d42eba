// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanRun.h"

#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Readiness.h"
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/Scan/ScanModel.h"

namespace loadscope {
namespace {

/// Why the tools do not permit the scan, if so.
std::optional<ScanOutcome> blocker(const ScanRequest& request, const ReadinessChecker::Result& readiness) {
    if (readiness.claude == ToolReadiness::notInstalled)
        return ProbeError(ProbeError::CLINotFound{ClaudeCLILocator::searchedPaths({}, UserFolders::home())});
    if (blocksScan(readiness.claude)) return ProbeError(ProbeError::NotAuthenticated{});
    if (request.includeCodex && blocksScan(readiness.codex)) return CodexBlocked{readiness.codex};
    return std::nullopt;
}

ScanOutcome measure(const ScanRequest& request, LoopUIThread& loop, Terminal& errors) {
    auto collaborators = ScanModel::Collaborators::forUser();
    if (!request.records) collaborators.historyStore = nullptr;
    ScanModel model(loop, std::move(collaborators));
    const auto subscription = model.observe([&] {
        if (model.state().isScanning()) errors.showProgress(model.scanStage());
    });
    model.select(RepoSelection(request.folder));
    model.setIncludeCodex(request.includeCodex);
    model.scan();
    loop.run([&] { return !model.state().isScanning() && !model.isScanTaskRunning(); },
             [&] { model.cancel(); });
    errors.clearProgress();
    if (auto report = model.state().report()) return report;
    if (const ProbeError* error = model.state().error()) return *error;
    return ScanInterrupted{};
}

} // namespace

ScanOutcome runScan(const ScanRequest& request, Terminal& errors) {
    LoopUIThread loop;
    // A mistyped folder is told at once, before any tool is asked.
    std::optional<ProbeError> unreadable;
    if (!runOnWorker(loop, [&](const std::stop_token&) { unreadable = FolderAccess::check(request.folder); }))
        return ScanInterrupted{};
    if (unreadable) return *unreadable;
    if (request.checksReadiness) {
        const auto readiness = checkReadiness(loop, errors);
        if (!readiness) return ScanInterrupted{};
        if (auto outcome = blocker(request, *readiness)) return *outcome;
    }
    return measure(request, loop, errors);
}

} // namespace loadscope
