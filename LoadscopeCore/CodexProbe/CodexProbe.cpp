// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"

#include <algorithm>
#include <chrono>

namespace loadscope {

namespace {

/// The last lines that are not blank, joined by line feeds; the output may be large, so from its end.
std::string lastLines(std::string_view output, std::size_t count) {
    std::string joined;
    std::size_t end = output.size();
    while (count > 0 && end > 0) {
        const std::size_t start = LineBreaks::lineStart(output, end);
        const std::string_view line = LineBreaks::trimmedLine(output.substr(start, end - start));
        if (!line.empty()) {
            joined.insert(0, joined.empty() ? "" : "\n").insert(0, line);
            --count;
        }
        end = start - LineBreaks::sizeBefore(output, start);
    }
    return joined;
}

/// Every line of a text in one.
std::string onOneLine(std::string_view text) {
    std::string joined;
    LineBreaks::Walker walker(text);
    while (walker.advance()) {
        const std::string_view line = LineBreaks::trimmedLine(walker.line());
        if (line.empty()) continue;
        if (!joined.empty()) joined += ' ';
        joined += line;
    }
    return joined;
}

std::string descriptionOf(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const ProbeError& probeError) {
        return probeError.detail();
    } catch (const std::exception& other) {
        return other.what();
    } catch (...) {
        return "Unknown error";
    }
}

bool isNotInstalled(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const ProbeError& probeError) {
        return probeError.is<ProbeError::CLINotFound>();
    } catch (...) {
        return false;
    }
}

} // namespace

std::vector<std::string> CodexProbeRunner::arguments(const std::string& repository) {
    return {"exec",     "--json",   "--skip-git-repo-check", "--ephemeral", "-s", "read-only", "-C",
            repository, probePrompt};
}

std::string CodexProbeRunner::unreadableDetail(std::int32_t exitCode, std::string_view output,
                                               std::size_t tailLines) {
    std::string detail = "codex ";
    if (exitCode != 0) detail += "exited with code " + std::to_string(exitCode) + " and ";
    detail += "reported no token_count event.\n";
    return detail + ProbeError::bounded(lastLines(output, tailLines));
}

CodexProbeResult CodexProbeRunner::run(const std::string& repository, const std::stop_token& stop) const {
    using Clock = std::chrono::steady_clock;

    const auto availability =
        ProcessCancellation::run(stop, [&] { return CodexCLILocator::locateForUser(cliOverride); });
    if (!availability.path)
        throw ProbeError(
            ProbeError::CLINotFound{CodexCLILocator::searchedPaths(cliOverride, UserFolders::home())});

    const auto start = Clock::now();
    const SessionOutput session = ProcessCancellation::run(
        stop, [&] { return executor(*availability.path, arguments(repository), repository); });
    if (session.timedOut) throw ProbeError(ProbeError::TimedOut{});

    const auto count = CodexOutputParser::firstTokenCount(session.standardOutput);
    if (!count)
        throw ProbeError(
            ProbeError::UnreadableOutput{unreadableDetail(session.exitCode, session.standardOutput, 3)});
    return {count->inputTokens, count->contextWindow,
            std::chrono::duration<double>(Clock::now() - start).count()};
}

CodexProbe::CodexProbe(std::optional<std::string> cliOverride, double timeoutSeconds)
    : runner_{std::move(cliOverride), timeoutSeconds, processExecutor(timeoutSeconds)} {}

CodexProbe::CodexProbe(CodexProbeRunner runner) : runner_(std::move(runner)) {}

CodexScanOutcome CodexProbe::run(const std::string& repository, std::stop_token stop) {
    try {
        return CodexScanOutcome::measured(runner_.run(repository, stop));
    } catch (...) {
        return CodexScanOutcome::unavailable(reason(std::current_exception()));
    }
}

CodexProbeRunner::Executor CodexProbe::processExecutor(double timeoutSeconds) {
    return [timeoutSeconds](const std::string& cli, const std::vector<std::string>& arguments,
                            const std::string& repository) {
        auto execution = ProbeRunner::execute(
            cli, arguments, repository, ProbeEnvironment::Tool::codex,
            {timeoutSeconds, ProbeRunner::defaultKillGraceSeconds, ProbeRunner::defaultReaderGraceSeconds});
        CodexProbeRunner::SessionOutput session{std::move(execution.standardOutput), execution.exitCode,
                                                execution.timedOut};
        const std::string_view complaint = Text::trimmed(execution.standardError);
        if (!complaint.empty()) {
            session.standardOutput += '\n';
            session.standardOutput += complaint;
        }
        return session;
    };
}

std::string CodexProbe::reason(const std::exception_ptr& error) {
    if (isNotInstalled(error)) return notInstalledReason;
    std::string text = ProbeError::bounded(onOneLine(descriptionOf(error)));
    if (!text.ends_with(".") && !text.ends_with("…")) text += '.';
    return "Codex probe failed: " + text;
}

} // namespace loadscope
