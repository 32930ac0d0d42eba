// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/OutputCollector.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

namespace loadscope {

OutputCollector::OutputCollector(const FileDescriptor& pipe, std::shared_ptr<ReaderDeadline> deadline)
    : deadline_(std::move(deadline)) {
    FileDescriptor own = pipe.duplicate();
    if (!own.isOpen()) return;
    thread_ = std::thread([this, own = std::move(own)]() mutable {
        const auto append = [this](std::span<const char> chunk) {
            bytes_.append(chunk.data(), chunk.size());
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
