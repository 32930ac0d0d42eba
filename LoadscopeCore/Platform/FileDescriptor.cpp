// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace loadscope {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        close();
        descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
}

void FileDescriptor::close() noexcept {
    if (!isOpen()) return;
    // Callers report the error of what failed before, and after EINTR the descriptor is gone all the same.
    const int error = errno;
    ::close(std::exchange(descriptor_, -1));
    errno = error;
}

FileDescriptor FileDescriptor::duplicate() const {
    if (!isOpen()) return {};
    // Never a standard stream, even in a process that was started without one.
    return FileDescriptor(::fcntl(descriptor_, F_DUPFD_CLOEXEC, 3));
}

} // namespace loadscope
