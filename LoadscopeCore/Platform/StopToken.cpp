// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/StopToken.h"

#include <algorithm>

namespace loadscope {

bool StopState::request() {
    std::unique_lock lock(mutex_);
    if (isRequested_) return false;
    isRequested_ = true;
    runner_ = std::this_thread::get_id();
    while (!entries_.empty()) {
        Entry* const entry = entries_.back();
        entries_.pop_back();
        bool isGone = false;
        entry->isGone_ = &isGone;
        running_ = entry;
        lock.unlock();
        entry->run();
        lock.lock();
        if (!isGone) entry->isGone_ = nullptr;
        running_ = nullptr;
        ended_.notify_all();
    }
    return true;
}

bool StopState::isRequested() const {
    const std::lock_guard lock(mutex_);
    return isRequested_;
}

bool StopState::add(Entry& entry) {
    const std::lock_guard lock(mutex_);
    if (isRequested_) return false;
    entries_.push_back(&entry);
    return true;
}

void StopState::remove(Entry& entry) {
    std::unique_lock lock(mutex_);
    std::erase(entries_, &entry);
    if (running_ != &entry) return;
    if (runner_ == std::this_thread::get_id())
        *entry.isGone_ = true; // destroyed by its own call
    else
        ended_.wait(lock, [&] { return running_ != &entry; });
}

} // namespace loadscope
