// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/HistoryWorker.h"

#include <system_error>
#include <utility>

namespace loadscope {

HistoryWorker::~HistoryWorker() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    given_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void HistoryWorker::run(std::function<void()> job) {
    try {
        if (!thread_.joinable()) thread_ = std::thread([this] { work(); });
    } catch (const std::system_error&) {
        job();
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    given_.notify_one();
}

void HistoryWorker::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        given_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        const std::function<void()> job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

} // namespace loadscope
