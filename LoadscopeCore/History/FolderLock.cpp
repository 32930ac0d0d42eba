// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/FolderLock.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace loadscope {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds retryInterval{1};

/// A process that locks again at once would leave the others, who look only now and then, hardly a chance.
constexpr std::chrono::milliseconds courtesy{3};

/// When this process last gave a lock back.
std::atomic<Clock::time_point> lastRelease{Clock::time_point::min()};

bool acquires(int descriptor) {
    const Clock::time_point deadline = Clock::now() + FolderLock::patience;
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return false;
        if (Clock::now() >= deadline) return false;
        std::this_thread::sleep_for(retryInterval);
    }
    return true;
}

} // namespace

FolderLock::FolderLock(std::string folder) : folder_(std::move(folder)) {}

void FolderLock::lock() {
    const Clock::time_point release = lastRelease;
    if (Clock::now() - courtesy < release) std::this_thread::sleep_until(release + courtesy);
    FileDescriptor folder(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen() && acquires(folder.get())) descriptor_ = std::move(folder);
}

void FolderLock::unlock() {
    if (!descriptor_.isOpen()) return;
    // Closing alone would not do while a child that is about to start still has a copy of the descriptor.
    flock(descriptor_.get(), LOCK_UN);
    descriptor_.close();
    lastRelease = Clock::now();
}

} // namespace loadscope
