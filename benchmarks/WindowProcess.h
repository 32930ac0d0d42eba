// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace loadscope {

/// A program with a window, started for measuring and killed when this goes away. All figures come from
/// outside of it: from the clock that `FirstFrame.cpp`, preloaded into it, reads at its first picture, and
/// from the system's account of the process.
class WindowProcess {
public:
    /// Starts the program; ends this one with a message when that fails.
    WindowProcess(const std::vector<std::string>& arguments, const std::string& preload);
    ~WindowProcess();
    WindowProcess(const WindowProcess&) = delete;
    WindowProcess& operator=(const WindowProcess&) = delete;

    /// Seconds from the start of the program to its first picture; nothing when none came in half a minute.
    [[nodiscard]] std::optional<double> secondsToFirstFrame() const;

    /// Waits until no thread of the program has run for a second; false when that took over half a minute.
    [[nodiscard]] bool waitUntilIdle() const;

    /// How often a thread of it was put on a processor since its start.
    [[nodiscard]] std::int64_t wakeUps() const;

    /// A figure of the process's memory in bytes, as "Rss" or "Pss"; 0 when it cannot be read.
    [[nodiscard]] std::int64_t memory(const std::string& figure) const;

private:
    pid_t identifier_ = 0;
    int frames_ = -1;
    std::int64_t startNanoseconds_ = 0;
};

} // namespace loadscope
