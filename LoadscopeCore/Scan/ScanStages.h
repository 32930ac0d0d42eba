// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Instructions/InstructionFileScanner.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <functional>
#include <memory>
#include <string>
#include <variant>

/// The stages of one scan, from the folder check to the report, top to bottom on the calling worker thread.
namespace loadscope::ScanStages {

inline constexpr const char* folderStage = "Checking folder access…";
inline constexpr const char* claudeStage = "Reading Claude startup context…";
inline constexpr const char* codexStage = "Measuring Codex context…";
inline constexpr const char* filesStage = "Counting local instruction files…";

struct Cancelled {};

struct Failure {
    ProbeError error;
};

/// What one scan measures, and how.
struct Request {
    RepoSelection selection;
    ProbeSettings settings;
    bool includeCodex = false;
};

/// What a scan is made with.
struct Collaborators {
    std::shared_ptr<ProbeRunning> probeRunner;
    std::shared_ptr<InstructionFileScanning> instructionScanner;
    std::shared_ptr<ScanHistoryStore> historyStore; ///< may be null: nothing is recorded then
    std::shared_ptr<CodexProbeRunning> codexRunner;
    FolderAccess::Check checkFolder = FolderAccess::check; ///< left behind by a cancel when it hangs
    std::function<void(ScanReport&)> readSettings{}; ///< adds what the user's settings tell; may be empty

    /// The real tools, the user's home folder and the user's history.
    [[nodiscard]] static Collaborators forUser();
};

using Outcome = std::variant<ScanReport, Failure, Cancelled>;

/// Runs the stages in order and announces each from the second on before it begins. Looks for a stop between
/// the stages. Never throws: an error that is neither a `ProbeError` nor a cancellation becomes
/// `UnreadableOutput` with its description.
[[nodiscard]] Outcome perform(const Request& request, const Collaborators& collaborators,
                              const std::function<void(std::string stage)>& announce, const StopToken& stop);

} // namespace loadscope::ScanStages
