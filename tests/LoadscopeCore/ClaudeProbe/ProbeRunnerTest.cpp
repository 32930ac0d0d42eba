// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>
#include <variant>

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

    std::variant<ProbeResult, ProbeError> run(StopToken stop = {}, const ProbeSettings& settings = {}) {
        try {
            return runner.run(home.path("repository"), settings, std::move(stop));
        } catch (const ProbeError& error) {
            return error;
        }
    }

    const std::string printAnswer = "cat \"$HOME/answer\"";
    const std::string assistantLine = R"({"type":"assistant","message":{"usage":{"input_tokens":19000}}})";
    const TemporaryFolder home;
    ProbeRunner runner;

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
};

std::string resultObject(const std::string& report, const std::string& usage = "{}",
                         const std::string& turns = "") {
    return R"({"is_error":false,"session_id":"abc","result":)" + nlohmann::json(report).dump() +
           R"(,"usage":)" + usage + (turns.empty() ? "" : R"(,"num_turns":)" + turns) + "}";
}

/// For example "transcript: 19000 with 1 row", or the name of the error's case.
std::string summary(const std::variant<ProbeResult, ProbeError>& outcome) {
    if (const auto* error = std::get_if<ProbeError>(&outcome)) return std::string(error->caseName());
    const auto& result = std::get<ProbeResult>(outcome);
    return rawValue(result.totalSource) + ": " + std::to_string(result.authoritativeTotal) +
           (result.contextWindow ? " of " + std::to_string(*result.contextWindow) : "") + " with " +
           std::to_string(result.selfReportedSlabs.size()) + " row";
}

TEST_F(ProbeRunnerTest, TrustsTheReportThenTheTranscriptThenASingleTurn) {
    const std::string table = "| Category | Tokens | % |\n| Alpha | 3.1k | 1% |\n";
    const std::string total = "**Tokens:** 18.4k / 200k (9%)\n" + table;
    const std::string usage =
        R"({"input_tokens":3,"cache_creation_input_tokens":1000,"cache_read_input_tokens":17000})";
    const std::string empty = R"({"input_tokens":0,"output_tokens":9})";
    struct Case {
        std::string output;
        bool hasTranscript;
        std::string expected;
    };
    const std::vector<Case> cases{
        {resultObject(total, usage, "3"), true, "contextCommand: 18400 of 200000 with 1 row"},
        {resultObject("Tokens: 5k / 1.2.3", usage), true, "contextCommand: 5000 with 0 row"},
        {resultObject(table, usage, "1"), true, "transcript: 19000 with 1 row"},
        {resultObject(table, usage, "1"), false, "cliUsage: 18003 with 1 row"},
        {resultObject(table, usage, "2"), false, "multiTurnUsageOnly"},
        {resultObject(table, usage), false, "unknownTurnCount"},
        {resultObject("", usage, "\"1\""), false, "unknownTurnCount"},
        {resultObject(table, usage, "0"), false, "noTranscript"},
        {resultObject("", usage, "0"), false, "unreadableContextReport"},
        {resultObject(table, empty, "1"), false, "noTranscript"},
        {resultObject("", empty, "3"), false, "unreadableContextReport"},
        {"hello", true, "unreadableOutput"}};
    scriptClaude(printAnswer);
    const std::string transcript = home.path("projects/-src-app/abc.jsonl");
    for (const auto& [output, hasTranscript, expected] : cases) {
        std::filesystem::remove(transcript);
        if (hasTranscript) writeFile(transcript, assistantLine);
        writeFile(home.path("answer"), output);
        EXPECT_EQ(summary(run()), expected) << output;
    }
}

TEST_F(ProbeRunnerTest, RefusesATotalThatWasNotCounted) {
    const std::string files = "\n### Memory Files\n| Type | Path | Tokens |\n|---|---|---|\n";
    const auto listed = [&](const std::string& name, std::size_t size, int tokens) {
        writeFile(home.path(name), std::string(size, 'x'));
        return "| User | " + home.path(name) + " | " + std::to_string(tokens) + " |\n";
    };
    const auto report = [](const std::string& rows, const std::string& rest) {
        return resultObject("Tokens: 2k / 200k\n| Category | Tokens | % |\n" + rows + rest,
                            R"({"input_tokens":900})", "1");
    };
    const std::string prompt = "| System prompt | 1k | 1% |\n";
    const std::string estimates = files + listed("a", 300, 100) + listed("b", 601, 200);
    const ProbeSettings usual{.signInVerified = true};
    const ProbeSettings accepting{.acceptsEstimate = true, .signInVerified = true};
    struct Case {
        std::string output;
        ProbeSettings settings;
        bool hasRoute;
        std::string expected;
    };
    const std::vector<Case> cases{{report("| Skills | 2k | 1% |\n", files + listed("c", 300, 0)), usual, true,
                                   "incompleteContextReport"},
                                  {report("| Skills | 2k | 1% |\n", files + listed("c", 300, 0)), accepting,
                                   true, "incompleteContextReport"},
                                  {report(prompt, estimates), usual, true, "incompleteContextReport"},
                                  {report(prompt, estimates), accepting, true, "estimate"},
                                  {report(prompt, estimates + listed("c", 300, 71)), usual, false, "counted"},
                                  {report(prompt, ""), usual, true, "counted"},
                                  {report(prompt, ""), usual, false, "may be an estimate"},
                                  {report(prompt, ""), {}, true, "may be an estimate"}};
    scriptClaude(printAnswer);
    for (const auto& [output, settings, hasRoute, expected] : cases) {
        writeFile(home.path("answer"), output);
        runner.hasNetworkRoute = [hasRoute = hasRoute] { return hasRoute; };
        const auto outcome = run({}, settings);
        if (const auto* result = std::get_if<ProbeResult>(&outcome)) {
            EXPECT_EQ(result->conditions.isEstimate      ? "estimate"
                      : result->conditions.mayBeEstimate ? "may be an estimate"
                                                         : "counted",
                      expected)
                << output;
            EXPECT_EQ(summary(outcome), "contextCommand: 2000 of 200000 with 1 row");
        } else {
            EXPECT_EQ(summary(outcome), expected) << output;
        }
    }
}

TEST_F(ProbeRunnerTest, ReadsOlderVersionsFromTheirTranscript) {
    const std::string table = "**Model:** claude-x\n**Tokens:** 63.9k / 200k\n| Category | Tokens | % |\n"
                              "| System prompt | 18.9k | 9% |\n| Autocompact buffer | 45.0k | 22% |\n";
    const std::string drawn = "⛁ ⛝   claude-x • 61k/200k tokens (30%)\n⛁ ⛝   ⛁ System prompt: 16k tokens\n"
                              "⛁ ⛝   ⛝ Reserved: 45.0k tokens (22.5%)\n";
    const std::string apart = "**Tokens:** 18.9k / 200k\n| Category | Tokens | % |\n"
                              "| System prompt | 18.9k | 9% |\n| Autocompact buffer | 45.0k | 22% |\n";
    const auto line = [](const std::string& report, const std::string& member = "") {
        return R"({"type":"user",)" + member + R"("version":"2.0.70","message":{"content":)" +
               nlohmann::json("<local-command-stdout>" + report + "</local-command-stdout>").dump() + "}}\n";
    };
    const std::string helper =
        R"({"type":"assistant","isSidechain":true,"message":{"usage":{"input_tokens":7}}})"
        "\n";
    struct Case {
        std::string transcript;
        std::string expected;
    };
    const std::vector<Case> cases{
        {helper + line(table), "contextCommand: 18900 of 200000 with 1 row, 45000 off, 2.0.70"},
        {line(drawn), "contextCommand: 16000 of 200000 with 1 row, 45000 off, 2.0.70"},
        {line(apart), "contextCommand: 18900 of 200000 with 1 row, 2.0.70"},
        {assistantLine + "\n" + line(table), "contextCommand: 18900 of 200000 with 1 row, 45000 off, 2.0.70"},
        {line("nothing") + assistantLine, "transcript: 19000 with 0 row, 1.9.9"},
        {line(table, R"("isSidechain":true,)") + assistantLine, "transcript: 19000 with 0 row, 1.9.9"},
        {helper, "unreadableContextReport"}};
    writeFile(home.path("answer"), resultObject(""));
    scriptClaude("[ \"$1\" != --version ] || exec echo '1.9.9 (Claude Code)'\n" + printAnswer);
    runner.transcriptRetries = 2;
    runner.transcriptRetryDelay = 3600; // of a version from before the report, nothing more is waited for
    for (const auto& [transcript, expected] : cases) {
        writeFile(home.path("projects/x/abc.jsonl"), transcript);
        const auto outcome = run();
        std::string told = summary(outcome);
        if (const auto* result = std::get_if<ProbeResult>(&outcome)) {
            if (const auto& off = result->conditions.takenOff)
                told += ", " + std::to_string(off->tokens) + " off";
            told += ", " + result->conditions.toolVersion.value_or("no version");
        } else {
            EXPECT_EQ(std::get<ProbeError>(outcome).detail(),
                      "This version of Claude Code (1.9.9) cannot report its startup context; update it.");
        }
        EXPECT_EQ(told, expected) << transcript;
    }
}

TEST_F(ProbeRunnerTest, SaysUnderWhichConditionsItMeasured) {
    writeFile(home.path("answer"), resultObject("**Model:** claude-x\n**Tokens:** 1 / 2"));
    scriptClaude(
        "[ \"$1\" != --version ] || exec echo '2.1.330 (Claude Code)'\n"
        "printf '%s\\n' \"${ANTHROPIC_API_KEY-none}\" \"${MCP_CONNECTION_NONBLOCKING-none}\" \"$6\" > "
        "\"$HOME/call\"\nwhile [ ! -e \"$HOME/asked\" ]; do sleep 0.01; done\n" +
        printAnswer);
    writeFile(home.path("asked"), "");
    const ScopedEnvironment key("ANTHROPIC_API_KEY", "secret");
    const auto conditions = [&](const ProbeSettings& settings) {
        return std::get<ProbeResult>(run({}, settings)).conditions;
    };
    const auto contains = [](const std::vector<std::string>& names) {
        return std::ranges::find(names, "ANTHROPIC_API_KEY") != names.end();
    };
    const auto usual = conditions({});
    EXPECT_EQ(readFile(home.path("call")), "none\nnone\nsonnet\n");
    EXPECT_TRUE(contains(usual.removedVariables) && !contains(usual.keptVariables));
    EXPECT_EQ(usual.model, "claude-x");

    const auto special = conditions({.model = "opus", .waitsForServers = true, .keepsEnvironment = true});
    EXPECT_EQ(readFile(home.path("call")), "secret\n0\nopus\n");
    EXPECT_TRUE(!contains(special.removedVariables) && contains(special.keptVariables));
    EXPECT_TRUE(special.waitedForServers && special.keptEnvironment);
    EXPECT_EQ(special.requestedModel, "opus");

    writeFile(home.path("answer"), R"({"is_error":true,"result":"Please run /login"})");
    EXPECT_TRUE(std::get<ProbeError>(run()).detail().find("ANTHROPIC_API_KEY") != std::string::npos);
    writeFile(home.path("answer"), R"([{"type":"system","claude_code_version":"2.1.99"},)" +
                                       resultObject("Tokens: 1 / 2").insert(1, R"("type":"result",)") + "]");
    EXPECT_EQ(conditions({}).toolVersion, "2.1.99");
}

TEST_F(ProbeRunnerTest, WaitsForNoVersionThatDoesNotCome) {
    writeFile(home.path("answer"), resultObject("Tokens: 1 / 2"));
    scriptClaude("if [ \"$1\" = --version ]; then\n  trap 'touch \"$HOME/asked-politely\"' TERM\n"
                 "  touch \"$HOME/waiting\"\n  while :; do sleep 0.01; done\nfi\n"
                 "while [ ! -e \"$HOME/waiting\" ]; do sleep 0.01; done\n" +
                 printAnswer);
    const auto outcome = run();
    EXPECT_EQ(std::get<ProbeResult>(outcome).conditions.toolVersion, std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(home.path("asked-politely"))); // which takes its time
}

TEST_F(ProbeRunnerTest, AsksOnlyForTheReportInTheRepository) {
    writeFile(home.path("answer"), resultObject("Tokens: 1 / 2"));
    scriptClaude("[ \"$1\" != --version ] || exit 1\nprintf '%s\\n' \"$PWD\" "
                 "\"$CLAUDECODE$ANTHROPIC_API_KEY\" \"$@\" > \"$HOME/call\"\n" +
                 printAnswer);
    const ScopedEnvironment inside("CLAUDECODE", "1");
    const ScopedEnvironment key("ANTHROPIC_API_KEY", "secret");
    EXPECT_TRUE(std::holds_alternative<ProbeResult>(run()));
    EXPECT_EQ(readFile(home.path("call")),
              home.path("repository") +
                  "\n\n-p\n/context\n--output-format\njson\n--model\nsonnet\n--permission-mode\nplan\n");
}

TEST_F(ProbeRunnerTest, TellsATimeOutFromOutputThatStillCounts) {
    const std::string good = resultObject("Tokens: 1 / 2");
    const std::string holdPipe = "\nsleep 3 &";
    const std::string endItself = "\ntrap 'exit 0' TERM; while :; do sleep 0.01; done";
    struct Case {
        std::string output;
        std::string script;
        double timeout;
        std::string expected;
    };
    const std::vector<Case> cases{{good, printAnswer + "\nexec sleep 60", 0.3, "timedOut"},
                                  {good, printAnswer + holdPipe, 50, "contextCommand: 1 of 2 with 0 row"},
                                  {good.substr(0, 20), printAnswer + holdPipe, 50, "timedOut"},
                                  {good, printAnswer + endItself, 0.3, "contextCommand: 1 of 2 with 0 row"},
                                  {good.substr(0, 20), printAnswer + endItself, 0.3, "timedOut"}};
    for (const auto& [output, script, timeout, expected] : cases) {
        writeFile(home.path("answer"), output);
        scriptClaude(script);
        runner.limits.timeoutSeconds = timeout;
        EXPECT_EQ(summary(run()), expected) << script;
    }
}

TEST_F(ProbeRunnerTest, SaysSoWhenTheOutputWasTooMuch) {
    writeFile(home.path("answer"), resultObject("Tokens: 1 / 2"));
    scriptClaude(printAnswer);
    runner.limits.mostBytesKept = 20;
    const auto outcome = run();
    ASSERT_TRUE(std::holds_alternative<ProbeError>(outcome));
    EXPECT_EQ(std::get<ProbeError>(outcome).detail(),
              "The tool printed more than 64 MB, which is too much to be read. It begins with:\n"
              "{\"is_error\":false,\"s");
    scriptClaude(printAnswer + "\necho a long complaint, which nobody needs >&2");
    runner.limits.mostBytesKept = 100;
    EXPECT_EQ(summary(run()), "contextCommand: 1 of 2 with 0 row");
}

TEST_F(ProbeRunnerTest, EndsTheToolWhenCancelled) {
    scriptClaude("touch \"$HOME/started\"\nexec sleep 60");
    StopSource stop;
    auto outcome = std::async(std::launch::async, [&] { return run(stop.token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.requestStop();
    EXPECT_THROW(outcome.get(), CancellationError);
    EXPECT_THROW(run(stop.token()), CancellationError);
}

TEST(ProbeRunner, IsPatientByDefault) {
    const ProbeRunner runner = ProbeRunner::forUser();
    EXPECT_EQ(runner.limits.timeoutSeconds, 300);
    EXPECT_EQ(runner.limits.killGraceSeconds, 5);
    EXPECT_EQ(runner.limits.readerGraceSeconds, 5);
    EXPECT_EQ(runner.transcriptRetries, 12);
    EXPECT_EQ(runner.transcriptRetryDelay, 0.4);
}

TEST_F(ProbeRunnerTest, WaitsForATranscriptThatComesLate) {
    runner.transcriptRetries = 4000;
    runner.transcriptRetryDelay = 0.005;
    auto usage = std::async(std::launch::async, [&] { return runner.transcriptUsage("abc", {}); });
    writeFile(home.path("projects/x/abc.jsonl"), assistantLine);
    EXPECT_EQ(usage.get(), (ProbeUsage{19000, 0, 0, 0}));

    runner.transcriptRetries = 0;
    EXPECT_EQ(runner.transcriptUsage("abc", {}), (ProbeUsage{19000, 0, 0, 0}));
    EXPECT_EQ(runner.transcriptUsage("other", {}), std::nullopt);

    runner.transcriptRetries = 2;
    runner.transcriptRetryDelay = 3600; // the stop must cut it short
    StopSource stop;
    usage = std::async(std::launch::async, [&] { return runner.transcriptUsage("other", stop.token()); });
    stop.requestStop();
    EXPECT_EQ(usage.get(), std::nullopt);
    EXPECT_EQ(runner.transcriptUsage("abc", stop.token()), std::nullopt);
}

TEST(TotalSource, IsMadeBackFromItsRawValueOnly) {
    std::string labels;
    for (const auto source : {TotalSource::contextCommand, TotalSource::transcript, TotalSource::cliUsage}) {
        EXPECT_EQ(totalSourceFromRawValue(rawValue(source)), source);
        labels += label(source) + "; ";
    }
    EXPECT_EQ(labels,
              "Claude Code's own `/context` report; session transcript: first assistant message usage; "
              "CLI result usage block (no transcript found); ");
    for (const auto* text : {"", "Transcript", "cliUsage ", "context"})
        EXPECT_EQ(totalSourceFromRawValue(text), std::nullopt) << text;
}

} // namespace
