// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Support/ManualUIThread.h"

#include <algorithm>
#include <utility>

namespace loadscope {

void ManualUIThread::post(std::function<void()> work) {
    // Told under the lock: once the work has run, the test may end this object.
    const std::lock_guard lock(mutex_);
    queue_.push_back(std::move(work));
    posted_.notify_all();
}

bool ManualUIThread::runOne() {
    std::function<void()> work;
    {
        const std::lock_guard lock(mutex_);
        if (queue_.empty()) return false;
        work = std::move(queue_.front());
        queue_.pop_front();
    }
    work();
    return true;
}

std::size_t ManualUIThread::runPending() {
    std::size_t count = 0;
    while (runOne())
        ++count;
    return count;
}

bool ManualUIThread::runUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    // A condition may come true on another thread without posted work, so it is asked from time to time.
    constexpr std::chrono::milliseconds interval{5};
    while (!condition()) {
        if (runOne()) continue;
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline) return false;
        std::unique_lock lock(mutex_);
        posted_.wait_until(lock, std::min(now + interval, deadline), [this] { return !queue_.empty(); });
    }
    return true;
}

} // namespace loadscope
