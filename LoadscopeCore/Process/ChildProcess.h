// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/UserFolders.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <vector>

namespace loadscope {

/// A child could not be started; `what()` is the system's description.
class LaunchError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One child process: prepared by the constructor, started by `launch`, ended when `wait` returns. It has a
/// session and process group of its own, default signal dispositions, an empty signal mask, standard input
/// from the null device and no descriptor of ours but its outputs. Reaping and signalling share one lock, and
/// a zombie is kept until every termination in progress has let go of it, so a signal can never reach a
/// reused process identifier. The destructor kills and reaps a child that still runs. Once
/// `launch` has returned, `isRunning`, the signals and `wait` may be called from different threads; `wait` by
/// one of them only.
class ChildProcess {
public:
    struct Options {
        std::string executable; ///< a path, never searched for
        std::vector<std::string> arguments{};
        std::optional<std::string> workingFolder{}; ///< the application's own when absent
        Environment environment{};                  ///< complete
        bool capturesStandardError = true;          ///< else it goes to the null device
    };

    /// How a child ended: its exit status, or the signal that ended it.
    struct Termination {
        std::int32_t status = 0;
        bool bySignal = false;
    };

    explicit ChildProcess(Options options);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Starts the child. Throws `LaunchError`; nothing is left open then. A file that is being written to is
    /// tried again briefly.
    void launch();

    /// Launched and not yet exited.
    [[nodiscard]] bool isRunning() const;

    /// The child's identifier, also that of its group; 0 before the launch.
    [[nodiscard]] pid_t processIdentifier() const;

    /// Read ends of the pipes on the child's outputs, valid from a successful launch on.
    FileDescriptor& standardOutput() { return standardOutput_; }
    FileDescriptor& standardError() { return standardError_; }

    /// Blocks until the child has exited and no termination holds it any more, then reaps it.
    Termination wait();

    /// While one lives, the child is not reaped and its group's identifier stays its own.
    class Hold {
    public:
        explicit Hold(ChildProcess& child);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

        /// False when the child was never launched or has been reaped: there is nothing to signal.
        [[nodiscard]] bool isValid() const { return valid_; }
        /// Sends a signal to the child's whole group.
        void signalGroup(int signal) const;

    private:
        ChildProcess& child_;
        bool valid_ = false;
    };

private:
    Options options_;
    FileDescriptor standardOutput_;
    FileDescriptor standardError_;
    mutable std::mutex mutex_;
    std::condition_variable holdsReleased_;
    pid_t identifier_ = 0;
    bool reaped_ = false;
    int holds_ = 0;
    Termination termination_;
};

} // namespace loadscope
