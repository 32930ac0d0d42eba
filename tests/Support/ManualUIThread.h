// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UIThread.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

namespace loadscope {

/// A UI thread that runs posted work only while the test turns the crank; the thread that does is the UI
/// thread. Work that is left at the end is dropped.
class ManualUIThread : public UIThread {
public:
    void post(std::function<void()> work) override;

    /// Runs what is posted by now and what that work posts in turn, without waiting. Returns how many
    /// functions ran.
    std::size_t runPending();

    /// Runs posted work as it arrives until the condition holds. Returns whether it did within the limit.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition,
                                std::chrono::milliseconds limit = std::chrono::seconds(20));

private:
    bool runOne();

    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> queue_;
};

} // namespace loadscope
