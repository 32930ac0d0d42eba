// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/LoginShell.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "LoadscopeCore/Process/TimeLimit.h"

namespace loadscope::LoginShell {
namespace {

constexpr std::chrono::seconds readerGrace(1);

} // namespace

std::string path() {
    const std::string preferred = "/bin/zsh";
    if (FilePath::isExecutableFile(preferred)) return preferred;
    if (const auto own = UserFolders::passwordDatabaseShell(); own && FilePath::isExecutableFile(*own))
        return *own;
    return "/bin/sh";
}

std::optional<std::string> output(const std::string& shell, const std::string& command, double timeoutSeconds,
                                  double killGraceSeconds) {
    ChildProcess child({.executable = shell,
                        .arguments = {"-lc", command},
                        .workingFolder = {},
                        .environment = UserFolders::environment(),
                        .capturesStandardError = false});
    try {
        child.launch();
    } catch (const LaunchError&) {
        return std::nullopt;
    }
    const auto deadline = std::make_shared<ReaderDeadline>();
    OutputCollector collector(child.standardOutput(), deadline);
    TimeLimit limit(child, timeoutSeconds, killGraceSeconds);
    const ChildProcess::Termination termination = child.wait();
    limit.cancel();
    deadline->expireAt(ReaderDeadline::Clock::now() + readerGrace);
    collector.join();
    if (limit.hasFired() || termination.status != 0) return std::nullopt;
    std::string bytes = collector.takeBytes();
    if (!Text::isValidUTF8(bytes)) return std::nullopt;
    return bytes;
}

} // namespace loadscope::LoginShell
