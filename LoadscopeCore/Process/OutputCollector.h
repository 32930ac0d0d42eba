// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Process/PipeDrain.h"

#include <memory>
#include <string>
#include <thread>

namespace loadscope {

class FileDescriptor;

/// Collects what comes out of one pipe, up to a number of bytes, on a thread of its own, until its end or the
/// deadline. What comes after those is read and dropped: the child must not stall. The destructor lets the
/// reader go at once and joins it.
class OutputCollector {
public:
    /// Starts reading a duplicate of `pipe`; when that cannot be made, nothing is read and the output stays
    /// empty. `onChunk`, if any, sees every chunk on the reader's thread.
    OutputCollector(const FileDescriptor& pipe, std::shared_ptr<ReaderDeadline> deadline,
                    std::size_t mostBytesKept, PipeDrain::Sink onChunk = {});
    ~OutputCollector();
    OutputCollector(const OutputCollector&) = delete;
    OutputCollector& operator=(const OutputCollector&) = delete;

    /// Waits for the reader: until the end of the output, or shortly after the deadline once that is set.
    void join();

    /// After `join`: the bytes kept, handed over once.
    [[nodiscard]] std::string takeBytes() { return std::move(bytes_); }

    /// After `join`: there was more than was kept.
    [[nodiscard]] bool hasDropped() const { return hasDropped_; }

    /// After `join`: the reader gave up at the deadline.
    [[nodiscard]] bool timedOut() const { return timedOut_; }

private:
    void keep(std::span<const char> chunk);

    std::shared_ptr<ReaderDeadline> deadline_;
    std::size_t mostBytesKept_;
    std::string bytes_;
    bool hasDropped_ = false;
    bool timedOut_ = false;
    std::thread thread_;
};

} // namespace loadscope
