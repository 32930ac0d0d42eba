// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"

#include "LoadscopeCore/ClaudeProbe/TerminalReport.h"
#include "LoadscopeCore/Platform/StopToken.h"

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
void pause(double seconds, const StopToken& stop) {
    constexpr double longest = 86400;
    std::mutex mutex;
    std::condition_variable wake;
    std::unique_lock lock(mutex);
    waitOrStopFor(wake, lock, stop, std::chrono::duration<double>(std::clamp(seconds, 0.0, longest)),
                  [] { return false; });
}

} // namespace

std::string rawValue(TotalSource source) { return std::string(textsOf(source).rawValue); }

std::string label(TotalSource source) { return std::string(textsOf(source).label); }

std::optional<TotalSource> totalSourceFromRawValue(std::string_view rawValue) {
    const auto* const found = std::ranges::find(totalSources, rawValue, &TotalSourceTexts::rawValue);
    return found == totalSources.end() ? std::nullopt : std::optional(found->source);
}

ProbeRunner::Execution ProbeRunner::execute(const std::string& cli, const std::vector<std::string>& arguments,
                                            const std::string& repository, ProbeEnvironment::Tool tool,
                                            const Limits& limits,
                                            const ProbeEnvironment::Options& environment,
                                            const ToolRun::OutputWatcher& watcher) {
    return ToolRun::execute(cli, arguments, repository, tool, limits, environment, watcher);
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
    return ProbeOutputParser::turns(standardOutput);
}

ProbeRunner::TranscriptAnswer ProbeRunner::transcriptAnswer(const std::string& sessionID, int attempts,
                                                            const StopToken& stop) const {
    TranscriptAnswer answer;
    for (int attempt = 0; attempt < std::max(attempts, 1) && answer.isEmpty(); ++attempt) {
        if (stop.isStopRequested()) break;
        if (attempt > 0) pause(transcriptRetryDelay, stop);
        const auto path = TranscriptLocator::find(sessionID, projectsRoot);
        if (!path) continue;
        answer.report = TranscriptReader::reportAtPath(*path);
        if (answer.report) answer.report->text = TerminalReport::asMarkdown(answer.report->text);
        if (answer.report && !ContextBreakdownParser::reportedTotals(answer.report->text))
            answer.report.reset();
        if (!answer.report) answer.usage = TranscriptReader::firstAssistantUsageAtPath(*path);
    }
    return answer;
}

std::optional<ProbeUsage> ProbeRunner::transcriptUsage(const std::string& sessionID,
                                                       const StopToken& stop) const {
    return transcriptAnswer(sessionID, transcriptRetries, stop).usage;
}

} // namespace loadscope
