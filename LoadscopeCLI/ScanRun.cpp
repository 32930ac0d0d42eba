// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanRun.h"

#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Readiness.h"
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/Scan/ScanBatchTexts.h"
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

    CodexScanOutcome run(const std::string& /*repository*/, StopToken /*stop*/) override {
        return CodexScanOutcome::unavailable(codexBlocker(readiness_));
    }

    CodexItems estimate(const std::string& /*repository*/, StopToken /*stop*/) override {
        return CodexItems::unavailable(codexBlocker(readiness_));
    }

private:
    ToolReadiness readiness_;
};

/// What the tools say of themselves before a scan; why there can be none, or nothing when a signal came.
std::variant<ReadinessChecker::Result, ProbeError, ScanInterrupted>
askTools(const ScanRequest& request, LoopUIThread& loop, Terminal& errors) {
    if (!request.checksReadiness)
        return ReadinessChecker::Result{ToolReadiness::unknown, ToolReadiness::unknown};
    const auto answer = checkReadiness(loop, errors, request.settings);
    if (!answer) return ScanInterrupted{};
    if (auto error = blocker(answer->claude, request.settings)) return *std::move(error);
    return *answer;
}

ScanModel::Collaborators collaborators(const ScanRequest& request,
                                       const ReadinessChecker::Result& readiness) {
    auto all = ScanModel::Collaborators::forUser();
    if (!request.records) all.historyStore = nullptr;
    if (blocksScan(readiness.codex)) all.codexRunner = std::make_shared<UnavailableCodex>(readiness.codex);
    return all;
}

ProbeSettings probeSettings(const ScanRequest& request, const ReadinessChecker::Result& readiness) {
    ProbeSettings settings = request.settings;
    settings.signInVerified = readiness.claude == ToolReadiness::ready;
    return settings;
}

ScanOutcome measure(const std::string& folder, const ScanRequest& request,
                    const ReadinessChecker::Result& readiness, LoopUIThread& loop, Terminal& errors) {
    ScanModel model(loop, collaborators(request, readiness));
    const auto subscription = model.observe([&] {
        if (model.state().isScanning()) errors.showProgress(model.scanStage());
    });
    model.select(RepoSelection(folder));
    model.setIncludeCodex(request.includeCodex);
    model.setProbeSettings(probeSettings(request, readiness));
    model.scan();
    loop.run([&] { return !model.state().isScanning() && !model.isScanTaskRunning(); },
             [&] { model.cancel(); });
    errors.clearProgress();
    if (auto report = model.state().report()) return report;
    if (const ProbeError* error = model.state().error()) return *error;
    return ScanInterrupted{};
}

/// "1 of 3 folders done · app: Reading Claude startup context…", as much of it as one line has room for.
std::string progressLine(const ScanBatch& batch, const Terminal& terminal) {
    std::string line = ScanBatchTexts::progress(batch.items());
    for (const ScanBatch::Item& item : batch.items())
        if (!item.stage.empty())
            line += " · " + Text::visible(item.selection.displayName) + ": " + ScanBatchTexts::state(item);
    const std::size_t width = terminal.width().value_or(line.size());
    while (Text::terminalWidth(line) > width)
        line = Text::prefix(line, Text::characterCount(line) - 1);
    return line;
}

} // namespace

ScanOutcome runScan(const std::string& folder, const ScanRequest& request, Terminal& errors) {
    LoopUIThread loop;
    // A mistyped folder is told at once, before any tool is asked.
    std::optional<ProbeError> unreadable;
    const auto check = [&](const StopToken& stop) { unreadable = FolderAccess::checkDetached(folder, stop); };
    if (!runOnWorker(loop, check)) return ScanInterrupted{};
    if (unreadable) return *unreadable;
    const auto tools = askTools(request, loop, errors);
    if (const auto* error = std::get_if<ProbeError>(&tools)) return *error;
    const auto* readiness = std::get_if<ReadinessChecker::Result>(&tools);
    if (readiness == nullptr) return ScanInterrupted{};
    return measure(folder, request, *readiness, loop, errors);
}

std::variant<BatchResult, ProbeError, ScanInterrupted>
runScans(const FolderList& folders, std::size_t jobs, const ScanRequest& request, Terminal& errors) {
    LoopUIThread loop;
    std::vector<RepoSelection> selections;
    if (!runOnWorker(loop, [&](const StopToken& stop) { selections = folders(stop); }))
        return ScanInterrupted{};
    if (selections.empty()) return BatchResult{};
    const auto tools = askTools(request, loop, errors);
    if (const auto* error = std::get_if<ProbeError>(&tools)) return *error;
    const auto* readiness = std::get_if<ReadinessChecker::Result>(&tools);
    if (readiness == nullptr) return ScanInterrupted{};
    ScanBatch batch(
        loop, [&] { return collaborators(request, *readiness); }, jobs);
    const auto subscription = batch.observe([&] { errors.showProgress(progressLine(batch, errors)); });
    batch.start(selections, probeSettings(request, *readiness), request.includeCodex);
    loop.run([&] { return !batch.isRunning(); }, [&] { batch.cancelAll(); });
    errors.clearProgress();
    return BatchResult{batch.items(), loop.wasInterrupted()};
}

} // namespace loadscope
