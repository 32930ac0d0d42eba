// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/ClaudeProbe/MeasurementConditions.h"
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"
#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/ToolRun/ToolRun.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Where an authoritative total came from, in falling order of trust.
enum class TotalSource { contextCommand, transcript, cliUsage };

[[nodiscard]] std::string rawValue(TotalSource source);
[[nodiscard]] std::string label(TotalSource source);
[[nodiscard]] std::optional<TotalSource> totalSourceFromRawValue(std::string_view rawValue);

/// A successful measurement of Claude Code. `duration` in seconds covers the tool's run and the reading of
/// its output.
struct ProbeResult {
    std::string sessionID;
    std::int64_t authoritativeTotal = 0;
    TotalSource totalSource = TotalSource::contextCommand;
    std::vector<SelfReportedSlab> selfReportedSlabs;
    double duration = 0;
    std::string resolvedCLIPath;
    std::optional<std::int64_t> contextWindow;
    MeasurementConditions conditions{};
    ContextDetails details{}; ///< of the report that `selfReportedSlabs` are of

    bool operator==(const ProbeResult&) const = default;
};

/// Measures the startup context of Claude Code for one folder. Blocking; call it on a worker thread.
class ProbeRunning {
public:
    virtual ~ProbeRunning() = default;

    /// Throws `ProbeError`, or `CancellationError` when `stop` was requested meanwhile.
    virtual ProbeResult run(const std::string& repository, const ProbeSettings& settings, StopToken stop) = 0;
};

/// The probe over the real tool: one headless session that asks only for the `/context` report; its total,
/// else that of the report in the session's transcript, where older versions put it, else the first usage of
/// the transcript, else the usage block of a session of exactly one turn. A report that the tool could not
/// count, or estimated, is refused. Holds settings only; any number of runs may be under way at once.
class ProbeRunner : public ProbeRunning {
public:
    static constexpr const char* probePrompt = "/context";

    using Execution = ToolRun::Execution;
    using Limits = ToolRun::Limits;

    std::optional<std::string> cliOverride;
    std::string projectsRoot;
    int transcriptRetries = 12;
    double transcriptRetryDelay = 0.4; ///< seconds
    Limits limits;
    /// Whether the computer could reach the tool's counting service.
    std::function<bool()> hasNetworkRoute;

    /// The settings that the application uses, for the user's home folder and environment.
    [[nodiscard]] static ProbeRunner forUser();

    ProbeResult run(const std::string& repository, const ProbeSettings& settings, StopToken stop) override;

    /// One child of a tool within bounds, as `ToolRun::execute`.
    [[nodiscard]] static Execution execute(const std::string& cli, const std::vector<std::string>& arguments,
                                           const std::string& repository, ProbeEnvironment::Tool tool,
                                           const Limits& limits,
                                           const ProbeEnvironment::Options& environment = {},
                                           const ToolRun::OutputWatcher& watcher = {});

    [[nodiscard]] static std::vector<std::string>
    claudeArguments(const std::string& prompt, const std::string& model = ProbeSettings::defaultModel);

    /// "num_turns" of the result object, when it is an integral number.
    [[nodiscard]] static std::optional<std::int64_t> reportedTurns(std::string_view standardOutput);

    /// What a session's transcript tells: the report, else the usage.
    struct TranscriptAnswer {
        std::optional<TranscriptReader::Report> report; ///< in Markdown, with a total
        std::optional<ProbeUsage> usage;
        [[nodiscard]] bool isEmpty() const { return !report && !usage; }
    };

    /// Waits for the session's transcript to appear, for at most so many attempts; empty when it does not or
    /// `stop` was requested.
    [[nodiscard]] TranscriptAnswer transcriptAnswer(const std::string& sessionID, int attempts,
                                                    const StopToken& stop) const;

    /// Waits for the session's transcript to appear, within the retries set; nothing when it does not or
    /// `stop` was requested.
    [[nodiscard]] std::optional<ProbeUsage> transcriptUsage(const std::string& sessionID,
                                                            const StopToken& stop) const;

private:
    class Measurement;
};

} // namespace loadscope
