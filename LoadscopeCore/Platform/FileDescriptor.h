// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace loadscope {

/// Owns one open descriptor and closes it. Not shared between threads without a lock of the owner's.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] int get() const { return descriptor_; }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

    /// Closes it now; an error of closing is ignored.
    void close() noexcept;

    /// Gives the descriptor up without closing it.
    [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

    /// A second descriptor of the same open file, closed on exec; not open when it cannot be made.
    [[nodiscard]] FileDescriptor duplicate() const;

private:
    int descriptor_ = -1;
};

} // namespace loadscope
