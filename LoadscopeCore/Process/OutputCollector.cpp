// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/OutputCollector.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <algorithm>

namespace loadscope {
namespace {

/// A text that reaches this gets all the room that it may ever need: a growing one lies in the memory twice
/// whenever it moves, while room that is not written to costs nothing.
constexpr std::size_t longText = std::size_t{1} << 20;

} // namespace

OutputCollector::OutputCollector(const FileDescriptor& pipe, std::shared_ptr<ReaderDeadline> deadline,
                                 std::size_t mostBytesKept, PipeDrain::Sink onChunk)
    : deadline_(std::move(deadline)), mostBytesKept_(mostBytesKept) {
    FileDescriptor own = pipe.duplicate();
    if (!own.isOpen()) return;
    thread_ = std::thread([this, own = std::move(own), onChunk = std::move(onChunk)]() mutable {
        const auto append = [&](std::span<const char> chunk) {
            if (onChunk) onChunk(chunk);
            keep(chunk);
        };
        timedOut_ = PipeDrain::run(std::move(own), *deadline_, append);
    });
}

void OutputCollector::keep(std::span<const char> chunk) {
    const std::size_t size = std::min(chunk.size(), mostBytesKept_ - bytes_.size());
    if (bytes_.size() + size > std::max(bytes_.capacity(), longText)) bytes_.reserve(mostBytesKept_);
    bytes_.append(chunk.data(), size);
    hasDropped_ = hasDropped_ || size < chunk.size();
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
