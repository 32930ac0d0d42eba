// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanStages.h"

#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Scan/FolderAccess.h"

namespace loadscope::ScanStages {
namespace {

void checkForCancellation(const std::stop_token& stop) {
    if (stop.stop_requested()) throw CancellationError();
}

ScanReport measure(const RepoSelection& selection, bool includeCodex,
                   const ScanModel::Collaborators& collaborators,
                   const std::function<void(std::string)>& announce, const std::stop_token& stop) {
    checkForCancellation(stop);
    announce(claudeStage);
    const ProbeResult probe = collaborators.probeRunner->run(selection.path, stop);
    checkForCancellation(stop);

    CodexScanOutcome codex = CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason);
    if (includeCodex) {
        announce(codexStage);
        codex = collaborators.codexRunner->run(selection.path, stop);
        checkForCancellation(stop);
    }

    announce(filesStage);
    const InstructionFileSet files = collaborators.instructionScanner->scan(selection.path);
    checkForCancellation(stop);
    return ScanReportBuilder::build(selection, probe, files, codex);
}

} // namespace

Outcome perform(const RepoSelection& selection, bool includeCodex,
                const ScanModel::Collaborators& collaborators,
                const std::function<void(std::string)>& announce, const std::stop_token& stop) {
    try {
        if (const auto error = FolderAccess::check(selection.path)) return Failure{*error};
        return measure(selection, includeCodex, collaborators, announce, stop);
    } catch (const CancellationError&) {
        return Cancelled{};
    } catch (const ProbeError& error) {
        return Failure{error};
    } catch (const std::exception& error) {
        return Failure{ProbeError::UnreadableOutput{error.what()}};
    }
}

} // namespace loadscope::ScanStages
