// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include "tests/Support/ManualUIThread.h"
#include "tests/Support/Testing.h"

#include <condition_variable>

namespace {

using enum ToolReadiness;
using Result = ReadinessChecker::Result;

TEST(ToolReadiness, IsMadeBackFromItsLabel) {
    for (const auto readiness : {checking, notInstalled, signedOut, ready, unknown}) {
        EXPECT_EQ(toolReadinessFromLabel(label(readiness)), readiness);
        EXPECT_EQ(blocksScan(readiness), readiness < ready) << label(readiness);
    }
    EXPECT_EQ(toolReadinessFromLabel("ready"), std::nullopt);
}

TEST(ReadinessChecker, JudgesTheAnswersOfTheTools) {
    using ReadinessChecker::claudeStatus, ReadinessChecker::codexStatus;
    EXPECT_EQ(claudeStatus(R"({"loggedIn": true})", 0), ready);
    EXPECT_EQ(claudeStatus(R"({"loggedIn": true})", 1), unknown);
    for (const int exitCode : {0, 1}) {
        EXPECT_EQ(claudeStatus("{\n  \"loggedIn\": false,\n  \"authMethod\": \"none\"\n}\n", exitCode),
                  signedOut);
        for (const auto* text :
             {"", "\tNot logged in \r\n", "WARNING: x\nNot logged in", "Logged in using x\nNot logged in"})
            EXPECT_EQ(codexStatus(text, exitCode), *text == 0 ? unknown : signedOut) << text;
    }
    for (const auto* text :
         {R"({"loggedIn": "true"})", R"({"loggedIn": 1})", R"({"a": {"loggedIn": true}})",
          R"([{"loggedIn": true}])", "Welcome\n{\"loggedIn\": true}", "error: unknown option", ""})
        EXPECT_EQ(claudeStatus(text, 0), unknown) << text;
    for (const auto* text : {"  Logged in using ChatGPT\n", "noise\u2028Logged in using an API key - sk-1"}) {
        EXPECT_EQ(codexStatus(text, 0), ready) << text;
        EXPECT_EQ(codexStatus(text, 1), unknown) << text;
    }
    for (const auto* text :
         {"Not logged in yet", "Logged in using", "You are Logged in using x", "No API key configured"})
        EXPECT_EQ(codexStatus(text, 0), unknown) << text;
}

TEST(ReadinessChecker, UnderstandsTheAnswerOfEveryVersion) {
    struct Case {
        const char* name;
        const char* output;
        int exitCode;
        ToolReadiness expected;
    };
    for (
        const Case& c : std::vector<Case>{
            {"by subscription", R"({"loggedIn":true,"authMethod":"claude.ai","apiProvider":"firstParty"})", 0,
             ready},
            {"by key",
             R"({"loggedIn":true,"authMethod":"api_key","apiProvider":"firstParty","apiKeySource":"X"})", 0,
             ready},
            {"by a helper",
             R"({"loginExpiresAt":null,"loggedIn":true,"authMethod":"api_key_helper","apiKeySource":"apiKeyHelper"})",
             0, ready},
            {"by a third party", R"({"loggedIn":true,"authMethod":"third_party","apiProvider":"bedrock"})", 0,
             ready},
            {"signed out",
             R"({"loggedIn":false,"authMethod":"none","configDirectory":"/c","loginExpiresAt":null})", 1,
             signedOut},
            {"a version without the command", "", 1, unknown}})
        EXPECT_EQ(ReadinessChecker::claudeStatus(c.output, c.exitCode), c.expected) << c.name;

    const std::string warning = "\nWARNING: proceeding, even though we could not create PATH aliases: no\n";
    for (const Case& c : std::vector<Case>{
             {"by key", "Logged in using an API key - ***\n", 0, ready},
             {"by key, newer",
              "API key configured - ***\nAuthentication is checked when you send a request.\n", 0, ready},
             {"by key, bare", "API key configured\n", 0, ready},
             {"by key, failed", "API key configured - ***\n", 1, unknown},
             {"by subscription", "Logged in using ChatGPT\n", 0, ready},
             {"signed out", "Not logged in\n", 1, signedOut},
             {"another word", "API key configured-for nobody\n", 0, unknown}})
        EXPECT_EQ(ReadinessChecker::codexStatus(warning + c.output, c.exitCode), c.expected) << c.name;
}

/// A home folder with both tools, which do what the test's scripts say.
class ReadinessCheckerRun : public testing::Test {
protected:
    void script(const std::string& claude, const std::string& codex) {
        writeExecutable(home.path(".local/bin/claude"), "#!/bin/sh\n" + claude + "\n");
        writeExecutable(home.path(".local/bin/codex"), "#!/bin/sh\n" + codex + "\n");
    }

    const TemporaryFolder home;

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
    const ScopedEnvironment codexHome_{"CODEX_HOME", ""};
};

TEST_F(ReadinessCheckerRun, AsksBothToolsAtTheSameTime) {
    const auto waitForTheOther = [](const std::string& own, const std::string& other) {
        return "touch \"$HOME/" + own + "\"\nuntil [ -e \"$HOME/" + other + "\" ]; do sleep 0.01; done\n";
    };
    script(waitForTheOther("a", "b") + "[ \"$*\" = 'auth status --json' ] && echo '{\"loggedIn\":true}'",
           waitForTheOther("b", "a") + "[ \"$*\" = 'login status' ] && echo 'Not logged in' >&2; exit 1");
    EXPECT_EQ(ReadinessChecker::check({}), (Result{ready, signedOut}));
}

TEST_F(ReadinessCheckerRun, RefusesNoVersionThatOverlooksAKeyInItsSettings) {
    for (const auto& [version, expected] : {std::pair("echo '2.1.44 (Claude Code)'", signedOut),
                                            {"echo '2.1.45 (Claude Code)'", unknown},
                                            {"echo '2.1.50 (Claude Code)'", unknown},
                                            {"echo '2.1.51 (Claude Code)'", signedOut},
                                            {"echo '2.1.330 (Claude Code)'", signedOut},
                                            {"echo '12.1.48'", signedOut},
                                            {"exit 1", signedOut}}) {
        script(std::string("if [ \"$*\" = --version ]; then ") + version +
                   "; exit; fi\necho '{\"loggedIn\":false,\"authMethod\":\"none\"}'; exit 1",
               "");
        EXPECT_EQ(ReadinessChecker::check({}).claude, expected) << version;
    }
}

TEST_F(ReadinessCheckerRun, RefusesNoCodexWithAProviderOfItsOwn) {
    script("echo '{\"loggedIn\":true}'", "echo 'Not logged in' >&2; exit 1");
    makeFolder(home.path(".codex"));
    for (const auto& [toml, expected] : {std::pair("model_provider = \"lab\"", unknown),
                                         {"model_provider = \"openai\"", signedOut},
                                         {"model = \"lab\"", signedOut},
                                         {"model_provider = \"lab", signedOut}}) {
        writeFile(home.path(".codex/config.toml"), toml);
        EXPECT_EQ(ReadinessChecker::check({}).codex, expected) << toml;
    }
}

TEST_F(ReadinessCheckerRun, LeavesWhatCannotBeAskedUnverified) {
    script("echo '{\"loggedIn\":true}'; sleep 2 &", "");
    writeExecutable(home.path(".local/bin/codex"), "#!/no/such/interpreter\n");
    EXPECT_EQ(ReadinessChecker::check({}), (Result{unknown, unknown}));

    script("touch \"$HOME/started\"; exec sleep 60", "exec sleep 60");
    StopSource stop;
    auto result = std::async(std::launch::async, [&] { return ReadinessChecker::check(stop.token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.requestStop();
    EXPECT_EQ(result.get(), (Result{unknown, unknown}));
}

/// A check that goes on until it is let go or stopped.
class HeldCheck {
public:
    Result operator()(const StopToken& stop) {
        std::unique_lock lock(mutex_);
        ++started;
        waitOrStop(wake_, lock, stop, [this] { return released_; });
        if (stop.isStopRequested()) wasStopped = true;
        return {ready, notInstalled};
    }
    void release() {
        const std::lock_guard lock(mutex_);
        released_ = true;
        wake_.notify_all();
    }

    std::atomic<int> started = 0;
    std::atomic<bool> wasStopped = false;

private:
    std::mutex mutex_;
    std::condition_variable wake_;
    bool released_ = false;
};

TEST(ReadinessModel, RunsOneCheckAtATimeAndTellsItsObservers) {
    ManualUIThread uiThread;
    HeldCheck check;
    ReadinessModel model(uiThread, std::ref(check));
    std::vector<bool> told;
    const auto subscription = model.observe([&] { told.push_back(model.isChecking()); });
    EXPECT_FALSE(model.permitsScan(false));

    model.recheck();
    model.recheck();
    EXPECT_TRUE(model.isChecking());
    EXPECT_EQ(model.claude(), checking);
    check.release();
    EXPECT_TRUE(uiThread.runUntil([&] { return !model.isChecking(); }));
    EXPECT_EQ(check.started, 1);
    EXPECT_EQ(std::pair(model.claude(), model.codex()), std::pair(ready, notInstalled));
    EXPECT_TRUE(model.permitsScan(false));
    EXPECT_FALSE(model.permitsScan(true));

    model.recheck();
    EXPECT_EQ(model.claude(), ready); // the last answer stays while the next one is awaited
    EXPECT_FALSE(model.permitsScan(false));
    EXPECT_TRUE(uiThread.runUntil([&] { return !model.isChecking(); }));
    EXPECT_EQ(told, (std::vector<bool>{true, false, true, false}));
}

TEST(ReadinessModel, StopsItsCheckWhenItIsDestroyedAndIsNotTouchedAgain) {
    ManualUIThread uiThread;
    HeldCheck check;
    auto model = std::make_unique<ReadinessModel>(uiThread, std::ref(check));
    const auto subscription = model->observe([] {});
    model->recheck();
    EXPECT_TRUE(waitFor([&] { return check.started == 1; }));
    model.reset();
    EXPECT_TRUE(check.wasStopped);
    EXPECT_EQ(uiThread.runPending(), 1U);
}

TEST(ReadinessModel, PermitsAScanByWhatItsToolsNeed) {
    const std::vector<std::tuple<Result, bool, bool>> cases{
        // with and without Codex
        {{ready, notInstalled}, false, true}, {{unknown, unknown}, true, true},
        {{signedOut, ready}, false, false},   {{checking, ready}, false, false},
        {{ready, signedOut}, false, true},    {{ready, ready}, true, true}};
    for (const auto& [result, withCodex, without] : cases) {
        ManualUIThread uiThread;
        ReadinessModel model(uiThread, [result = result](const StopToken&) { return result; });
        model.recheck();
        EXPECT_TRUE(uiThread.runUntil([&] { return !model.isChecking(); }));
        EXPECT_EQ(model.permitsScan(true), withCodex) << label(result.claude) << ", " << label(result.codex);
        EXPECT_EQ(model.permitsScan(false), without) << label(result.claude) << ", " << label(result.codex);
    }
}

} // namespace
