// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/ClaudeProbe/ReportTrust.h"
#include "LoadscopeCore/Platform/NetworkRoute.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "LoadscopeCore/ToolRun/ToolVersion.h"

#include <chrono>

namespace loadscope {
namespace {

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

/// One measurement, from the command line to the result.
class ProbeRunner::Measurement {
public:
    Measurement(const ProbeRunner& runner, const std::string& repository, const ProbeSettings& settings,
                StopToken stop)
        : runner_(runner), repository_(repository), settings_(settings), stop_(std::move(stop)) {}

    ProbeResult run() {
        result_.resolvedCLIPath = ProcessCancellation::run(
            stop_, [&] { return ClaudeCLILocator::resolveForUser(runner_.cliOverride); });
        noteConditions();
        const auto start = Clock::now();
        version_.emplace(result_.resolvedCLIPath, ProbeEnvironment::Tool::claude, environment_);
        const Execution execution = ProcessCancellation::run(stop_, [&] {
            return execute(result_.resolvedCLIPath, claudeArguments(probePrompt, settings_.model),
                           repository_, ProbeEnvironment::Tool::claude, runner_.limits, environment_);
        });
        const ProbeOutput output = outputOf(execution);
        result_.sessionID = output.sessionID;
        const bool hasTotal = takeReport(output.result);
        result_.duration = std::chrono::duration<double>(Clock::now() - start).count();
        if (!hasTotal) measureElsewhere(output, execution.standardOutput);
        noteVersion(output.toolVersion);
        return std::move(result_);
    }

private:
    using Clock = std::chrono::steady_clock;

    void noteConditions() {
        environment_ = {.keepsSignIn = settings_.keepsEnvironment,
                        .waitsForServers = settings_.waitsForServers};
        const Environment base = UserFolders::environment();
        MeasurementConditions& conditions = result_.conditions;
        conditions.requestedModel = settings_.model;
        conditions.pathSource = SearchPath::source();
        conditions.waitedForServers = settings_.waitsForServers;
        conditions.keptEnvironment = settings_.keepsEnvironment;
        conditions.removedVariables =
            ProbeEnvironment::removedVariables(ProbeEnvironment::Tool::claude, base, environment_);
        conditions.keptVariables =
            ProbeEnvironment::keptVariables(ProbeEnvironment::Tool::claude, base, environment_);
    }

    /// What the tool's output names goes first; the question beside the session is not waited for.
    void noteVersion(const std::optional<std::string>& named) {
        auto& version = result_.conditions.toolVersion;
        if (named) version = ToolVersion::inText(*named);
        if (!version) version = version_->answer();
    }

    ProbeOutput outputOf(const Execution& execution) const {
        if (execution.timedOut) throw ProbeError(ProbeError::TimedOut{});
        try {
            return ProbeOutputParser::parse(execution.standardOutput, execution.standardError,
                                            execution.exitCode);
        } catch (const ProbeError& error) {
            // Without the rest of the output, what was read says nothing about the cause.
            if (execution.readersTimedOut || execution.limitFired) throw ProbeError(ProbeError::TimedOut{});
            if (execution.hasDropped && error.is<ProbeError::UnreadableOutput>())
                throw ProbeError(ProbeError::UnreadableOutput{ToolRun::tooMuchOutput +
                                                              (" It begins with:\n" + error.detail())});
            if (error.is<ProbeError::NotAuthenticated>() && !settings_.keepsEnvironment)
                throw ProbeError(ProbeError::NotAuthenticated{
                    ProbeEnvironment::removedSignInVariables(UserFolders::environment())});
            throw;
        }
    }

    /// Reads categories, and the total when there is one that can be trusted. Throws `ProbeError` for a total
    /// that was not counted.
    bool takeReport(std::string_view text) {
        result_.details = ContextDetailsParser::parse(text);
        result_.selfReportedSlabs = ContextBreakdownParser::categories(text);
        result_.conditions.model = result_.details.model;
        const auto totals = ContextBreakdownParser::reportedTotals(text);
        if (!totals) return false;
        result_.totalSource = TotalSource::contextCommand;
        result_.authoritativeTotal = totals->total;
        result_.contextWindow = totals->window;
        judge();
        return true;
    }

    void judge() {
        using ReportTrust::Verdict;
        const ReportTrust::Finding finding =
            ReportTrust::judge(result_.selfReportedSlabs, result_.details, ReportTrust::charactersOnDisk);
        const bool isEstimate = finding.verdict == Verdict::estimated;
        if (finding.verdict == Verdict::incomplete || (isEstimate && !settings_.acceptsEstimate))
            throw ProbeError(
                ProbeError::IncompleteContextReport{finding.reason, result_.authoritativeTotal, isEstimate});
        result_.conditions.isEstimate = isEstimate;
        result_.conditions.mayBeEstimate =
            finding.verdict == Verdict::cannotTell && (!settings_.signInVerified || !hasRoute());
    }

    [[nodiscard]] bool hasRoute() const {
        return runner_.hasNetworkRoute ? runner_.hasNetworkRoute() : NetworkRoute::exists();
    }

    /// The result's text has no total: the transcript's report, its first usage, the usage block.
    void measureElsewhere(const ProbeOutput& output, std::string_view standardOutput) {
        const std::string unable = versionWithoutReport(output);
        const TranscriptAnswer answer =
            runner_.transcriptAnswer(output.sessionID, unable.empty() ? runner_.transcriptRetries : 1, stop_);
        if (answer.report && takeTranscriptReport(*answer.report)) return;
        if (answer.usage) {
            result_.totalSource = TotalSource::transcript;
            result_.authoritativeTotal = answer.usage->startupTotal();
        } else if (const auto total = trustedUsageTotal(output, standardOutput)) {
            result_.totalSource = TotalSource::cliUsage;
            result_.authoritativeTotal = *total;
        } else if (!result_.selfReportedSlabs.empty()) {
            throw ProbeError(ProbeError::NoTranscript{runner_.projectsRoot});
        } else {
            throw ProbeError(ProbeError::UnreadableContextReport{unable});
        }
    }

    /// The version when it is one from before the report, which writes none to its transcript either.
    [[nodiscard]] std::string versionWithoutReport(const ProbeOutput& output) {
        if (!output.result.empty()) return {};
        constexpr double patience = 2; // a transcript would be waited for longer
        const auto version = version_->answer(patience);
        const auto numbers = version ? ToolVersion::numbers(*version) : std::nullopt;
        return numbers && numbers->front() < 2 ? *version : std::string();
    }

    bool takeTranscriptReport(const TranscriptReader::Report& report) {
        if (!takeReport(report.text)) return false;
        takeReserveOff();
        if (report.toolVersion) result_.conditions.toolVersion = ToolVersion::inText(*report.toolVersion);
        return true;
    }

    /// These versions count reserved space into the total: told by the rows, with which the total agrees
    /// better when that is taken off.
    void takeReserveOff() {
        SaturatingSum loaded;
        for (const SelfReportedSlab& row : result_.selfReportedSlabs)
            loaded.add(row.tokens);
        SaturatingSum reserved;
        std::string names;
        for (const SelfReportedSlab& row : result_.details.reserved) {
            reserved.add(row.tokens);
            names += (names.empty() ? "" : ", ") + row.name;
        }
        SaturatingSum both = loaded;
        both.add(reserved.value());
        const std::int64_t total = result_.authoritativeTotal;
        const bool isCountedIn = distance(total, both.value()) < distance(total, loaded.value());
        if (reserved.value() < 1 || reserved.value() > total || !isCountedIn) return;
        result_.authoritativeTotal = total - reserved.value();
        result_.conditions.takenOff = ReservedSpace{names, reserved.value()};
    }

    static std::int64_t distance(std::int64_t left, std::int64_t right) {
        return left > right ? left - right : right - left;
    }

    const ProbeRunner& runner_;
    const std::string& repository_;
    const ProbeSettings& settings_;
    StopToken stop_;
    ProbeEnvironment::Options environment_;
    std::optional<ToolVersion> version_;
    ProbeResult result_;
};

ProbeResult ProbeRunner::run(const std::string& repository, const ProbeSettings& settings, StopToken stop) {
    return Measurement(*this, repository, settings, std::move(stop)).run();
}

} // namespace loadscope
