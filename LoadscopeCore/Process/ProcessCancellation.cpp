// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ProcessCancellation.h"

#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/PipeDrain.h"
#include "LoadscopeCore/Process/ProcessTermination.h"

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
    process_ = std::move(child);
    readers_ = std::move(readers);
    graceSeconds_ = graceSeconds;
}

void ProcessCancellation::clearProcess() {
    std::lock_guard lock(mutex_);
    process_.reset();
    readers_.reset();
}

void ProcessCancellation::cancel() {
    std::lock_guard lock(mutex_);
    if (std::exchange(cancelled_, true)) return;
    if (readers_)
        readers_->expireAt(ReaderDeadline::Clock::now()); // the output of a cancelled run is dropped anyway
    if (!process_) return;
    terminator_ = std::jthread(
        [child = process_, grace = graceSeconds_] { ProcessTermination::terminateThenKill(*child, grace); });
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
