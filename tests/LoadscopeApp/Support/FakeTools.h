// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Readiness/OnboardingFlow.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <variant>

namespace loadscope::testing {

/// Claude Code as a test wants it: it answers, fails, or runs until it is stopped.
class FakeProbe : public ProbeRunning {
public:
    struct Hang {};
    using Answer = std::variant<ProbeResult, ProbeError, Hang>;

    void answer(Answer answer) {
        const std::lock_guard lock(mutex_);
        answer_ = std::move(answer);
    }

    ProbeResult run(const std::string&, const ProbeSettings&, StopToken stop) override {
        std::unique_lock lock(mutex_);
        if (const auto* result = std::get_if<ProbeResult>(&answer_)) return *result;
        if (const auto* error = std::get_if<ProbeError>(&answer_)) throw ProbeError(*error);
        std::condition_variable stopped;
        waitOrStop(stopped, lock, stop, [] { return false; });
        throw CancellationError();
    }

private:
    std::mutex mutex_;
    Answer answer_ = Hang{};
};

class FakeInstructionScanner : public InstructionFileScanning {
public:
    InstructionFileSet files;
    InstructionFileSet scan(const std::string&) override { return files; }
};

class FakeCodex : public CodexProbeRunning {
public:
    CodexScanOutcome outcome = CodexScanOutcome::measured({41'200, 272'000, 20.0});
    CodexItems items;
    CodexScanOutcome run(const std::string&, StopToken) override { return outcome; }
    CodexItems estimate(const std::string&, StopToken) override { return items; }
};

class MemoryCompletionStore : public OnboardingCompletionStore {
public:
    explicit MemoryCompletionStore(bool completed) : completed_(completed) {}
    [[nodiscard]] bool onboardingCompleted() const override { return completed_; }
    void setOnboardingCompleted(bool completed) override { completed_ = completed; }

private:
    bool completed_;
};

/// The scripted tools and the collaborators made of them.
struct FakeTools {
    std::shared_ptr<FakeProbe> probe = std::make_shared<FakeProbe>();
    std::shared_ptr<FakeInstructionScanner> instructions = std::make_shared<FakeInstructionScanner>();
    std::shared_ptr<FakeCodex> codex = std::make_shared<FakeCodex>();
    std::shared_ptr<ScanHistoryStore> history;
    /// What the settings of the user add to a report.
    std::shared_ptr<std::function<void(ScanReport&)>> settings =
        std::make_shared<std::function<void(ScanReport&)>>();

    [[nodiscard]] ScanModel::Collaborators collaborators() const {
        ScanModel::Collaborators all{probe, instructions, history, codex};
        all.readSettings = [settings = settings](ScanReport& report) {
            if (*settings) (*settings)(report);
        };
        return all;
    }
};

/// A measurement with categories, as a medium repository gives it.
[[nodiscard]] inline ProbeResult sampleResult(std::int64_t total = 45'000) {
    ProbeResult result;
    result.sessionID = "0b6c9f52-6f0e-4b6e-9a52-3d0c54d7e8aa";
    result.authoritativeTotal = total;
    result.selfReportedSlabs = {{"System tools", 21'100},
                                {"System prompt", 6'900},
                                {"MCP tools", 5'400},
                                {"Memory files", 7'285},
                                {"Skills", 1'500}};
    result.duration = 38.4;
    result.resolvedCLIPath = "/home/dev/.local/bin/claude";
    result.contextWindow = 200'000;
    return result;
}

} // namespace loadscope::testing
