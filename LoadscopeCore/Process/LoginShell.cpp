// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/LoginShell.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "LoadscopeCore/Process/TimeLimit.h"

#include <csignal>
#include <mutex>
#include <set>

namespace loadscope::LoginShell {
namespace {

constexpr std::chrono::seconds readerGrace(1);

/// The lookups under way.
class Lookups {
public:
    /// Launches the shell unless the program is closing. Held across the launch, so that closing sees either
    /// no child, and prevents it, or the launched one, and kills it. Throws `LaunchError`.
    bool launch(ChildProcess& child) {
        const std::lock_guard lock(mutex_);
        if (closing_) return false;
        child.launch();
        children_.insert(&child);
        return true;
    }
    void forget(ChildProcess& child) {
        const std::lock_guard lock(mutex_);
        children_.erase(&child);
    }
    [[nodiscard]] bool isClosing() const {
        const std::lock_guard lock(mutex_);
        return closing_;
    }
    void setClosing(bool closing) {
        const std::lock_guard lock(mutex_);
        closing_ = closing;
        if (!closing) return;
        for (ChildProcess* const child : children_)
            ChildProcess::Hold(*child).signalGroup(SIGKILL);
    }

private:
    mutable std::mutex mutex_;
    bool closing_ = false;
    std::set<ChildProcess*> children_;
};

Lookups& lookups() {
    static Lookups all;
    return all;
}

/// Takes a launched child from the lookups before it goes, whatever happens to its lookup.
class Forgetting {
public:
    explicit Forgetting(ChildProcess& child) : child_(child) {}
    ~Forgetting() { lookups().forget(child_); }
    Forgetting(const Forgetting&) = delete;
    Forgetting& operator=(const Forgetting&) = delete;

private:
    ChildProcess& child_;
};

} // namespace

std::string path() {
    std::string preferred = "/bin/zsh";
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
        if (!lookups().launch(child)) return std::nullopt;
    } catch (const LaunchError&) {
        return std::nullopt;
    }
    const Forgetting forgetting(child);
    const auto deadline = std::make_shared<ReaderDeadline>();
    OutputCollector collector(child.standardOutput(), deadline);
    TimeLimit limit(child, timeoutSeconds, killGraceSeconds);
    const ChildProcess::Termination termination = child.wait();
    limit.cancel();
    const auto now = ReaderDeadline::Clock::now();
    deadline->expireAt(lookups().isClosing() ? now : now + readerGrace);
    collector.join();
    if (limit.hasFired() || termination.status != 0) return std::nullopt;
    std::string bytes = collector.takeBytes();
    if (!Text::isValidUTF8(bytes)) return std::nullopt;
    return bytes;
}

Closing::Closing() { lookups().setClosing(true); }

Closing::~Closing() { lookups().setClosing(false); }

} // namespace loadscope::LoginShell
