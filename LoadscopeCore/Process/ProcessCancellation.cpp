// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ProcessCancellation.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/PipeDrain.h"
#include "LoadscopeCore/Process/ProcessTermination.h"

#include <csignal>
#include <system_error>
#include <utility>

namespace loadscope {
namespace {

thread_local ProcessCancellation* currentToken = nullptr;

} // namespace

ProcessCancellation::~ProcessCancellation() = default;

ProcessCancellation* ProcessCancellation::current() { return currentToken; }

ProcessCancellation::Scope::Scope(ProcessCancellation& token) : outer_(currentToken) {
    currentToken = &token;
}
ProcessCancellation::Scope::~Scope() { currentToken = outer_; }

void ProcessCancellation::registerProcess(std::shared_ptr<ChildProcess> child,
                                          std::shared_ptr<ReaderDeadline> readers, double graceSeconds) {
    // Held across the launch: a cancel sees either no child, and prevents the launch, or the launched child,
    // and ends it.
    std::lock_guard lock(mutex_);
    if (cancelled_) throw CancellationError();
    child->launch();
    registered_ = {std::move(child), std::move(readers), graceSeconds};
}

ProcessCancellation::Registered ProcessCancellation::takeRegistered() {
    std::lock_guard lock(mutex_);
    return std::exchange(registered_, {});
}

void ProcessCancellation::clearProcess() {
    const Registered dropped = takeRegistered(); // its end must not come under the lock
}

void ProcessCancellation::cancel() {
    {
        std::lock_guard lock(mutex_);
        if (std::exchange(cancelled_, true)) return;
    }
    const Registered registered = takeRegistered();
    if (registered.readers) // the output of a cancelled run is dropped anyway
        registered.readers->expireAt(ReaderDeadline::Clock::now());
    if (registered.process) terminate(registered);
}

void ProcessCancellation::terminate(const Registered& registered) {
    try {
        terminator_ = JoiningThread([child = registered.process, grace = registered.graceSeconds] {
            ProcessTermination::terminateThenKill(*child, grace);
        });
    } catch (const std::system_error&) { // nobody is there to wait until it ends by itself
        ChildProcess::Hold(*registered.process).signalGroup(SIGKILL);
    }
}

bool ProcessCancellation::isCancelled() const {
    std::lock_guard lock(mutex_);
    return cancelled_;
}

RegisteredLaunch::RegisteredLaunch(const std::shared_ptr<ChildProcess>& child,
                                   const std::shared_ptr<ReaderDeadline>& readers, double graceSeconds)
    : token_(ProcessCancellation::current()) {
    if (token_) {
        token_->registerProcess(child, readers, graceSeconds);
    } else {
        child->launch();
    }
}

RegisteredLaunch::~RegisteredLaunch() {
    if (token_) token_->clearProcess();
}

} // namespace loadscope
