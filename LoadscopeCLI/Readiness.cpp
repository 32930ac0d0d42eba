// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Readiness.h"

#include <thread>
#include <utility>

namespace loadscope {

bool runOnWorker(LoopUIThread& loop, const std::function<void(std::stop_token)>& work) {
    bool done = false;
    std::jthread worker([&](const std::stop_token& stop) {
        work(stop);
        loop.post([&done] { done = true; });
    });
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
