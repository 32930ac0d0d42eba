// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <thread>

namespace loadscope::soak {

/// Ends the program when the UI thread has not come back to its event loop for very long: a detector of
/// hangs, not a measure of speed, so that a busy machine does not set it off.
class Heartbeat {
public:
    explicit Heartbeat(std::chrono::seconds limit);
    ~Heartbeat();

    /// The longest time between two beats so far.
    [[nodiscard]] std::chrono::milliseconds longest() const {
        return std::chrono::milliseconds(longest_.load());
    }

private:
    using Clock = std::chrono::steady_clock;

    void beat();
    void watch(std::chrono::seconds limit);

    const pthread_t uiThread_ = pthread_self();
    QTimer timer_;
    std::atomic<Clock::rep> last_;
    std::atomic<std::int64_t> longest_{0};
    std::mutex mutex_;
    std::condition_variable wakeUp_;
    bool ended_ = false;
    std::thread thread_;
};

} // namespace loadscope::soak
