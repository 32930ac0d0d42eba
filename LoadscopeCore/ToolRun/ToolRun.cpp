// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ToolRun.h"

#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "LoadscopeCore/Process/TimeLimit.h"
#include "LoadscopeCore/ToolRun/MissingInterpreter.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

namespace loadscope::ToolRun {
namespace {

/// Takes the beginning of a character away that was cut in the middle.
void dropCutCharacter(std::string& bytes) {
    constexpr std::size_t longestCharacter = 4;
    std::size_t start = bytes.size();
    while (start > 0 && bytes.size() - start < longestCharacter) {
        const auto byte = static_cast<unsigned char>(bytes[--start]);
        if ((byte & 0xC0U) != 0x80U) break; // no byte of the inside
    }
    if (!Text::isValidUTF8(std::string_view(bytes).substr(start))) bytes.resize(start);
}

std::string textOf(OutputCollector& collector) {
    std::string bytes = collector.takeBytes();
    if (collector.hasDropped()) dropCutCharacter(bytes);
    if (!Text::isValidUTF8(bytes)) bytes.clear();
    return bytes;
}

PipeDrain::Sink shortening(TimeLimit& limit, const OutputWatcher& watcher) {
    if (!watcher) return {};
    return [&](std::span<const char> chunk) {
        if (const auto seconds = watcher(chunk)) limit.shorten(*seconds);
    };
}

Execution collect(ChildProcess& child, TimeLimit& limit, ReaderDeadline& deadline, OutputCollector& output,
                  OutputCollector& error, double readerGraceSeconds) {
    const ChildProcess::Termination termination = child.wait();
    limit.cancel();
    const std::chrono::duration<double> grace(readerGraceSeconds);
    deadline.expireAt(ReaderDeadline::Clock::now() +
                      std::chrono::duration_cast<ReaderDeadline::Clock::duration>(grace));
    output.join();
    error.join();

    Execution execution;
    execution.exitCode = termination.status;
    execution.standardOutput = textOf(output);
    execution.standardError = textOf(error);
    execution.timedOut = limit.hasFired() && termination.bySignal;
    execution.readersTimedOut = output.timedOut() || error.timedOut();
    execution.limitFired = limit.hasFired();
    execution.hasDropped = output.hasDropped() || error.hasDropped();
    return execution;
}

/// What a shell and `env` end with when a program cannot be started.
bool couldNotStart(std::int32_t exitCode) { return exitCode == 126 || exitCode == 127; }

/// Why the tool's script found no interpreter, if that is why it ended.
std::optional<ProbeError> missingInterpreter(const std::string& cli, const Execution& execution) {
    if (!couldNotStart(execution.exitCode) || !Text::trimmed(execution.standardOutput).empty()) return {};
    const auto name = MissingInterpreter::inErrorText(execution.standardError);
    if (!name) return {};
    return ProbeError(ProbeError::UnreadableOutput{
        MissingInterpreter::detail(cli, *name, SearchPath::environmentFor(cli)["PATH"])});
}

std::string describe(const LaunchError& error, const std::string& cli) {
    if (const auto interpreter = MissingInterpreter::ofScript(cli))
        return MissingInterpreter::detail(cli, *interpreter, {});
    return "Could not start " + cli + ": " + error.what();
}

} // namespace

Execution execute(const std::string& cli, const std::vector<std::string>& arguments,
                  const std::string& repository, ProbeEnvironment::Tool tool, const Limits& limits,
                  const ProbeEnvironment::Options& environment, const OutputWatcher& watcher) {
    const auto child = std::make_shared<ChildProcess>(ChildProcess::Options{
        .executable = cli,
        .arguments = arguments,
        .workingFolder = repository,
        .environment = ProbeEnvironment::childEnvironment(tool, SearchPath::environmentFor(cli),
                                                          UserFolders::current(), environment),
    });
    const auto deadline = std::make_shared<ReaderDeadline>();
    try {
        const RegisteredLaunch launch(child, deadline);
        TimeLimit limit(*child, limits.timeoutSeconds, limits.killGraceSeconds);
        OutputCollector output(child->standardOutput(), deadline, limits.mostBytesKept,
                               shortening(limit, watcher));
        OutputCollector error(child->standardError(), deadline, limits.mostBytesKept);
        Execution execution = collect(*child, limit, *deadline, output, error, limits.readerGraceSeconds);
        if (launch.isCancelled()) throw CancellationError();
        if (const auto error = missingInterpreter(cli, execution)) throw ProbeError(*error);
        return execution;
    } catch (const LaunchError& error) {
        throw ProbeError(ProbeError::UnreadableOutput{describe(error, cli)});
    }
}

} // namespace loadscope::ToolRun
