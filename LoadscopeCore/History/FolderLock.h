// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <chrono>
#include <string>

namespace loadscope {

/// An advisory lock between processes on a folder, which needs no file of its own: the lock lies on the
/// folder's descriptor and dies with its holder. It asks for patience, not for obedience: a caller that has
/// waited `patience` in vain, or whose file system knows no locks, goes on without it. Meets the needs of
/// std::lock_guard. Not thread-safe: each thread uses its own, or a mutex around it.
class FolderLock {
public:
    static constexpr std::chrono::milliseconds patience{2000};

    explicit FolderLock(std::string folder);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    void lock();
    void unlock();

private:
    std::string folder_;
    FileDescriptor descriptor_; ///< open while the lock is held
};

} // namespace loadscope
