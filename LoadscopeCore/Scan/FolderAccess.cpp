// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/FolderAccess.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace loadscope::FolderAccess {
namespace {

/// Shared by the one who waits and a thread that may outlive the wait.
class Answer {
public:
    void give(std::optional<ProbeError> error) {
        {
            const std::lock_guard lock(mutex_);
            error_ = std::move(error);
            isGiven_ = true;
        }
        given_.notify_all();
    }

    std::optional<ProbeError> wait(const StopToken& stop) {
        std::unique_lock lock(mutex_);
        waitOrStop(given_, lock, stop, [this] { return isGiven_; });
        if (stop.isStopRequested()) throw CancellationError();
        return std::move(error_);
    }

private:
    std::mutex mutex_;
    std::condition_variable given_;
    bool isGiven_ = false;
    std::optional<ProbeError> error_;
};

} // namespace

std::optional<ProbeError> check(const std::string& repository) {
    std::error_code error;
    std::filesystem::directory_iterator entry(repository, error);
    // Reading to the end finds what opening alone does not: a failing disk or a share that has gone away.
    while (!error && entry != std::filesystem::directory_iterator())
        entry.increment(error);
    if (!error) return {};
    return ProbeError(ProbeError::RepositoryUnreadable{repository});
}

std::optional<ProbeError> checkPresence(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() != std::filesystem::file_type::not_found) return std::nullopt;
    return ProbeError(ProbeError::RepositoryUnreadable{path});
}

std::optional<ProbeError> checkDetached(const std::string& repository, const StopToken& stop,
                                        Check isListed) {
    const auto answer = std::make_shared<Answer>();
    try {
        std::thread([answer, repository, isListed] { answer->give(isListed(repository)); }).detach();
    } catch (const std::system_error&) { // no thread is to be had
        return isListed(repository);
    }
    return answer->wait(stop);
}

} // namespace loadscope::FolderAccess
