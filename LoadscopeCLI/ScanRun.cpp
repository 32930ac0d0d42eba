// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanRun.h"

#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Readiness.h"
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/Scan/ScanModel.h"
#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

namespace loadscope {
namespace {

/// Why Claude Code does not permit the scan, if so.
std::optional<ProbeError> blocker(ToolReadiness claude, const ProbeSettings& settings) {
    if (claude == ToolReadiness::notInstalled)
        return ProbeError(ProbeError::CLINotFound{ClaudeCLILocator::searchedForUser()});
    if (!blocksScan(claude)) return std::nullopt;
    ProbeError::NotAuthenticated signedOut;
    if (!settings.keepsEnvironment)
        signedOut.removedVariables = ProbeEnvironment::removedSignInVariables(UserFolders::environment());
    return ProbeError(signedOut);
}

/// Stands in for a Codex of which it is known already that it would not answer.
class UnavailableCodex : public CodexProbeRunning {
public:
    explicit UnavailableCodex(ToolReadiness readiness) : readiness_(readiness) {}

    CodexScanOutcome run(const std::string& /*repository*/, std::stop_token /*stop*/) override {
        return CodexScanOutcome::unavailable(codexBlocker(readiness_));
    }

    CodexItems estimate(const std::string& /*repository*/, std::stop_token /*stop*/) override {
        return CodexItems::unavailable(codexBlocker(readiness_));
    }

private:
    ToolReadiness readiness_;
};

ScanOutcome measure(const ScanRequest& request, const ReadinessChecker::Result& readiness, LoopUIThread& loop,
                    Terminal& errors) {
    auto collaborators = ScanModel::Collaborators::forUser();
    if (!request.records) collaborators.historyStore = nullptr;
    if (blocksScan(readiness.codex))
        collaborators.codexRunner = std::make_shared<UnavailableCodex>(readiness.codex);
    ScanModel model(loop, std::move(collaborators));
    const auto subscription = model.observe([&] {
        if (model.state().isScanning()) errors.showProgress(model.scanStage());
    });
    model.select(RepoSelection(request.folder));
    model.setIncludeCodex(request.includeCodex);
    ProbeSettings settings = request.settings;
    settings.signInVerified = readiness.claude == ToolReadiness::ready;
    model.setProbeSettings(std::move(settings));
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
    const auto check = [&](const std::stop_token& stop) {
        unreadable = FolderAccess::checkDetached(request.folder, stop);
    };
    if (!runOnWorker(loop, check)) return ScanInterrupted{};
    if (unreadable) return *unreadable;
    ReadinessChecker::Result readiness{ToolReadiness::unknown, ToolReadiness::unknown};
    if (request.checksReadiness) {
        const auto answer = checkReadiness(loop, errors, request.settings);
        if (!answer) return ScanInterrupted{};
        if (const auto error = blocker(answer->claude, request.settings)) return *error;
        readiness = *answer;
    }
    return measure(request, readiness, loop, errors);
}

} // namespace loadscope
