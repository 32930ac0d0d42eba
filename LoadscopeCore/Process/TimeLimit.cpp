// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/TimeLimit.h"

#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/ProcessTermination.h"

#include <algorithm>
#include <chrono>

namespace loadscope {

TimeLimit::TimeLimit(ChildProcess& child, double seconds, double killGraceSeconds) {
    constexpr double longest = 1e8; // three years; keeps the conversion to the clock's ticks in range
    const auto limit = std::chrono::duration<double>(std::clamp(seconds, 0.0, longest));
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::duration_cast<std::chrono::steady_clock::duration>(limit);
    thread_ = std::thread([this, &child, end, killGraceSeconds] {
        std::unique_lock lock(mutex_);
        if (wakeUp_.wait_until(lock, end, [this] { return cancelled_; })) return;
        if (!child.isRunning()) return;
        fired_ = true;
        lock.unlock();
        ProcessTermination::terminateThenKill(child, killGraceSeconds);
    });
}

void TimeLimit::cancel() {
    {
        std::lock_guard lock(mutex_);
        cancelled_ = true;
    }
    wakeUp_.notify_all();
    if (thread_.joinable()) thread_.join();
}

bool TimeLimit::hasFired() const {
    std::lock_guard lock(mutex_);
    return fired_;
}

} // namespace loadscope
