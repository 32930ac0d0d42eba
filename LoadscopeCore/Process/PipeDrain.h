// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

namespace loadscope {

class FileDescriptor;

/// When readers must give up; absent until it is set. Shared between a run and its readers, guarded by its
/// own lock.
class ReaderDeadline {
public:
    using Clock = std::chrono::steady_clock;

    /// Sets the deadline; a later one than the present one changes nothing.
    void expireAt(Clock::time_point time);
    [[nodiscard]] bool isExpired() const;

private:
    mutable std::mutex mutex_;
    std::optional<Clock::time_point> expiry_;
};

/// The reader loop of a child's output.
namespace PipeDrain {

inline constexpr std::size_t bufferSize = 65536;
inline constexpr int pollMilliseconds = 50;

using Sink = std::function<void(std::span<const char> chunk)>;

/// Reads the descriptor until end of input, a hard error or the deadline, which it notices within 50 ms, and
/// hands every chunk to `sink`. Closes the descriptor. Returns true only when it stopped because of the
/// deadline.
bool run(FileDescriptor descriptor, const ReaderDeadline& deadline, const Sink& sink);

} // namespace PipeDrain
} // namespace loadscope
