// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitFor.h"

#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <variant>

namespace loadscope {
namespace {

/// A home folder with a `claude` that does what the test's script says.
class ProbeRunnerTest : public testing::Test {
protected:
    ProbeRunnerTest() {
        runner.projectsRoot = makeFolder(home.path("projects"));
        runner.transcriptRetries = 1;
        runner.limits = {50, 5, 0.3};
        makeFolder(home.path("repository"));
    }

    void scriptClaude(const std::string& commands) {
        writeExecutable(home.path(".local/bin/claude"), "#!/bin/sh\n" + commands + "\n");
    }

    /// `claude` answers with this text, exit code 0.
    void answer(const std::string& text) {
        writeFile(home.path("answer"), text);
        scriptClaude(printAnswer);
    }

    std::variant<ProbeResult, ProbeError> run(std::stop_token stop = {}) {
        try {
            return runner.run(home.path("repository"), std::move(stop));
        } catch (const ProbeError& error) {
            return error;
        }
    }

    const std::string printAnswer = "cat \"$HOME/answer\"";
    const TemporaryFolder home;
    ProbeRunner runner;

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
};

std::string resultObject(const std::string& report, const std::string& usage, const std::string& more = "") {
    return R"({"is_error":false,"session_id":"abc","result":)" + nlohmann::json(report).dump() +
           R"(,"usage":)" + usage + more + "}";
}

TEST_F(ProbeRunnerTest, TrustsTheReportThenTheTranscriptThenASingleTurn) {
    struct Case {
        const char* name;
        std::string output;
        bool hasTranscript;
        std::variant<ProbeResult, ProbeError> expected;
    };
    const std::string table = "| Category | Tokens | % |\n| Alpha | 3.1k | 1% |\n";
    const std::string total = "**Tokens:** 18.4k / 200k (9%)\n" + table;
    const std::string usage =
        R"({"input_tokens":3,"cache_creation_input_tokens":1000,"cache_read_input_tokens":17000})";
    const std::string noUsage =
        R"({"input_tokens":0,"cache_creation_input_tokens":0,"cache_read_input_tokens":0,"output_tokens":9})";
    const std::string cli = home.path(".local/bin/claude");
    const std::vector<SelfReportedSlab> rows{{"Alpha", 3100}};
    const auto noTranscript = ProbeError(ProbeError::NoTranscript{runner.projectsRoot});
    const auto unreadable = ProbeError(ProbeError::UnreadableContextReport{});
    const std::vector<Case> cases{
        {"the report's total", resultObject(total, usage, R"(,"num_turns":3)"), true,
         ProbeResult{"abc", 18400, TotalSource::contextCommand, rows, 0, cli, 200000}},
        {"a total without a window", resultObject("Tokens: 5k / 1.2.3", usage), true,
         ProbeResult{"abc", 5000, TotalSource::contextCommand, {}, 0, cli, {}}},
        {"the transcript", resultObject(table, usage, R"(,"num_turns":1)"), true,
         ProbeResult{"abc", 19000, TotalSource::transcript, rows, 0, cli, {}}},
        {"one turn", resultObject(table, usage, R"(,"num_turns":1)"), false,
         ProbeResult{"abc", 18003, TotalSource::cliUsage, rows, 0, cli, {}}},
        {"three turns", resultObject(table, usage, R"(,"num_turns":3)"), false,
         ProbeError(ProbeError::MultiTurnUsageOnly{3})},
        {"turns unknown", resultObject(table, usage), false, ProbeError(ProbeError::UnknownTurnCount{})},
        {"turns as a text", resultObject("", usage, R"(,"num_turns":"1")"), false,
         ProbeError(ProbeError::UnknownTurnCount{})},
        {"no turns, rows", resultObject(table, usage, R"(,"num_turns":0)"), false, noTranscript},
        {"no turns, no rows", resultObject("", usage, R"(,"num_turns":0)"), false, unreadable},
        {"an empty usage, rows", resultObject(table, noUsage, R"(,"num_turns":1)"), false, noTranscript},
        {"an empty usage, no rows", resultObject("", noUsage, R"(,"num_turns":3)"), false, unreadable},
        {"no result object", "hello", true, ProbeError(ProbeError::UnreadableOutput{"hello"})},
    };
    const std::string transcript = home.path("projects/-src-app/abc.jsonl");
    for (const auto& [name, output, hasTranscript, expected] : cases) {
        std::filesystem::remove(transcript);
        if (hasTranscript)
            writeFile(transcript, R"({"type":"assistant","message":{"usage":{"input_tokens":19000}}})");
        answer(output);
        auto outcome = run();
        if (auto* result = std::get_if<ProbeResult>(&outcome)) {
            EXPECT_GT(result->duration, 0) << name;
            result->duration = 0;
        }
        EXPECT_TRUE(outcome == expected) << name;
    }
}

TEST_F(ProbeRunnerTest, AsksOnlyForTheReportInTheRepository) {
    writeFile(home.path("answer"), resultObject("Tokens: 1 / 2", "{}"));
    scriptClaude("printf '%s\\n' \"$PWD\" \"$CLAUDECODE$ANTHROPIC_API_KEY\" \"$@\" > \"$HOME/call\"\n" +
                 printAnswer);
    const ScopedEnvironment inside("CLAUDECODE", "1");
    const ScopedEnvironment key("ANTHROPIC_API_KEY", "secret");
    EXPECT_TRUE(std::holds_alternative<ProbeResult>(run()));
    EXPECT_EQ(readFile(home.path("call")),
              home.path("repository") +
                  "\n\n-p\n/context\n--output-format\njson\n--model\nsonnet\n--permission-mode\nplan\n");
}

TEST_F(ProbeRunnerTest, TellsATimeOutFromOutputThatStillCounts) {
    const std::string good = resultObject("Tokens: 1 / 2", "{}");
    const std::string holdPipe = "\nsleep 3 &";
    struct Case {
        const char* name;
        std::string output;
        std::string script;
        double timeout;
        bool timesOut;
    };
    const std::vector<Case> cases{
        {"killed after a result", good, printAnswer + "\nexec sleep 60", 0.3, true},
        {"a grandchild keeps the pipe after a result", good, printAnswer + holdPipe, 50, false},
        {"a grandchild keeps the pipe after half a result", good.substr(0, 20), printAnswer + holdPipe, 50,
         true},
    };
    for (const auto& [name, output, script, timeout, timesOut] : cases) {
        writeFile(home.path("answer"), output);
        scriptClaude(script);
        runner.limits.timeoutSeconds = timeout;
        const auto outcome = run();
        const auto* error = std::get_if<ProbeError>(&outcome);
        EXPECT_EQ(error && error->is<ProbeError::TimedOut>(), timesOut) << name;
        EXPECT_EQ(error == nullptr, !timesOut) << name;
    }
}

TEST_F(ProbeRunnerTest, EndsTheToolWhenCancelled) {
    scriptClaude("touch \"$HOME/started\"\nexec sleep 60");
    std::stop_source stop;
    auto outcome = std::async(std::launch::async, [&] { return run(stop.get_token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.request_stop();
    EXPECT_THROW(outcome.get(), CancellationError);
    EXPECT_THROW(run(stop.get_token()), CancellationError);
}

TEST_F(ProbeRunnerTest, WaitsForATranscriptThatComesLate) {
    const std::string transcript = home.path("projects/x/abc.jsonl");
    runner.transcriptRetries = 4000;
    runner.transcriptRetryDelay = 0.005;
    auto usage = std::async(std::launch::async, [&] { return runner.transcriptUsage("abc", {}); });
    writeFile(transcript, R"({"type":"assistant","message":{"usage":{"input_tokens":7}}})");
    EXPECT_EQ(usage.get(), (ProbeUsage{7, 0, 0, 0}));

    runner.transcriptRetries = 0;
    EXPECT_EQ(runner.transcriptUsage("abc", {}), (ProbeUsage{7, 0, 0, 0}));
    EXPECT_EQ(runner.transcriptUsage("other", {}), std::nullopt);

    runner.transcriptRetries = 2;
    runner.transcriptRetryDelay = 3600; // the stop must cut it short
    std::stop_source stop;
    usage = std::async(std::launch::async, [&] { return runner.transcriptUsage("other", stop.get_token()); });
    stop.request_stop();
    EXPECT_EQ(usage.get(), std::nullopt);
    EXPECT_EQ(runner.transcriptUsage("abc", stop.get_token()), std::nullopt);
}

TEST(TotalSource, IsMadeBackFromItsRawValueOnly) {
    for (const auto source : {TotalSource::contextCommand, TotalSource::transcript, TotalSource::cliUsage})
        EXPECT_EQ(totalSourceFromRawValue(rawValue(source)), source);
    for (const auto* text : {"", "Transcript", "cliUsage ", "context"})
        EXPECT_EQ(totalSourceFromRawValue(text), std::nullopt) << text;
    EXPECT_EQ(label(TotalSource::contextCommand), "Claude Code's own `/context` report");
    EXPECT_EQ(label(TotalSource::transcript), "session transcript: first assistant message usage");
    EXPECT_EQ(label(TotalSource::cliUsage), "CLI result usage block (no transcript found)");
}

} // namespace
} // namespace loadscope
