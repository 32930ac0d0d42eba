// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ChildProcess.h"

#include "LoadscopeCore/Process/ChildGroups.h"
#include "LoadscopeCore/Process/Spawn.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace loadscope {
namespace {

[[noreturn]] void failLaunch(int error, const std::string& place = {}) {
    std::string description = std::system_category().message(error);
    if (!place.empty()) description += " (" + place + ")";
    throw LaunchError(description);
}

/// A program that was started with SIGCHLD ignored lets the system reap its children by itself: their exit
/// status would be lost and their identifiers could be used again at any moment.
void keepExitedChildrenForWaiting() {
    struct sigaction action {};
    if (sigaction(SIGCHLD, nullptr, &action) != 0) return;
    const bool discardsChildren = action.sa_handler == SIG_IGN || (action.sa_flags & SA_NOCLDWAIT) != 0;
    if (!discardsChildren) return;
    action = {};
    action.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &action, nullptr);
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// Moves a descriptor above the standard three, so that setting those up in the child cannot overwrite it.
FileDescriptor aboveStandardStreams(int descriptor) {
    FileDescriptor original(descriptor);
    if (descriptor > STDERR_FILENO) return original;
    FileDescriptor moved(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (!moved.isOpen()) failLaunch(errno);
    return moved;
}

Pipe makePipe() {
    int ends[2];
#ifdef __linux__
    if (pipe2(ends, O_CLOEXEC) != 0) failLaunch(errno);
#else
    if (pipe(ends) != 0) failLaunch(errno);
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    fcntl(ends[1], F_SETFD, FD_CLOEXEC);
#endif
    FileDescriptor writeEnd(ends[1]);
    Pipe result{aboveStandardStreams(ends[0]), {}};
    result.writeEnd = aboveStandardStreams(writeEnd.release());
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

ChildProcess::ChildProcess(Options options) : options_(std::move(options)) {}

ChildProcess::~ChildProcess() {
    {
        Hold hold(*this);
        if (!hold.isValid()) return;
        hold.signalGroup(SIGKILL);
    }
    wait();
}

void ChildProcess::launch() {
    keepExitedChildrenForWaiting();
    Pipe output = makePipe();
    Pipe error = options_.capturesStandardError ? makePipe() : Pipe{};

    std::vector<std::string> arguments{options_.executable};
    arguments.insert(arguments.end(), options_.arguments.begin(), options_.arguments.end());
    std::vector<std::string> environment;
    for (const auto& [name, value] : options_.environment)
        environment.emplace_back(name).append("=").append(value);
    const std::vector<char*> argumentPointers = pointers(arguments);
    const std::vector<char*> environmentPointers = pointers(environment);

    const Spawn::Request request{options_.executable,
                                 argumentPointers.data(),
                                 environmentPointers.data(),
                                 output.writeEnd.get(),
                                 error.writeEnd.isOpen() ? error.writeEnd.get() : -1,
                                 options_.workingFolder};
    constexpr int attempts =
        3; // an executable that an updater has just written may be open for writing for a moment
    pid_t identifier = 0;
    int failure = 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        failure = Spawn::start(request, identifier);
        if (failure != ETXTBSY) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (failure != 0) {
        const bool folderIsGone = options_.workingFolder && !isFolder(*options_.workingFolder);
        failLaunch(failure, folderIsGone ? *options_.workingFolder : std::string());
    }

    // Nobody else knows of the child before this returns, so no lock: a canceller holds its own across it.
    ChildGroups::add(identifier);
    identifier_ = identifier;
    standardOutput_ = std::move(output.readEnd);
    standardError_ = std::move(error.readEnd);
}

bool ChildProcess::isRunning() const {
    std::lock_guard lock(mutex_);
    if (identifier_ <= 0 || reaped_) return false;
    siginfo_t info{};
    if (waitid(P_PID, static_cast<id_t>(identifier_), &info, WEXITED | WNOWAIT | WNOHANG) != 0) return false;
    return info.si_pid == 0;
}

pid_t ChildProcess::processIdentifier() const {
    std::lock_guard lock(mutex_);
    return identifier_;
}

ChildProcess::Termination ChildProcess::wait() {
    const pid_t identifier = processIdentifier();
    if (identifier <= 0) return {};
    siginfo_t info{};
    while (waitid(P_PID, static_cast<id_t>(identifier), &info, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }

    std::unique_lock lock(mutex_);
    if (reaped_) return termination_;
    holdsReleased_.wait(lock, [this] { return holds_ == 0; });
    ChildGroups::remove(identifier);
    int status = 0;
    pid_t reaped = -1;
    do {
        reaped = waitpid(identifier, &status, 0);
    } while (reaped < 0 && errno == EINTR);
    reaped_ = true;
    if (reaped == identifier && WIFEXITED(status)) {
        termination_ = {WEXITSTATUS(status), false};
    } else if (reaped == identifier && WIFSIGNALED(status)) {
        termination_ = {WTERMSIG(status), true};
    } else {
        termination_ = {-1, false};
    }
    return termination_;
}

ChildProcess::Hold::Hold(ChildProcess& child) : child_(child) {
    std::lock_guard lock(child_.mutex_);
    valid_ = child_.identifier_ > 0 && !child_.reaped_;
    if (valid_) ++child_.holds_;
}

ChildProcess::Hold::~Hold() {
    if (!valid_) return;
    std::lock_guard lock(child_.mutex_);
    --child_.holds_;
    child_.holdsReleased_.notify_all();
}

void ChildProcess::Hold::signalGroup(int signal) const {
    if (!valid_) return;
    // The child is not reaped while this hold lives, so its identifier still names its own group.
    kill(-child_.processIdentifier(), signal);
}

} // namespace loadscope
