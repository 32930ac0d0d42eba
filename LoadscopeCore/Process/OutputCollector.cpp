// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/OutputCollector.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <algorithm>

namespace loadscope {
namespace {

/// What a tool that prints without end may take of the memory. What comes after it is read and dropped: the
/// tool must not stall, and no report is as long.
constexpr std::size_t mostBytesKept = std::size_t{1} << 30;

} // namespace

OutputCollector::OutputCollector(const FileDescriptor& pipe, std::shared_ptr<ReaderDeadline> deadline,
                                 PipeDrain::Sink onChunk)
    : deadline_(std::move(deadline)) {
    FileDescriptor own = pipe.duplicate();
    if (!own.isOpen()) return;
    thread_ = std::thread([this, own = std::move(own), onChunk = std::move(onChunk)]() mutable {
        const auto append = [&](std::span<const char> chunk) {
            if (onChunk) onChunk(chunk);
            bytes_.append(chunk.data(), std::min(chunk.size(), mostBytesKept - bytes_.size()));
        };
        timedOut_ = PipeDrain::run(std::move(own), *deadline_, append);
    });
}

OutputCollector::~OutputCollector() {
    if (!thread_.joinable()) return;
    deadline_->expireAt(ReaderDeadline::Clock::now());
    join();
}

void OutputCollector::join() {
    if (thread_.joinable()) thread_.join();
}

} // namespace loadscope
