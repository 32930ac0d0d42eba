// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitFor.h"

#include <filesystem>
#include <future>
#include <gtest/gtest.h>

namespace loadscope {
namespace {

const std::string report =
    R"({"info":{"total_token_usage":{"input_tokens":12345},"model_context_window":272000}})";

/// A home folder with a `codex` that does what the test's script says.
class CodexProbeTest : public testing::Test {
protected:
    void scriptCodex(const std::string& commands) { writeExecutable(cli, "#!/bin/sh\n" + commands + "\n"); }

    CodexScanOutcome run(CodexProbeRunner::Executor executor, std::stop_token stop = {}) {
        CodexProbeRunner runner;
        runner.executor = std::move(executor);
        return CodexProbe(runner).run(home.path(), std::move(stop));
    }

    const TemporaryFolder home;
    const std::string cli = home.path(".npm-global/bin/codex");
    const std::string failed = "Codex probe failed: ";

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
};

TEST_F(CodexProbeTest, TurnsEverySessionIntoACountOrAReason) {
    struct Case {
        const char* name;
        CodexProbeRunner::SessionOutput session;
        std::string reason; ///< empty: measured
    };
    const std::string none = "codex reported no token_count event. ";
    const std::vector<Case> cases{
        {"a report", {report, 0, false}, ""},
        {"a report although it failed", {"x\n" + report, 1, false}, ""},
        {"a time-out in spite of a report",
         {report, 15, true},
         failed + "Nothing was measured. Try again, or try a smaller repository."},
        {"not signed in",
         {"Error: not signed in\n", 1, false},
         failed + "codex exited with code 1 and reported no token_count event. Error: not signed in."},
        {"nothing printed", {" \n", 0, false}, failed + none + "(no output)."},
        {"the last three lines", {"1\n2\n\n \t\n 3 \r\n4.\u2028", 0, false}, failed + none + "2 3 4."},
        {"a long line",
         {std::string(700, 'x'), 0, false},
         failed + none + std::string(500 - none.size(), 'x') + "…"},
    };
    scriptCodex("");
    for (const auto& [name, session, reason] : cases) {
        const auto outcome = run([&](const auto&, const auto&, const auto&) { return session; });
        if (reason.empty()) {
            ASSERT_NE(outcome.result(), nullptr) << name;
            EXPECT_EQ(outcome.result()->total, 12345) << name;
            EXPECT_EQ(outcome.result()->contextWindow, 272000) << name;
        } else {
            ASSERT_NE(outcome.reason(), nullptr) << name;
            EXPECT_EQ(*outcome.reason(), reason) << name;
        }
    }
}

TEST_F(CodexProbeTest, WordsEveryOtherFailureInOneLine) {
    const std::vector<std::pair<std::exception_ptr, std::string>> cases{
        {std::make_exception_ptr(ProbeError(ProbeError::CLINotFound{{"/a"}})),
         "Codex CLI not found — install `codex` to add a Codex column."},
        {std::make_exception_ptr(ProbeError(ProbeError::NotAuthenticated{})),
         failed + "Run `claude` in Terminal and sign in, then scan again. This app never handles Claude "
                  "credentials."},
        {std::make_exception_ptr(CancellationError()), failed + "The operation was cancelled."},
        {std::make_exception_ptr(std::runtime_error(" a\n\n\tb \r c… ")), failed + "a b c…"},
        {std::make_exception_ptr(std::runtime_error("")), failed + "(no output)."},
        {std::make_exception_ptr(7), failed + "Unknown error."}};
    for (const auto& [error, reason] : cases)
        EXPECT_EQ(CodexProbe::reason(error), reason);
}

TEST_F(CodexProbeTest, RunsOneReadOnlySessionInTheFolder) {
    scriptCodex("printf '%s\\n' \"$PWD\" \"$@\" > \"$HOME/call\"; echo noise; echo '" + report +
                "' >&2; exit 3");
    const auto outcome = CodexProbe().run(home.path(), {});
    ASSERT_NE(outcome.result(), nullptr) << *outcome.reason();
    EXPECT_EQ(outcome.result()->total, 12345);
    EXPECT_GT(outcome.result()->duration, 0);
    EXPECT_EQ(readFile(home.path("call")),
              home.path() + "\nexec\n--json\n--skip-git-repo-check\n--ephemeral\n-s\nread-only\n-C\n" +
                  home.path() + "\nReply with exactly: OK. Do not run any command or use any tool.\n");

    writeExecutable(cli, "#!/no/such/interpreter\n");
    const auto unstarted = CodexProbe().run(home.path(), {});
    ASSERT_NE(unstarted.reason(), nullptr);
    EXPECT_TRUE(unstarted.reason()->starts_with(failed + "Could not start " + cli + ": "))
        << *unstarted.reason();
}

TEST_F(CodexProbeTest, IsEndedByItsLimitAndByACancel) {
    scriptCodex("echo '" + report + "'; touch \"$HOME/started\"; exec sleep 60");
    EXPECT_EQ(CodexProbe({}, 0.3).run(home.path(), {}),
              CodexScanOutcome::unavailable(failed +
                                            "Nothing was measured. Try again, or try a smaller repository."));

    std::filesystem::remove(home.path("started"));
    std::stop_source stop;
    auto outcome =
        std::async(std::launch::async, [&] { return CodexProbe().run(home.path(), stop.get_token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.request_stop();
    EXPECT_EQ(outcome.get(), CodexScanOutcome::unavailable(failed + "The operation was cancelled."));
}

} // namespace
} // namespace loadscope
