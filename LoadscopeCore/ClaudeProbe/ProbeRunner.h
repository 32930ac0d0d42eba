// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "LoadscopeCore/ClaudeProbe/MeasurementConditions.h"
#include "LoadscopeCore/ClaudeProbe/ProbeEnvironment.h"
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"
#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
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

    bool operator==(const ProbeResult&) const = default;
};

/// Measures the startup context of Claude Code for one folder. Blocking; call it on a worker thread.
class ProbeRunning {
public:
    virtual ~ProbeRunning() = default;

    /// Throws `ProbeError`, or `CancellationError` when `stop` was requested meanwhile.
    virtual ProbeResult run(const std::string& repository, const ProbeSettings& settings,
                            std::stop_token stop) = 0;
};

/// The probe over the real tool: one headless session that asks only for the `/context` report; its total,
/// else that of the report in the session's transcript, where older versions put it, else the first usage of
/// the transcript, else the usage block of a session of exactly one turn. A report that the tool could not
/// count, or estimated, is refused. Holds settings only; any number of runs may be under way at once.
class ProbeRunner : public ProbeRunning {
public:
    static constexpr double defaultTimeoutSeconds = 300;
    static constexpr double defaultKillGraceSeconds = 5;
    static constexpr double defaultReaderGraceSeconds = 5;
    static constexpr std::size_t defaultMostBytesKept = 64'000'000;
    /// For a tool that has little to say.
    static constexpr std::size_t fewBytesKept = 1'000'000;
    /// Of a session whose output was cut at that, and cannot be read.
    static constexpr const char* tooMuchOutput =
        "The tool printed more than 64 MB, which is too much to be read.";
    static constexpr const char* probePrompt = "/context";

    /// How one child ended and everything that it wrote. A text whose bytes are not UTF-8 is empty.
    struct Execution {
        std::int32_t exitCode = 0; ///< exit status, or the number of the signal that ended the child
        std::string standardOutput;
        std::string standardError;
        bool timedOut = false;        ///< the time limit fired and a signal ended the child
        bool readersTimedOut = false; ///< an output was still open when its reader gave up
        bool limitFired = false;      ///< the time limit fired, however the child ended
        bool hasDropped = false;      ///< there was more output than was kept
    };

    struct Limits {
        double timeoutSeconds = defaultTimeoutSeconds;
        double killGraceSeconds = defaultKillGraceSeconds;
        double readerGraceSeconds = defaultReaderGraceSeconds;
        std::size_t mostBytesKept = defaultMostBytesKept; ///< of each output
    };

    /// Sees the standard output while the child runs, on the reader's thread. Seconds that it returns bring
    /// the end of the time limit nearer: to that long from now.
    using OutputWatcher = std::function<std::optional<double>(std::span<const char> chunk)>;

    std::optional<std::string> cliOverride;
    std::string projectsRoot;
    int transcriptRetries = 12;
    double transcriptRetryDelay = 0.4; ///< seconds
    Limits limits;
    /// Whether the computer could reach the tool's counting service.
    std::function<bool()> hasNetworkRoute;

    /// The settings that the application uses, for the user's home folder and environment.
    [[nodiscard]] static ProbeRunner forUser();

    ProbeResult run(const std::string& repository, const ProbeSettings& settings,
                    std::stop_token stop) override;

    /// Runs one child of `tool` in `repository` within `limits` and collects what it writes. Blocking.
    /// Honours the `ProcessCancellation` that is current on this thread. Throws `ProbeError`
    /// (`UnreadableOutput`) when the child, or the interpreter of its script, cannot be started and
    /// `CancellationError` when it was cancelled.
    /// The child, its descriptors and its threads are gone on return.
    [[nodiscard]] static Execution execute(const std::string& cli, const std::vector<std::string>& arguments,
                                           const std::string& repository, ProbeEnvironment::Tool tool,
                                           const Limits& limits,
                                           const ProbeEnvironment::Options& environment = {},
                                           const OutputWatcher& watcher = {});

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
                                                    const std::stop_token& stop) const;

    /// Waits for the session's transcript to appear, within the retries set; nothing when it does not or
    /// `stop` was requested.
    [[nodiscard]] std::optional<ProbeUsage> transcriptUsage(const std::string& sessionID,
                                                            const std::stop_token& stop) const;

private:
    class Measurement;
};

} // namespace loadscope
