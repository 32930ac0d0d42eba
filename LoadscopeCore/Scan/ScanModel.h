// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/History/HistoryActivity.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Instructions/InstructionFileSet.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/UIThread.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scan/ScanStages.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace loadscope {

/// The state of the current or last scan.
class ScanState {
public:
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Scanning {
        bool operator==(const Scanning&) const = default;
    };

    ScanState() = default;
    [[nodiscard]] static ScanState scanning() { return ScanState(Scanning{}); }
    [[nodiscard]] static ScanState result(ScanReport report) {
        return ScanState(std::make_shared<const ScanReport>(std::move(report)));
    }
    [[nodiscard]] static ScanState failed(ProbeError error) { return ScanState(std::move(error)); }

    [[nodiscard]] bool isIdle() const { return std::holds_alternative<Idle>(value_); }
    [[nodiscard]] bool isScanning() const { return std::holds_alternative<Scanning>(value_); }
    /// The report of a scan that succeeded, else null.
    [[nodiscard]] std::shared_ptr<const ScanReport> report() const;
    /// The error of a scan that failed, else null.
    [[nodiscard]] const ProbeError* error() const { return std::get_if<ProbeError>(&value_); }

    /// "Scanning", "Scan failed", "Scan complete" or "Ready to scan".
    [[nodiscard]] std::string label() const;

    bool operator==(const ScanState& other) const;

private:
    using Value = std::variant<Idle, Scanning, std::shared_ptr<const ScanReport>, ProbeError>;
    explicit ScanState(Value value) : value_(std::move(value)) {}
    Value value_;
};

/// The one stateful object behind the window: the chosen folder, the scan under way or last made, and the
/// recorded history. Confined to the UI thread; the stages of a scan run on a worker thread, what the history
/// asks of the disk on another, and both hand their results over through `UIThread`. Observers are told after
/// each change. Destroying the model during a scan stops it, ends its child process and waits for the worker;
/// records that were to be written are written.
class ScanModel {
public:
    static constexpr const char* allowanceDisclosure =
        "Claude reads startup context without spending Claude allowance. Include Codex is off by default. "
        "Turning it on runs one real "
        "Codex session, uses Codex allowance, and sends the folder's instruction files to OpenAI.";

    using Collaborators = ScanStages::Collaborators;

    /// Begins to load the history when there is a store. `uiThread` must outlive the model.
    ScanModel(UIThread& uiThread, Collaborators collaborators);
    ~ScanModel();
    ScanModel(const ScanModel&) = delete;
    ScanModel& operator=(const ScanModel&) = delete;

    [[nodiscard]] const ScanState& state() const;
    [[nodiscard]] const std::optional<RepoSelection>& selection() const;
    /// The scan of the same folder with Claude Code that was the last one recorded when the shown report was
    /// made; nothing without a report.
    [[nodiscard]] std::shared_ptr<const RecordedScan> previousScan() const;
    /// Recorded scans in the store's order, oldest first; empty until they have been loaded.
    [[nodiscard]] const std::vector<RecordedScan>& history() const;
    [[nodiscard]] HistoryActivity historyActivity() const;
    /// The store could not delete the history when it was last asked to.
    [[nodiscard]] bool couldNotClearHistory() const;
    [[nodiscard]] bool includeCodex() const;
    [[nodiscard]] const std::string& scanStage() const;
    /// A cancel request is being honoured.
    [[nodiscard]] bool isCancelling() const;
    [[nodiscard]] bool canScan() const;
    [[nodiscard]] bool canClearHistory() const;
    /// The worker of a scan has not ended yet, or its records are still being written; true a little longer
    /// than the state is scanning.
    [[nodiscard]] bool isScanTaskRunning() const;

    /// Ignored during a scan. Otherwise the state becomes idle.
    void select(RepoSelection selection);

    /// Takes effect with the next scan.
    void setIncludeCodex(bool include);

    /// How the next scan measures Claude Code; a scan under way keeps what it was started with.
    [[nodiscard]] const ProbeSettings& probeSettings() const;
    void setProbeSettings(ProbeSettings settings);

    /// Starts a scan of the selection and returns at once. Does nothing without a selection or during a scan.
    void scan();

    /// Asks the scan to stop; further requests are harmless.
    void cancel();

    /// Asks the store for what others have recorded meanwhile, and returns at once.
    void reloadHistory();

    /// Asks the store to delete the recorded history, also what is just being recorded, and returns at once.
    /// The history becomes empty when the store has done so, and stays as it was when it cannot. Further
    /// requests meanwhile are harmless.
    void clearHistory();

    [[nodiscard]] Subscription observe(std::function<void()> observer);

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

} // namespace loadscope
