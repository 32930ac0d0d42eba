// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/CodexProbe/CodexSessionText.h"
#include "LoadscopeCore/CodexProbe/ReconnectionWatch.h"
#include "tests/Support/Testing.h"

namespace {

using CodexOutputParser::Header;

const std::string older = R"({"approval":"never","model":"gpt-5-codex","workdir":"/w","provider":"stub"})"
                          "\n{\"prompt\":\"hi\"}\n"
                          R"({"id":"0","msg":{"type":"task_started","model_context_window":272000}})"
                          "\n";
const std::string newer = "{\"type\":\"thread.started\",\"thread_id\":\"01\"}\n{\"type\":\"turn.started\"}\n";
const std::string counted = "{\"type\":\"turn.completed\",\"usage\":{\"input_tokens\":12345}}\n";
const std::string refusal =
    "error: unexpected argument '--ephemeral' found\n\n  tip: a similar argument exists: "
    "'--experimental-json'\n\nUsage: codex exec --json [PROMPT]\n\nFor more "
    "information, try '--help'.\n";

std::string reconnecting(const std::string& attempt) {
    return R"({"type":"error","message":"Reconnecting... )" + attempt + " (stream disconnected)\"}\n";
}

TEST(CodexVersions, TellTheirModelAndWindowAtTheBeginningOrNot) {
    const std::vector<std::pair<std::string, Header>> cases{
        {older, {"gpt-5-codex", 272000}},
        {newer + counted, {}},
        {"warning\n{\"model\":7}\n{\"model\":\"\"}\n{\"model\":\"b\"}\n{\"model\":\"c\"}", {"b", {}}},
        {R"({"item":{"model":"no","model_context_window":1},"msg":{"model":"no"}})", {}},
        {R"({"model_context_window":0,"msg":{"model_context_window":-1}})", {}},
        {std::string(70'000, ' ') + older, {}},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(CodexOutputParser::header(text), expected) << text.substr(0, 100);
}

TEST(CodexVersions, SayWhyTheyFailed) {
    using CodexSessionText::complaint, CodexSessionText::lastError, CodexSessionText::refusesEphemeral;
    const std::string offline =
        newer + reconnecting("2/5") + reconnecting("5/5") +
        R"({"type":"item.completed","item":{"type":"error","message":"Falling back"}})"
        "\n2026-11-23T11:32:33Z \"error\" transport\n";
    EXPECT_EQ(lastError(offline), "Reconnecting... 5/5 (stream disconnected)");
    EXPECT_EQ(lastError("{\"type\" : \"error\", \"message\" : \"first\"}\r\n{\"type\":\"error\"}"), "first");
    for (const auto& text : {newer, counted, std::string(R"({"message":"error","type":"turn.failed"})"),
                             std::string(R"([{"type":"error","message":"x"}])"), std::string("\"error\"")})
        EXPECT_EQ(lastError(text), std::nullopt) << text;

    EXPECT_TRUE(refusesEphemeral("noise\n " + refusal));
    EXPECT_FALSE(refusesEphemeral("error: unexpected argument '--json' found\n" + refusal));
    EXPECT_EQ(complaint("no error: x\n\terror: y \nerror: z"), "error: y");
    EXPECT_EQ(complaint("no error: x error: y"), std::nullopt);
}

TEST(ReconnectionWatch, SeesTheLastOneHoweverItArrives) {
    const std::string last = reconnecting("5/5");
    struct Case {
        const char* name;
        std::string text;
        bool expected;
    };
    for (const Case& c :
         std::vector<Case>{{"the last", newer + reconnecting("4/5") + last, true},
                           {"of three", reconnecting("3/3"), true},
                           {"not yet", reconnecting("4/5") + reconnecting("1/10"), false},
                           {"an unfinished line", last.substr(0, last.size() - 1), false},
                           {"another kind of event",
                            R"({"type":"item","message":"Reconnecting... 5/5"})"
                            "\n",
                            false},
                           {"quoted by the model",
                            R"({"type":"error","message":"It said: Reconnecting... 5/5"})"
                            "\n",
                            false},
                           {"no numbers", reconnecting("") + reconnecting("5") + reconnecting("0/0"), false},
                           {"after an endless line", std::string(200'000, 'x') + "\n" + last, true},
                           {"in an endless line", std::string(200'000, 'x') + last, false}}) {
        for (const std::size_t size : {c.text.size(), std::size_t{1000}, std::size_t{7}}) {
            ReconnectionWatch watch;
            int seen = 0;
            for (std::size_t i = 0; i < c.text.size(); i += size)
                seen += watch.sawLast(std::string_view(c.text).substr(i, size)) ? 1 : 0;
            seen += watch.sawLast(c.expected ? std::string_view(last) : std::string_view()) ? 1 : 0;
            EXPECT_EQ(seen, c.expected ? 1 : 0) << c.name << ", " << size;
        }
    }
}

/// A home folder with a `codex` that prints what the test says.
class CodexVersion : public testing::Test {
protected:
    const CodexProbeResult* measure(const CodexProbeRunner::SessionOutput& session,
                                    const CodexConfiguration& configuration) {
        CodexProbeRunner runner;
        runner.executor = [&](const auto&, const auto&, const auto&) { return session; };
        runner.configuration = [&] { return configuration; };
        outcome = CodexProbe(runner).run(home.path(), {});
        return outcome.result();
    }

    void script(const std::string& commands) {
        writeExecutable(
            cli, "#!/bin/sh\n[ $1 != --version ] || exec echo \"$VERSION\"\n[ $1 = exec ] || exit 2\n" +
                     commands + "\n");
    }

    const TemporaryFolder home;
    const std::string cli = home.path(".local/bin/codex");
    CodexScanOutcome outcome = CodexScanOutcome::unavailable("");

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
    const ScopedEnvironment codexHome_{"CODEX_HOME", home.path()};
};

TEST_F(CodexVersion, TakesFromTheConfigurationWhatItsStreamDoesNotTell) {
    using Window = std::optional<std::int64_t>;
    struct Case {
        std::string output;
        CodexConfiguration configuration;
        std::optional<std::string> model;
        Window window;
    };
    script("");
    for (const Case& c : std::vector<Case>{
             {older + counted, {"gpt-b", 64000}, "gpt-5-codex", 272000},
             {newer + counted, {"gpt-b", 64000}, "gpt-b", 64000},
             {newer + counted, {}, {}, {}},
             {newer + counted, {std::string(81, 'm')}, {}, {}},
             {older + R"({"usage":{"input_tokens":1},"model_context_window":8})", {}, "gpt-5-codex", 8}}) {
        const auto* const result = measure({c.output, 0, false}, c.configuration);
        ASSERT_NE(result, nullptr) << c.output;
        EXPECT_EQ(result->model, c.model) << c.output;
        EXPECT_EQ(result->contextWindow, c.window) << c.output;
    }
    script("printf '" + counted + "'");
    writeFile(home.path("config.toml"), "model = \"gpt-c\"\n");
    EXPECT_EQ(CodexProbe().run(home.path(), {}).result()->model, "gpt-c");
}

TEST_F(CodexVersion, IsAskedForBesideTheSession) {
    CodexProbeRunner runner;
    runner.executor = [&](const auto&, const auto&, const auto&) {
        return CodexProbeRunner::SessionOutput{newer + counted, 0, false};
    };
    runner.versionSeconds = 30;
    script("");
    for (const auto& [printed, expected] :
         {std::pair("codex-cli 0.169.0", std::optional<std::string>("0.169.0")),
          {"codex-cli 0.58.0-alpha.3", "0.58.0-alpha.3"},
          {"WARNING: no version", std::nullopt}}) {
        const ScopedEnvironment version("VERSION", printed);
        outcome = CodexProbe(runner).run(home.path(), {});
        EXPECT_EQ(outcome.result()->toolVersion, expected) << printed;
    }
}

TEST_F(CodexVersion, IsStartedOnceMoreWhenItDoesNotKnowTheFlag) {
    const auto start = [&](const std::string& without) {
        script("echo \"$4\" >>\"$HOME/calls\"; case $4 in --ephemeral) printf '%s' \"" + refusal +
               "\" >&2; exit 2;; esac; " + without);
        outcome = CodexProbe().run(home.path(), {});
    };
    start("[ $# = 8 ] && printf '" + older + counted + "'");
    ASSERT_NE(outcome.result(), nullptr) << *outcome.reason();
    EXPECT_EQ(outcome.result()->total, 12345);
    EXPECT_TRUE(outcome.result()->keepsRecord);
    EXPECT_EQ(readFile(home.path("calls")), "--ephemeral\n-s\n");

    start("echo 'error: no space'; for n in 1 2 3 4; do echo hint $n; done; exit 2");
    ASSERT_NE(outcome.reason(), nullptr);
    EXPECT_EQ(*outcome.reason(), "Codex probe failed: codex exited with code 2 and reported no token_count "
                                 "event. error: no space hint 2 hint 3 hint 4.");
    EXPECT_EQ(readFile(home.path("calls")), "--ephemeral\n-s\n--ephemeral\n-s\n") << "no third try";
}

TEST_F(CodexVersion, IsNotWaitedForWithoutANetwork) {
    const auto reason = [&](const std::string& attempt, double limit, const std::string& after) {
        script("printf '" + newer + "'; echo '" + reconnecting("2/5") + reconnecting(attempt) + "'; " +
               after);
        return *CodexProbe({}, limit, 0.1).run(home.path(), {}).reason();
    };
    const std::string failed = "Codex probe failed: Reconnecting... ";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(reason("5/5", 60, "exec sleep 60"), failed + "5/5 (stream disconnected).");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(reason("4/5", 0.3, "exec sleep 60"), failed + "4/5 (stream disconnected).");
    EXPECT_EQ(reason("5/5", 60, "for n in 1 2 3 4; do echo ERROR >&2; done; exit 1"),
              failed + "5/5 (stream disconnected).");
}

} // namespace
