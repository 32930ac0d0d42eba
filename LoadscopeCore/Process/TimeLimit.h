// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace loadscope {

class ChildProcess;

/// Ends a child that is still running after a while, by `ProcessTermination::terminateThenKill` on a thread
/// of its own. `child` must outlive it. The destructor cancels and joins.
class TimeLimit {
public:
    TimeLimit(ChildProcess& child, double seconds, double killGraceSeconds);
    ~TimeLimit() { cancel(); }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    /// Lets the limit end `seconds` from now, if that is sooner. From any thread.
    void shorten(double seconds);

    /// Calls the limit off; waits for a termination that is already under way.
    void cancel();

    /// The limit was reached while the child ran. Meaningful after `cancel`.
    [[nodiscard]] bool hasFired() const;

private:
    using Clock = std::chrono::steady_clock;

    /// Waits for the limit's end, which may come nearer meanwhile; false when it was called off.
    bool waitForEnd();
    void setFired();

    mutable std::mutex mutex_;
    std::condition_variable wakeUp_;
    Clock::time_point end_;
    bool cancelled_ = false;
    bool fired_ = false;
    std::thread thread_;
};

} // namespace loadscope
