// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Readiness.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"

#include <system_error>
#include <utility>

namespace loadscope {

bool runOnWorker(LoopUIThread& loop, const std::function<void(StopToken)>& work) {
    bool done = false;
    const auto finish = [&](const StopToken& stop) {
        try {
            work(stop);
        } catch (const CancellationError&) { // the loop knows of the signal
        }
        loop.post([&done] { done = true; });
    };
    JoiningThread worker;
    try {
        worker = JoiningThread(finish);
    } catch (const std::system_error&) { // no thread is to be had
        finish({});
    }
    loop.run([&done] { return done; }, [&worker] { worker.requestStop(); });
    return !loop.wasInterrupted();
}

std::optional<ReadinessChecker::Result> checkReadiness(LoopUIThread& loop, Terminal& errors,
                                                       const ProbeSettings& settings) {
    ReadinessChecker::Result result;
    errors.showProgress("Checking sign-in…");
    const bool finished = runOnWorker(
        loop, [&](StopToken stop) { result = ReadinessChecker::check(std::move(stop), settings); });
    errors.clearProgress();
    if (!finished) return std::nullopt;
    return result;
}

} // namespace loadscope
