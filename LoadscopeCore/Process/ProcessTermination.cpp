// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ProcessTermination.h"

#include "LoadscopeCore/Process/ChildProcess.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

namespace loadscope::ProcessTermination {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Waits until the child has exited or the grace is over. Looks often at first: most tools end within a few
/// milliseconds.
void waitForExit(const ChildProcess& child, double graceSeconds) {
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(Seconds(graceSeconds));
    Seconds pause(0.002);
    while (child.isRunning()) {
        const Seconds left = end - Clock::now();
        if (left <= Seconds(0)) return;
        std::this_thread::sleep_for(std::min(pause, left));
        pause = std::min(pause * 2, Seconds(checkIntervalSeconds));
    }
}

} // namespace

void terminateThenKill(ChildProcess& child, double graceSeconds) {
    const ChildProcess::Hold hold(child);
    if (!hold.isValid() || !child.isRunning()) return;
    hold.signalGroup(SIGTERM);
    hold.signalGroup(SIGCONT); // a stopped process acts on the termination only when it goes on
    waitForExit(child, graceSeconds);
    if (!child.isRunning()) std::this_thread::sleep_for(Seconds(std::min(groupSettleSeconds, graceSeconds)));
    hold.signalGroup(SIGKILL);
}

} // namespace loadscope::ProcessTermination
