// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/PipeDrain.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace loadscope {

void ReaderDeadline::expireAt(Clock::time_point time) {
    std::lock_guard lock(mutex_);
    if (!expiry_ || time < *expiry_) expiry_ = time;
}

bool ReaderDeadline::isExpired() const {
    std::lock_guard lock(mutex_);
    return expiry_ && Clock::now() >= *expiry_;
}

namespace PipeDrain {
namespace {

enum class Wait { readable, elapsed, failed };

Wait waitForInput(int descriptor) {
    pollfd request{descriptor, POLLIN, 0};
    const int ready = poll(&request, 1, pollMilliseconds);
    if (ready > 0) return Wait::readable;
    if (ready == 0 || errno == EINTR) return Wait::elapsed;
    return Wait::failed;
}

/// Lets a fast writer run ahead of the reader, so that both are woken less often. A refusal does no harm.
void enlarge([[maybe_unused]] const FileDescriptor& pipe) {
#ifdef F_SETPIPE_SZ
    constexpr int capacity = 4 * bufferSize;
    fcntl(pipe.get(), F_SETPIPE_SZ, capacity);
#endif
}

bool isTemporary(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

} // namespace

bool run(FileDescriptor descriptor, const ReaderDeadline& deadline, const Sink& sink) {
    const int flags = fcntl(descriptor.get(), F_GETFL);
    if (flags >= 0) fcntl(descriptor.get(), F_SETFL, flags | O_NONBLOCK);

    enlarge(descriptor);

    std::array<char, bufferSize> buffer;
    bool mayHaveMore = false; // a full buffer: more input is likely there without asking
    while (true) {
        if (deadline.isExpired()) return true;
        if (!mayHaveMore) {
            const Wait wait = waitForInput(descriptor.get());
            if (wait == Wait::failed) return false;
            if (wait == Wait::elapsed) continue;
        }
        const ssize_t count = read(descriptor.get(), buffer.data(), buffer.size());
        if (count > 0) {
            sink(std::span<const char>(buffer.data(), static_cast<std::size_t>(count)));
            mayHaveMore = static_cast<std::size_t>(count) == buffer.size();
            continue;
        }
        if (count == 0 || !isTemporary(errno)) return false;
        if (!mayHaveMore) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        mayHaveMore = false;
    }
}

} // namespace PipeDrain
} // namespace loadscope
