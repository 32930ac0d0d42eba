// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"
#include "LoadscopeCore/CodexProbe/CodexSessionText.h"
#include "LoadscopeCore/CodexProbe/ReconnectionWatch.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/SystemWords.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "LoadscopeCore/ToolRun/ToolRun.h"
#include "LoadscopeCore/ToolRun/ToolVersion.h"

#include <algorithm>
#include <chrono>

namespace loadscope {

namespace {

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

/// What is too long for a name is none.
std::optional<std::string> modelName(std::optional<std::string> name) {
    constexpr std::size_t mostCharacters = 80;
    return name && Text::characterCount(*name) <= mostCharacters ? name : std::nullopt;
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

/// Both may be large, so neither is in the memory twice for longer than it takes to copy the first.
void appendComplaint(std::string& output, std::string_view standardError) {
    const std::string_view complaint = Text::trimmed(standardError);
    if (complaint.empty()) return;
    std::string both;
    both.reserve(output.size() + 1 + complaint.size());
    both += output;
    std::string().swap(output);
    both.append("\n").append(complaint);
    output = std::move(both);
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

std::vector<std::string> CodexProbeRunner::argumentsKeepingRecord(const std::string& repository) {
    auto list = arguments(repository);
    std::erase(list, "--ephemeral");
    return list;
}

std::string CodexProbeRunner::unreadableDetail(std::int32_t exitCode, std::string_view output,
                                               std::size_t tailLines) {
    std::string detail = "codex ";
    if (exitCode != 0) detail += "exited with code " + std::to_string(exitCode) + " and ";
    detail += "reported no token_count event.\n";
    std::string lines = CodexSessionText::lastLines(output, tailLines);
    const auto complaint = CodexSessionText::complaint(output);
    if (complaint && lines.find(*complaint) == std::string::npos) // it tells more than a hint below it
        lines.insert(0, "\n").insert(0, Text::prefix(*complaint, ProbeError::detailLimit + 1));
    return detail + ProbeError::bounded(lines);
}

CodexProbeRunner::SessionOutput CodexProbeRunner::session(const std::string& cli,
                                                          const std::vector<std::string>& list,
                                                          const std::string& repository,
                                                          const StopToken& stop) const {
    return ProcessCancellation::run(stop, [&] { return executor(cli, list, repository); });
}

CodexProbeResult CodexProbeRunner::resultOf(const SessionOutput& session,
                                            const CodexConfiguration& configuration) {
    const auto count = CodexOutputParser::firstTokenCount(session.standardOutput);
    auto lastError = count ? std::nullopt : CodexSessionText::lastError(session.standardOutput);
    if (session.timedOut && !lastError) throw ProbeError(ProbeError::TimedOut{});
    if (lastError) {
        if (const auto complaint = CodexSessionText::complaint(session.standardOutput))
            *lastError = std::string(*complaint) + '\n' + *lastError;
        throw ProbeError(ProbeError::UnreadableOutput{ProbeError::bounded(*lastError)});
    }
    if (!count && session.limitFired) throw ProbeError(ProbeError::TimedOut{});
    if (!count && session.hasDropped) throw ProbeError(ProbeError::UnreadableOutput{ToolRun::tooMuchOutput});
    if (!count)
        throw ProbeError(
            ProbeError::UnreadableOutput{unreadableDetail(session.exitCode, session.standardOutput, 3)});

    const auto header = CodexOutputParser::header(session.standardOutput);
    CodexProbeResult result{.total = count->inputTokens, .contextWindow = count->contextWindow};
    if (!result.contextWindow) result.contextWindow = header.contextWindow;
    if (!result.contextWindow) result.contextWindow = configuration.modelContextWindow;
    result.model = modelName(header.model ? header.model : configuration.model);
    return result;
}

std::string CodexProbeRunner::locate(const StopToken& stop) const {
    const auto availability =
        ProcessCancellation::run(stop, [&] { return CodexCLILocator::locateForUser(cliOverride); });
    if (!availability.path)
        throw ProbeError(ProbeError::CLINotFound{CodexCLILocator::searchedForUser(cliOverride)});
    return *availability.path;
}

CodexItemsReader CodexProbeRunner::itemsReader(const std::string& cli,
                                               const CodexConfiguration& setUp) const {
    return {.cli = cli,
            .prompt = probePrompt,
            .timeoutSeconds = timeoutSeconds,
            .configuration = setUp,
            .configurationFolder = CodexConfiguration::folderForUser()};
}

CodexProbeResult CodexProbeRunner::run(const std::string& repository, const StopToken& stop) const {
    using Clock = std::chrono::steady_clock;

    const std::string cli = locate(stop);
    const CodexConfiguration setUp = configuration();
    ToolVersion version(cli, ProbeEnvironment::Tool::codex);
    auto start = Clock::now();
    SessionOutput output = session(cli, arguments(repository), repository, stop);
    const bool keepsRecord =
        output.exitCode != 0 && !output.timedOut && CodexSessionText::refusesEphemeral(output.standardOutput);
    if (keepsRecord) {
        start = Clock::now();
        output = session(cli, argumentsKeepingRecord(repository), repository, stop);
    }
    CodexProbeResult result = resultOf(output, setUp);
    result.keepsRecord = keepsRecord;
    result.duration = std::chrono::duration<double>(Clock::now() - start).count();
    result.toolVersion = version.answer(versionSeconds);

    result.items = itemsReader(cli, setUp).read(repository, result.model, stop);
    if (!result.contextWindow) result.contextWindow = result.items->contextWindow;
    if (result.items->areTold()) result.model = result.items->model;
    return result;
}

CodexItems CodexProbeRunner::estimate(const std::string& repository, const StopToken& stop) const {
    const std::string cli = locate(stop);
    const CodexConfiguration setUp = configuration();
    CodexItems items = itemsReader(cli, setUp).read(repository, modelName(setUp.model), stop);
    std::erase_if(items.items, [](const CodexItem& item) { return item.kind == CodexItemKind::prompt; });
    return items;
}

CodexProbe::CodexProbe(std::optional<std::string> cliOverride, double timeoutSeconds,
                       double reconnectionSeconds)
    : runner_{std::move(cliOverride), timeoutSeconds, processExecutor(timeoutSeconds, reconnectionSeconds)} {}

CodexProbe::CodexProbe(CodexProbeRunner runner) : runner_(std::move(runner)) {}

CodexScanOutcome CodexProbe::run(const std::string& repository, StopToken stop) {
    try {
        return CodexScanOutcome::measured(runner_.run(repository, stop));
    } catch (...) {
        return CodexScanOutcome::unavailable(reason(std::current_exception()));
    }
}

CodexItems CodexProbe::estimate(const std::string& repository, StopToken stop) {
    try {
        return runner_.estimate(repository, stop);
    } catch (...) {
        return CodexItems::unavailable(reason(std::current_exception()));
    }
}

CodexProbeRunner::Executor CodexProbe::processExecutor(double timeoutSeconds, double reconnectionSeconds) {
    return [=](const std::string& cli, const std::vector<std::string>& arguments,
               const std::string& repository) {
        const auto watch = [reconnectionSeconds,
                            reconnections = ReconnectionWatch()](std::span<const char> chunk) mutable {
            return reconnections.sawLast(chunk) ? std::optional(reconnectionSeconds) : std::nullopt;
        };
        auto execution = ToolRun::execute(
            cli, arguments, repository, ProbeEnvironment::Tool::codex,
            {timeoutSeconds, ToolRun::defaultKillGraceSeconds, ToolRun::defaultReaderGraceSeconds}, {},
            watch);
        CodexProbeRunner::SessionOutput session{std::move(execution.standardOutput), execution.exitCode,
                                                execution.timedOut, execution.limitFired,
                                                execution.hasDropped};
        appendComplaint(session.standardOutput, execution.standardError);
        return session;
    };
}

std::string CodexProbe::signedOutReason() {
    return "Codex is not signed in. Run `codex login` in " + std::string(SystemWords::terminal) +
           " and sign in, then scan again.";
}

std::string CodexProbe::reason(const std::exception_ptr& error) {
    if (isNotInstalled(error)) return notInstalledReason;
    std::string text = ProbeError::bounded(onOneLine(descriptionOf(error)));
    if (!text.ends_with(".") && !text.ends_with("…")) text += '.';
    return "Codex probe failed: " + text;
}

} // namespace loadscope
