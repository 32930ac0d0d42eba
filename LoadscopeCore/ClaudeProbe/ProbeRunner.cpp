// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"

#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <nlohmann/json.hpp>

namespace loadscope {

namespace {

struct TotalSourceTexts {
    TotalSource source;
    std::string_view rawValue;
    std::string_view label;
};

constexpr std::array totalSources{
    TotalSourceTexts{TotalSource::contextCommand, "contextCommand", "Claude Code's own `/context` report"},
    TotalSourceTexts{TotalSource::transcript, "transcript",
                     "session transcript: first assistant message usage"},
    TotalSourceTexts{TotalSource::cliUsage, "cliUsage", "CLI result usage block (no transcript found)"},
};

const TotalSourceTexts& textsOf(TotalSource source) {
    return totalSources.at(static_cast<std::size_t>(source));
}

/// Sleeps, but no longer than until `stop` is requested.
void pause(double seconds, std::stop_token stop) {
    constexpr double longest = 86400;
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    wake.wait_for(lock, std::move(stop), std::chrono::duration<double>(std::clamp(seconds, 0.0, longest)),
                  [] { return false; });
}

ProbeOutput outputOf(const ProbeRunner::Execution& execution) {
    if (execution.timedOut) throw ProbeError(ProbeError::TimedOut{});
    try {
        return ProbeOutputParser::parse(execution.standardOutput, execution.standardError,
                                        execution.exitCode);
    } catch (const ProbeError&) {
        // Without the rest of the output, what was read says nothing about the cause.
        if (execution.readersTimedOut) throw ProbeError(ProbeError::TimedOut{});
        throw;
    }
}

/// The total of the usage block of a session of exactly one turn, or nothing when the block is missing, empty
/// or says nothing; a block that covers more turns, or an unknown number of them, is refused.
std::optional<std::int64_t> trustedUsageTotal(const ProbeOutput& output, std::string_view standardOutput) {
    if (!output.usage || output.usage->startupTotal() < 1) return std::nullopt;
    const auto turns = ProbeRunner::reportedTurns(standardOutput);
    if (!turns) throw ProbeError(ProbeError::UnknownTurnCount{});
    if (*turns >= 2) throw ProbeError(ProbeError::MultiTurnUsageOnly{*turns});
    if (*turns == 0) return std::nullopt;
    return output.usage->startupTotal();
}

} // namespace

std::string rawValue(TotalSource source) { return std::string(textsOf(source).rawValue); }

std::string label(TotalSource source) { return std::string(textsOf(source).label); }

std::optional<TotalSource> totalSourceFromRawValue(std::string_view rawValue) {
    const auto* const found = std::ranges::find(totalSources, rawValue, &TotalSourceTexts::rawValue);
    return found == totalSources.end() ? std::nullopt : std::optional(found->source);
}

ProbeRunner ProbeRunner::forUser() {
    ProbeRunner runner;
    runner.projectsRoot =
        TranscriptLocator::defaultProjectsRoot(UserFolders::home(), UserFolders::environment());
    return runner;
}

std::vector<std::string> ProbeRunner::claudeArguments(const std::string& prompt, const std::string& model) {
    return {"-p", prompt, "--output-format", "json", "--model", model, "--permission-mode", "plan"};
}

std::optional<std::int64_t> ProbeRunner::reportedTurns(std::string_view standardOutput) {
    const auto json = ProbeOutputParser::jsonObject(standardOutput);
    return json ? Json::integral(Json::member(*json, "num_turns")) : std::nullopt;
}

std::optional<ProbeUsage> ProbeRunner::transcriptUsage(const std::string& sessionID,
                                                       const std::stop_token& stop) const {
    const int attempts = std::max(transcriptRetries, 1);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (stop.stop_requested()) return std::nullopt;
        if (attempt > 0) pause(transcriptRetryDelay, stop);
        const auto path = TranscriptLocator::find(sessionID, projectsRoot);
        auto usage = path ? TranscriptReader::firstAssistantUsageAtPath(*path) : std::nullopt;
        if (usage) return usage;
    }
    return std::nullopt;
}

ProbeResult ProbeRunner::run(const std::string& repository, const ProbeSettings& settings,
                             std::stop_token stop) {
    using Clock = std::chrono::steady_clock;

    ProbeResult result;
    result.conditions.requestedModel = settings.model;
    result.conditions.pathSource = SearchPath::source();
    result.resolvedCLIPath =
        ProcessCancellation::run(stop, [&] { return ClaudeCLILocator::resolveForUser(cliOverride); });

    const auto start = Clock::now();
    const Execution execution = ProcessCancellation::run(stop, [&] {
        return execute(result.resolvedCLIPath, claudeArguments(probePrompt, settings.model), repository,
                       ProbeEnvironment::Tool::claude, limits);
    });
    const ProbeOutput output = outputOf(execution);
    result.sessionID = output.sessionID;
    const auto totals = ContextBreakdownParser::reportedTotals(output.result);
    result.selfReportedSlabs = ContextBreakdownParser::categories(output.result);
    result.duration = std::chrono::duration<double>(Clock::now() - start).count();

    if (totals) {
        result.totalSource = TotalSource::contextCommand;
        result.authoritativeTotal = totals->total;
        result.contextWindow = totals->window;
    } else if (const auto usage = transcriptUsage(output.sessionID, stop)) {
        result.totalSource = TotalSource::transcript;
        result.authoritativeTotal = usage->startupTotal();
    } else if (const auto total = trustedUsageTotal(output, execution.standardOutput)) {
        result.totalSource = TotalSource::cliUsage;
        result.authoritativeTotal = *total;
    } else if (!result.selfReportedSlabs.empty()) {
        throw ProbeError(ProbeError::NoTranscript{projectsRoot});
    } else {
        throw ProbeError(ProbeError::UnreadableContextReport{});
    }
    return result;
}

} // namespace loadscope
