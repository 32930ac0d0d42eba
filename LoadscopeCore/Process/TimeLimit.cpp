// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/TimeLimit.h"

#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/ProcessTermination.h"

#include <algorithm>

namespace loadscope {
namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point fromNow(double seconds) {
    constexpr double longest = 1e8; // three years; keeps the conversion to the clock's ticks in range
    const std::chrono::duration<double> limit(std::clamp(seconds, 0.0, longest));
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
}

} // namespace

TimeLimit::TimeLimit(ChildProcess& child, double seconds, double killGraceSeconds) : end_(fromNow(seconds)) {
    thread_ = std::thread([this, &child, killGraceSeconds] {
        // The child has a lock of its own, so this one is not held while it is asked.
        if (!waitForEnd() || !child.isRunning()) return;
        setFired();
        ProcessTermination::terminateThenKill(child, killGraceSeconds);
    });
}

bool TimeLimit::waitForEnd() {
    std::unique_lock lock(mutex_);
    while (!cancelled_ && Clock::now() < end_) {
        const Clock::time_point end = end_; // the member may change during the wait
        wakeUp_.wait_until(lock, end);
    }
    return !cancelled_;
}

void TimeLimit::setFired() {
    std::lock_guard lock(mutex_);
    fired_ = true;
}

void TimeLimit::shorten(double seconds) {
    const Clock::time_point end = fromNow(seconds);
    {
        std::lock_guard lock(mutex_);
        end_ = std::min(end_, end);
    }
    wakeUp_.notify_all();
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
