// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ToolVersion.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "LoadscopeCore/Process/TimeLimit.h"

#include <charconv>
#include <chrono>
#include <csignal>
#include <system_error>

namespace loadscope {
namespace {

constexpr double timeoutSeconds = 10;
constexpr double killGraceSeconds = 0.5;
constexpr std::chrono::milliseconds readerGrace(500);
constexpr std::size_t mostBytesKept = 100'000;
constexpr std::size_t longestVersion = 40;
constexpr std::string_view versionCharacters =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.+-";

/// What the tool prints. A stop kills it at once: nothing is lost, and nobody is to wait for it.
std::optional<std::string> ask(const std::string& cli, ProbeEnvironment::Tool tool,
                               const ProbeEnvironment::Options& environment, const StopToken& stop) {
    ChildProcess child({.executable = cli,
                        .arguments = {"--version"},
                        .workingFolder = UserFolders::temporary(),
                        .environment = ProbeEnvironment::childEnvironment(
                            tool, SearchPath::environmentFor(cli), UserFolders::current(), environment),
                        .capturesStandardError = false});
    child.launch();
    const auto deadline = std::make_shared<ReaderDeadline>();
    OutputCollector output(child.standardOutput(), deadline, mostBytesKept);
    const StopCallback kill(stop, [&child, &deadline] {
        ChildProcess::Hold(child).signalGroup(SIGKILL);
        deadline->expireAt(ReaderDeadline::Clock::now());
    });
    TimeLimit limit(child, timeoutSeconds, killGraceSeconds);
    const ChildProcess::Termination termination = child.wait();
    limit.cancel();
    deadline->expireAt(ReaderDeadline::Clock::now() + readerGrace);
    output.join();
    if (termination.bySignal || termination.status != 0) return std::nullopt;
    return ToolVersion::inText(output.takeBytes());
}

std::optional<std::string> askOrGiveUp(const std::string& cli, ProbeEnvironment::Tool tool,
                                       const ProbeEnvironment::Options& environment, const StopToken& stop) {
    try {
        return ask(cli, tool, environment, stop);
    } catch (const std::exception&) { // it cannot be started, or there are no threads
        return std::nullopt;
    }
}

} // namespace

ToolVersion::ToolVersion(std::string cli, ProbeEnvironment::Tool tool,
                         ProbeEnvironment::Options environment) {
    try {
        thread_ = JoiningThread([this, cli = std::move(cli), tool, environment](const StopToken& stop) {
            auto version = askOrGiveUp(cli, tool, environment, stop);
            const std::lock_guard lock(mutex_);
            version_ = std::move(version);
            isAnswered_ = true;
            answered_.notify_all();
        });
    } catch (const std::system_error&) {
        isAnswered_ = true; // no thread is to be had: the version stays unknown
    }
}

std::optional<std::string> ToolVersion::answer(double seconds) {
    std::unique_lock lock(mutex_);
    answered_.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return isAnswered_; });
    return version_;
}

std::optional<std::string> ToolVersion::inText(std::string_view text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", start), text.size());
        const std::string_view word = text.substr(start, end - start);
        const bool isPlain = word.find_first_not_of(versionCharacters) == std::string_view::npos;
        if (word.size() <= longestVersion && isPlain && numbers(word)) return std::string(word);
        start = end + 1;
    }
    return std::nullopt;
}

std::optional<std::array<int, 3>> ToolVersion::numbers(std::string_view version) {
    std::array<int, 3> parts{};
    const char* position = version.data();
    const char* const last = position + version.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && (position == last || *position++ != '.')) return std::nullopt;
        if (position == last || *position < '0' || *position > '9') return std::nullopt;
        const auto [end, error] = std::from_chars(position, last, parts.at(i));
        if (error != std::errc()) return std::nullopt;
        position = end;
    }
    return parts;
}

} // namespace loadscope
