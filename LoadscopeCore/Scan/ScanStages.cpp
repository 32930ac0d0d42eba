// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanStages.h"

#include "LoadscopeCore/ClaudeProbe/ConfiguredServers.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Report/LargestChangeable.h"

namespace loadscope::ScanStages {
namespace {

void checkForCancellation(const StopToken& stop) {
    if (stop.isStopRequested()) throw CancellationError();
}

ScanReport measure(const Request& request, const Collaborators& collaborators,
                   const std::function<void(std::string)>& announce, const StopToken& stop) {
    checkForCancellation(stop);
    announce(claudeStage);
    const std::string& repository = request.selection.path;
    const ProbeResult probe = collaborators.probeRunner->run(repository, request.settings, stop);
    checkForCancellation(stop);

    CodexScanOutcome codex = CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason);
    if (request.includeCodex) {
        announce(codexStage);
        codex = collaborators.codexRunner->run(repository, stop);
        checkForCancellation(stop);
    }

    announce(filesStage);
    const InstructionFileSet files = collaborators.instructionScanner->scan(repository);
    checkForCancellation(stop);
    ScanReport report = ScanReportBuilder::build(request.selection, probe, files, codex, FilePath::resolved);
    if (collaborators.readSettings) collaborators.readSettings(report);
    checkForCancellation(stop);
    return report;
}

} // namespace

Outcome perform(const Request& request, const Collaborators& collaborators,
                const std::function<void(std::string)>& announce, const StopToken& stop) {
    try {
        if (const auto error =
                FolderAccess::checkDetached(request.selection.path, stop, collaborators.checkFolder))
            return Failure{*error};
        return measure(request, collaborators, announce, stop);
    } catch (const CancellationError&) {
        return Cancelled{};
    } catch (const ProbeError& error) {
        return Failure{error};
    } catch (const std::exception& error) {
        return Failure{ProbeError::UnreadableOutput{error.what()}};
    }
}

Collaborators Collaborators::forUser() {
    const std::string home = UserFolders::home();
    const std::string config = TranscriptLocator::configFolder(home, UserFolders::environment());
    return {
        .probeRunner = std::make_shared<ProbeRunner>(ProbeRunner::forUser()),
        .instructionScanner = std::make_shared<InstructionFileScanner>(home, config),
        .historyStore = std::make_shared<ScanHistoryStore>(ScanHistoryStore::defaultDirectory()),
        .codexRunner = std::make_shared<CodexProbe>(),
        .readSettings =
            [home, config](ScanReport& report) {
                LargestChangeable::addTo(report, ConfiguredServers::read(report.repositoryPath, home, config),
                                         config);
                report.codexInstructions =
                    CodexInstructions::find(report.repositoryPath, CodexConfiguration::forUser());
            },
    };
}

} // namespace loadscope::ScanStages
