// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace loadscope {

/// Does what the recorded history asks of the disk on a thread of its own, one job after the other in the
/// order in which they were given: a file may take long to flush, and another process may hold the lock of
/// its folder. The thread begins with the first job and sleeps between jobs. Its end waits for all jobs that
/// were given, so that no record is lost.
class HistoryWorker {
public:
    HistoryWorker() = default;
    ~HistoryWorker();
    HistoryWorker(const HistoryWorker&) = delete;
    HistoryWorker& operator=(const HistoryWorker&) = delete;

    /// Returns at once; where no thread can be made, only after `job` was done here.
    void run(std::function<void()> job);

private:
    void work();

    std::mutex mutex_;
    std::condition_variable given_;
    std::deque<std::function<void()>> jobs_;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace loadscope
