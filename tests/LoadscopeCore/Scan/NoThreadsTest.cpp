// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/Scan/ScanModel.h"
#include "tests/Support/ManualUIThread.h"
#include "tests/Support/Testing.h"

namespace {

/// From now on the system refuses this process every further thread, as it may on a busy machine. For a user
/// without privileges.
bool refuseThreads() {
    const rlimit none{0, 0};
    return setrlimit(RLIMIT_NPROC, &none) == 0;
}

TEST(WithoutThreads, AScanFailsAndTheNextOneMayBeTried) {
    EXPECT_TRUE(holdsForOrdinaryUser([] {
        ManualUIThread uiThread;
        ScanModel model(uiThread, {});
        model.select(RepoSelection("/"));
        if (!refuseThreads()) return false;
        model.scan();
        const ProbeError* const error = model.state().error();
        return error != nullptr && error->is<ProbeError::UnreadableOutput>() && model.canScan();
    }));
}

TEST(WithoutThreads, ToolsAreLeftUnverified) {
    EXPECT_TRUE(holdsForOrdinaryUser([] {
        ManualUIThread uiThread;
        ReadinessModel model(uiThread);
        int told = 0;
        const auto subscription = model.observe([&] { ++told; });
        if (!refuseThreads()) return false;
        model.recheck();
        return told == 1 && !model.isChecking() && model.claude() == ToolReadiness::unknown;
    }));
}

TEST(WithoutThreads, ACancelKillsTheChildAtOnce) {
    EXPECT_TRUE(holdsForOrdinaryUser([] {
        const auto child = std::make_shared<ChildProcess>(
            ChildProcess::Options{.executable = "/bin/sleep", .arguments = {"60"}});
        ProcessCancellation token;
        token.registerProcess(child, nullptr);
        if (!refuseThreads()) return false;
        token.cancel();
        const auto end = child->wait();
        return end.bySignal && end.status == SIGKILL;
    }));
}

} // namespace
