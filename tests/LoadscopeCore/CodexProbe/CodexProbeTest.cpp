// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "tests/Support/Testing.h"

namespace {

const std::string report =
    R"({"info":{"total_token_usage":{"input_tokens":12345},"model_context_window":272000}})";

/// A home folder with a `codex` that does what the test's script says.
class CodexProbeTest : public testing::Test {
protected:
    void scriptCodex(const std::string& commands) {
        writeExecutable(cli, "#!/bin/sh\n[ $1 = exec ] || exit 1\n" + commands + "\n");
    }

    const TemporaryFolder home;
    const std::string cli = home.path(".npm-global/bin/codex");
    const std::string failed = "Codex probe failed: ";
    const std::string timedOut = "Nothing was measured. Try again, or try a smaller repository.";

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
    const ScopedEnvironment codexHome_{"CODEX_HOME", ""};
};

/// The count and the window, or the reason without its usual beginning.
std::string summary(const CodexScanOutcome& outcome) {
    if (const auto* reason = outcome.reason()) return reason->substr(reason->find(": ") + 2);
    return std::to_string(outcome.result()->total) + " of " +
           std::to_string(*outcome.result()->contextWindow);
}

TEST_F(CodexProbeTest, TurnsEverySessionIntoACountOrAReason) {
    const std::string none = "codex reported no token_count event. ";
    const std::vector<std::pair<CodexProbeRunner::SessionOutput, std::string>> cases{
        {{report, 0, false}, "12345 of 272000"},
        {{"x\n" + report, 1, false}, "12345 of 272000"},
        {{report, 15, true}, timedOut},
        {{"Error: not signed in\n", 1, false},
         "codex exited with code 1 and reported no token_count event. Error: not signed in."},
        {{" \n", 0, false}, none + "(no output)."},
        {{"1\n2\n\n \t\n 3 \r\n4.\u2028", 0, false}, none + "2 3 4."},
        {{std::string(700, 'x'), 0, false}, none + std::string(500 - none.size(), 'x') + "…"}};
    scriptCodex("");
    for (const auto& [session, expected] : cases) {
        CodexProbeRunner runner;
        runner.executor = [&output = session](const auto&, const auto&, const auto&) { return output; };
        EXPECT_EQ(summary(CodexProbe(runner).run(home.path(), {})), expected);
    }
}

TEST_F(CodexProbeTest, WordsEveryOtherFailureInOneLine) {
    const auto reason = [](auto error) { return CodexProbe::reason(std::make_exception_ptr(error)); };
    EXPECT_EQ(reason(ProbeError(ProbeError::CLINotFound{{"/a"}})),
              "Codex CLI not found — install `codex` to add a Codex column.");
    EXPECT_EQ(reason(CancellationError()), failed + "The operation was cancelled.");
    EXPECT_EQ(reason(std::runtime_error(" a\n\n\tb \r c… ")), failed + "a b c…");
    EXPECT_EQ(reason(7), failed + "Unknown error.");
}

TEST_F(CodexProbeTest, RunsOneReadOnlySessionInTheFolder) {
    scriptCodex("printf '%s\\n' \"$PWD\" \"$@\" > \"$HOME/call\"; echo noise; echo '" + report +
                "' >&2; exit 3");
    EXPECT_EQ(summary(CodexProbe().run(home.path(), {})), "12345 of 272000");
    EXPECT_EQ(readFile(home.path("call")),
              home.path() + "\nexec\n--json\n--skip-git-repo-check\n--ephemeral\n-s\nread-only\n-C\n" +
                  home.path() + "\nReply with exactly: OK. Do not run any command or use any tool.\n");

    writeExecutable(cli, "#!/no/such/interpreter\n");
    const std::string unstarted = summary(CodexProbe().run(home.path(), {}));
    EXPECT_TRUE(unstarted.starts_with("Could not start " + cli + ": ")) << unstarted;
}

TEST_F(CodexProbeTest, IsEndedByItsLimitAndByACancel) {
    scriptCodex("echo '" + report + "'; touch \"$HOME/started\"; exec sleep 60");
    EXPECT_EQ(summary(CodexProbe({}, 0.3).run(home.path(), {})), timedOut);

    std::filesystem::remove(home.path("started"));
    StopSource stop;
    auto outcome =
        std::async(std::launch::async, [&] { return CodexProbe().run(home.path(), stop.token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.requestStop();
    EXPECT_EQ(summary(outcome.get()), "The operation was cancelled.");
}

} // namespace
