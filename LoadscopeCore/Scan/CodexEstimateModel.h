// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/UIThread.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace loadscope {

/// The estimate of what Codex would load in one folder, made without a session when a person asks for it.
/// Confined to the UI thread; Codex is asked on a worker thread and observers are told after each change.
/// Nothing is recorded. Destroying the model meanwhile ends the tool and waits for the worker.
class CodexEstimateModel {
public:
    /// `uiThread` must outlive the model.
    CodexEstimateModel(UIThread& uiThread, std::shared_ptr<CodexProbeRunning> codex);
    ~CodexEstimateModel();
    CodexEstimateModel(const CodexEstimateModel&) = delete;
    CodexEstimateModel& operator=(const CodexEstimateModel&) = delete;

    [[nodiscard]] bool isRunning() const;
    /// A cancel request is being honoured.
    [[nodiscard]] bool isCancelling() const;
    /// The last answer, or the reason why there is none; absent before it and while the next one is awaited.
    [[nodiscard]] const std::optional<CodexItems>& items() const;
    /// The folder that the answer is about, or that is being asked about.
    [[nodiscard]] const std::string& repository() const;

    /// Asks and returns at once; ignored while an answer is awaited.
    void estimate(const std::string& repository);

    /// Ends the question under way, which then has no answer; further requests are harmless.
    void cancel();

    /// Forgets the answer, and ends the question under way: another folder was chosen, say.
    void clear();

    [[nodiscard]] Subscription observe(std::function<void()> observer);

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

} // namespace loadscope
