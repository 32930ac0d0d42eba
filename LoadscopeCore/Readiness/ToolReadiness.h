// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/UIThread.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace loadscope {

/// Whether a tool is installed and signed in.
enum class ToolReadiness { checking, notInstalled, signedOut, ready, unknown };

/// For example "Sign-in needed".
[[nodiscard]] std::string label(ToolReadiness readiness);

/// With the tool that it is of, for example "Claude: Sign-in needed".
[[nodiscard]] std::string label(std::string_view tool, ToolReadiness readiness);

/// Why a Codex in this state, which blocks its scan, is not asked.
[[nodiscard]] std::string codexBlocker(ToolReadiness readiness);

[[nodiscard]] std::optional<ToolReadiness> toolReadinessFromLabel(std::string_view label);

/// The case's name as scripts see it, for example "signedOut".
[[nodiscard]] std::string_view caseName(ToolReadiness readiness);

/// A tool whose sign-in could not be verified does not block.
[[nodiscard]] bool blocksScan(ToolReadiness readiness);

/// Asks each tool's own status command. Reads and keeps no credentials.
namespace ReadinessChecker {

struct Result {
    ToolReadiness claude = ToolReadiness::checking;
    ToolReadiness codex = ToolReadiness::checking;
    bool operator==(const Result&) const = default;
};

/// Both tools, asked at the same time. Blocking, bounded by 5 seconds of search, 10 of the status command
/// and, for a Claude Code that says it is signed out, 5 of its version, with their grace periods. Claude Code
/// gets the environment that a scan with `settings` gives it. Never throws; a check that was stopped is
/// `unknown`.
[[nodiscard]] Result check(StopToken stop, const ProbeSettings& settings = {});

/// The same for a window: when no terminal started it, the user's shell is asked first for the search path,
/// for at most 5 seconds more.
[[nodiscard]] Result checkForWindow(StopToken stop);

/// Judges `claude auth status --json`.
[[nodiscard]] ToolReadiness claudeStatus(std::string_view standardOutput, std::int32_t exitCode);

/// Judges `codex login status`: its standard output, a line feed and its standard error.
[[nodiscard]] ToolReadiness codexStatus(std::string_view output, std::int32_t exitCode);

} // namespace ReadinessChecker

/// Holds the last check of both tools. Confined to the UI thread; checks run on a worker and observers are
/// told after each change. Destroying the model during a check stops it and waits for the worker.
class ReadinessModel {
public:
    using Check = std::function<ReadinessChecker::Result(StopToken stop)>;

    /// `uiThread` must outlive the model.
    explicit ReadinessModel(
        UIThread& uiThread,
        Check check = [](StopToken stop) { return ReadinessChecker::check(std::move(stop)); });
    ~ReadinessModel();
    ReadinessModel(const ReadinessModel&) = delete;
    ReadinessModel& operator=(const ReadinessModel&) = delete;

    [[nodiscard]] ToolReadiness claude() const;
    [[nodiscard]] ToolReadiness codex() const;
    [[nodiscard]] bool isChecking() const;

    /// Starts a check and returns at once; ignored while one is under way.
    void recheck();

    /// Whether a scan may start now.
    [[nodiscard]] bool permitsScan(bool includeCodex) const { return !scanBlocker(includeCodex); }
    /// Why none may start, in words, for example "Claude: Sign-in needed".
    [[nodiscard]] std::optional<std::string> scanBlocker(bool includeCodex) const;

    [[nodiscard]] Subscription observe(std::function<void()> observer);

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace loadscope
