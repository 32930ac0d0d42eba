// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Readiness.h"

#include "LoadscopeCore/Process/CancellationError.h"

#include <system_error>
#include <thread>
#include <utility>

namespace loadscope {

bool runOnWorker(LoopUIThread& loop, const std::function<void(std::stop_token)>& work) {
    bool done = false;
    const auto finish = [&](const std::stop_token& stop) {
        try {
            work(stop);
        } catch (const CancellationError&) { // the loop knows of the signal
        }
        loop.post([&done] { done = true; });
    };
    std::jthread worker;
    try {
        worker = std::jthread(finish);
    } catch (const std::system_error&) { // no thread is to be had
        finish({});
    }
    loop.run([&done] { return done; }, [&worker] { worker.request_stop(); });
    return !loop.wasInterrupted();
}

std::optional<ReadinessChecker::Result> checkReadiness(LoopUIThread& loop, Terminal& errors,
                                                       const ProbeSettings& settings) {
    ReadinessChecker::Result result;
    errors.showProgress("Checking sign-in…");
    const bool finished = runOnWorker(
        loop, [&](std::stop_token stop) { result = ReadinessChecker::check(std::move(stop), settings); });
    errors.clearProgress();
    if (!finished) return std::nullopt;
    return result;
}

} // namespace loadscope
