// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/UIThread.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scan/ScanStages.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// Scans of several folders, a few at a time, each as a model of its own would scan it and recorded when it
/// has ended: the failure of one stops no other. Confined to the UI thread; observers are told after each
/// change. Destroying it during a run stops all scans at once and waits for them.
class ScanBatch {
public:
    enum class State {
        waiting,
        running,
        stopping, ///< a cancel request is being honoured
        done,
        failed,
        cancelled,
    };

    struct Item {
        RepoSelection selection;
        State state = State::waiting;
        std::string stage{};                        ///< while running
        std::shared_ptr<const ScanReport> report{}; ///< when done
        std::optional<ProbeError> error{};          ///< when failed

        [[nodiscard]] bool hasEnded() const {
            return state == State::done || state == State::failed || state == State::cancelled;
        }
    };

    /// Half of the machine's cores, at least one: a tool starts servers and uses more than one itself.
    [[nodiscard]] static std::size_t defaultJobs();

    /// `collaborators` is asked once for each scan; `uiThread` must outlive the batch. At least one scan runs
    /// at a time.
    ScanBatch(UIThread& uiThread, std::function<ScanStages::Collaborators()> collaborators,
              std::size_t jobs = defaultJobs());
    ~ScanBatch();
    ScanBatch(const ScanBatch&) = delete;
    ScanBatch& operator=(const ScanBatch&) = delete;

    /// Forgets an earlier run and begins with these folders, in their order; a folder that is named twice is
    /// scanned once. Ignored during a run.
    void start(const std::vector<RepoSelection>& folders, const ProbeSettings& settings, bool includeCodex);

    /// In the order of the folders.
    [[nodiscard]] const std::vector<Item>& items() const;
    [[nodiscard]] std::size_t endedCount() const;
    /// How many run at a time.
    [[nodiscard]] std::size_t jobs() const;
    /// Until the last scan has ended and is recorded.
    [[nodiscard]] bool isRunning() const;

    /// Asks the scan of one folder to stop, or takes it out of those that wait; harmless when it has ended.
    void cancel(std::size_t index);
    void cancelAll();

    [[nodiscard]] Subscription observe(std::function<void()> observer);

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

} // namespace loadscope
