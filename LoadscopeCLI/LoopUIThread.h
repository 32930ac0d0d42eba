// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/UIThread.h"

#include <deque>
#include <functional>
#include <mutex>

namespace loadscope {

/// The command's main thread as the thread of the models: runs posted work until a condition holds and is
/// woken by SIGINT, SIGTERM and SIGHUP, which it catches while it lives. The second of them ends the command
/// at once, and its children. At most one lives at a time.
class LoopUIThread : public UIThread {
public:
    LoopUIThread();
    ~LoopUIThread() override;
    LoopUIThread(const LoopUIThread&) = delete;
    LoopUIThread& operator=(const LoopUIThread&) = delete;

    void post(std::function<void()> work) override;

    /// Runs posted work as it arrives until `done` holds. `interrupted` is called once, at the first signal.
    void run(const std::function<bool()>& done, const std::function<void()>& interrupted);

    /// A signal has asked the command to stop.
    [[nodiscard]] bool wasInterrupted() const { return interrupted_; }

private:
    void runPosted();
    void waitForWake();

    FileDescriptor wakeRead_;
    FileDescriptor wakeWrite_;
    std::mutex mutex_;
    std::deque<std::function<void()>> posted_;
    bool interrupted_ = false;
};

} // namespace loadscope
