// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/LoginShell.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UUID.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/TimeLimit.h"

namespace loadscope::LoginShell {
namespace {

constexpr std::chrono::seconds readerGrace(1);
constexpr double noGrace = 0; // an interactive shell ignores the polite request, and has nothing to lose

constexpr std::size_t mostBytesKept = 1'000'000;

constexpr const char* preferred = "/bin/zsh";
constexpr const char* lastResort = "/bin/sh";

std::optional<std::string> passwordDatabaseShell() {
    auto own = UserFolders::passwordDatabaseShell();
    return own && FilePath::isExecutableFile(*own) ? own : std::nullopt;
}

struct Run {
    std::int32_t status = 0;
    std::string bytes;
};

/// Nothing when the shell could not be started or was too slow.
std::optional<Run> run(const std::string& shell, std::vector<std::string> arguments, double timeoutSeconds,
                       double killGraceSeconds) {
    const auto child =
        std::make_shared<ChildProcess>(ChildProcess::Options{.executable = shell,
                                                             .arguments = std::move(arguments),
                                                             .workingFolder = {},
                                                             .environment = UserFolders::environment(),
                                                             .capturesStandardError = false});
    const auto deadline = std::make_shared<ReaderDeadline>();
    try {
        const RegisteredLaunch launch(child, deadline, noGrace);
        OutputCollector collector(child->standardOutput(), deadline, mostBytesKept);
        TimeLimit limit(*child, timeoutSeconds, killGraceSeconds);
        const ChildProcess::Termination termination = child->wait();
        limit.cancel();
        deadline->expireAt(ReaderDeadline::Clock::now() + readerGrace);
        collector.join();
        if (launch.isCancelled()) throw CancellationError();
        if (limit.hasFired()) return std::nullopt;
        return Run{termination.status, collector.takeBytes()};
    } catch (const LaunchError&) {
        return std::nullopt;
    }
}

std::optional<std::string> readable(std::string_view bytes) {
    if (!Text::isValidUTF8(bytes)) return std::nullopt;
    return std::string(bytes);
}

} // namespace

std::string path() {
    if (FilePath::isExecutableFile(preferred)) return preferred;
    return passwordDatabaseShell().value_or(lastResort);
}

std::string userShell() {
    const Environment environment = UserFolders::environment();
    const auto named = environment.find("SHELL");
    if (named != environment.end() && named->second.starts_with('/') &&
        FilePath::isExecutableFile(named->second))
        return named->second;
    if (auto own = passwordDatabaseShell()) return *std::move(own);
    return FilePath::isExecutableFile(preferred) ? preferred : lastResort;
}

std::optional<std::string> output(const std::string& shell, const std::string& command, double timeoutSeconds,
                                  double killGraceSeconds) {
    const auto finished = run(shell, {"-lc", command}, timeoutSeconds, killGraceSeconds);
    if (!finished || finished->status != 0) return std::nullopt;
    return readable(finished->bytes);
}

std::optional<std::string> answer(const std::string& shell, Start start, const std::string& command,
                                  double timeoutSeconds, double killGraceSeconds) {
    // The marker stands in two pieces in the command, so that a shell which repeats its commands does not
    // print it. A quoted name is no alias.
    const std::string first = UUID::generate().text();
    const std::string second = UUID::generate().text();
    std::string printMarker = "'printf' '%s%s' '";
    printMarker.append(first).append("' '").append(second).append("'");
    std::vector<std::string> arguments{"-lc"};
    if (start == Start::interactive) arguments = {"-l", "-i", "-c"};
    arguments.push_back(printMarker + "; " + command + "; " + printMarker);

    const auto finished = run(shell, std::move(arguments), timeoutSeconds, killGraceSeconds);
    if (!finished) return std::nullopt;
    const std::string marker = first + second;
    const std::string_view bytes = finished->bytes;
    const std::size_t begin = bytes.find(marker);
    if (begin == std::string_view::npos) return std::nullopt;
    const std::size_t from = begin + marker.size();
    const std::size_t end = bytes.find(marker, from);
    if (end == std::string_view::npos) return std::nullopt;
    return readable(bytes.substr(from, end - from));
}

} // namespace loadscope::LoginShell
