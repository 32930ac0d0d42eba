// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"

#include <memory>
#include <mutex>
#include <type_traits>

namespace loadscope {

class ChildProcess;
class ReaderDeadline;

/// Ties a blocking child run to a stop token: for the length of `run` a token is current on the calling
/// thread, a child launched there is registered with it, and a stop request ends that child. A stop before
/// the launch prevents it.
class ProcessCancellation {
public:
    static constexpr double killGraceSeconds = 0.5;

    ProcessCancellation() = default;
    ~ProcessCancellation();
    ProcessCancellation(const ProcessCancellation&) = delete;
    ProcessCancellation& operator=(const ProcessCancellation&) = delete;

    /// The token of the step that runs on this thread, or null.
    [[nodiscard]] static ProcessCancellation* current();

    /// Runs a blocking operation under a fresh token. Throws `CancellationError` when `stop` was requested
    /// before or meanwhile (the operation's result is dropped then), else whatever the operation throws.
    template <typename Operation>
    static auto run(StopToken stop, Operation&& operation) -> std::invoke_result_t<Operation>;

    /// Launches `child` unless cancelled, and records it with the deadline of its readers and the time that a
    /// cancel leaves it to end by itself. Throws `CancellationError` or `LaunchError`.
    void registerProcess(std::shared_ptr<ChildProcess> child, std::shared_ptr<ReaderDeadline> readers,
                         double graceSeconds = killGraceSeconds);

    /// Forgets the recorded child, so that a later cancel does not touch it.
    void clearProcess();

    /// Marks the token cancelled, lets the readers go and ends the recorded child on a thread of its own.
    void cancel();

    [[nodiscard]] bool isCancelled() const;

private:
    class Scope {
    public:
        explicit Scope(ProcessCancellation& token);
        ~Scope();

    private:
        ProcessCancellation* outer_;
    };

    struct Registered {
        std::shared_ptr<ChildProcess> process;
        std::shared_ptr<ReaderDeadline> readers;
        double graceSeconds = killGraceSeconds;
    };
    Registered takeRegistered();
    void terminate(const Registered& registered);

    mutable std::mutex mutex_; ///< never held together with another one but across the launch
    bool cancelled_ = false;
    Registered registered_;
    JoiningThread terminator_; ///< set by the one call that cancels
};

/// Launches a child through the token that is current on this thread, if any, and makes the token forget it
/// at the end.
class RegisteredLaunch {
public:
    RegisteredLaunch(const std::shared_ptr<ChildProcess>& child,
                     const std::shared_ptr<ReaderDeadline>& readers,
                     double graceSeconds = ProcessCancellation::killGraceSeconds);
    ~RegisteredLaunch();
    RegisteredLaunch(const RegisteredLaunch&) = delete;
    RegisteredLaunch& operator=(const RegisteredLaunch&) = delete;

    [[nodiscard]] bool isCancelled() const { return token_ && token_->isCancelled(); }

private:
    ProcessCancellation* token_;
};

template <typename Operation>
auto ProcessCancellation::run(StopToken stop, Operation&& operation) -> std::invoke_result_t<Operation> {
    if (stop.isStopRequested()) throw CancellationError();
    ProcessCancellation token;
    StopCallback onStop(stop, [&token] { token.cancel(); });
    Scope scope(token);
    if constexpr (std::is_void_v<std::invoke_result_t<Operation>>) {
        operation();
        if (stop.isStopRequested()) throw CancellationError();
    } else {
        auto result = operation();
        if (stop.isStopRequested()) throw CancellationError();
        return result;
    }
}

} // namespace loadscope
