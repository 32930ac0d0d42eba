// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include "tests/Support/ManualUIThread.h"
#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitFor.h"

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <mutex>

namespace loadscope {
namespace {

using enum ToolReadiness;
using Result = ReadinessChecker::Result;

TEST(ToolReadiness, HasLabelsFromWhichItIsMadeBack) {
    const std::vector<std::tuple<ToolReadiness, std::string, bool>> cases{
        {checking, "Checking…", true},
        {notInstalled, "Not installed", true},
        {signedOut, "Sign-in needed", true},
        {ready, "Signed in", false},
        {unknown, "Sign-in could not be verified", false}};
    for (const auto& [readiness, text, blocks] : cases) {
        EXPECT_EQ(label(readiness), text);
        EXPECT_EQ(toolReadinessFromLabel(text), readiness);
        EXPECT_EQ(blocksScan(readiness), blocks) << text;
    }
    EXPECT_EQ(toolReadinessFromLabel("ready"), std::nullopt);
}

TEST(ReadinessChecker, JudgesTheAnswerOfClaude) {
    const std::vector<std::tuple<std::string, int, ToolReadiness>> cases{
        {R"({"loggedIn": true})", 0, ready},
        {R"({"loggedIn": true})", 1, unknown},
        {"{\n  \"loggedIn\": false,\n  \"authMethod\": \"none\"\n}\n", 1, signedOut},
        {R"({"loggedIn": false})", 0, signedOut},
        {R"({"loggedIn": "true"})", 0, unknown},
        {R"({"loggedIn": 1})", 0, unknown},
        {R"({"loggedIn": null})", 0, unknown},
        {R"({"auth": {"loggedIn": true}})", 0, unknown},
        {R"([{"loggedIn": true}])", 0, unknown},
        {"Welcome\n{\"loggedIn\": true}", 0, unknown},
        {"error: unknown option '--json'", 1, unknown},
        {"", 0, unknown}};
    for (const auto& [output, exitCode, expected] : cases)
        EXPECT_EQ(ReadinessChecker::claudeStatus(output, exitCode), expected) << output;
}

TEST(ReadinessChecker, JudgesTheAnswerOfCodex) {
    const std::vector<std::tuple<std::string, int, ToolReadiness>> cases{
        {"\nWARNING: x\nNot logged in\n", 1, signedOut},
        {"\tNot logged in \r\n", 0, signedOut},
        {"Logged in using ChatGPT\nNot logged in", 0, signedOut},
        {"Not logged in yet", 1, unknown},
        {"  Logged in using ChatGPT\n", 0, ready},
        {"  Logged in using ChatGPT\n", 1, unknown},
        {"noise\u2028Logged in using an API key - sk-1", 0, ready},
        {"Logged in using", 0, unknown},
        {"You are Logged in using ChatGPT", 0, unknown},
        {"API key configured - sk-1", 0, unknown},
        {"\n", 0, unknown}};
    for (const auto& [output, exitCode, expected] : cases)
        EXPECT_EQ(ReadinessChecker::codexStatus(output, exitCode), expected) << output;
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
};

TEST_F(ReadinessCheckerRun, AsksBothToolsAtTheSameTime) {
    const auto waitForTheOther = [](const std::string& own, const std::string& other) {
        return "touch \"$HOME/" + own + "\"\nuntil [ -e \"$HOME/" + other + "\" ]; do sleep 0.01; done\n";
    };
    script(waitForTheOther("a", "b") + "[ \"$*\" = 'auth status --json' ] && echo '{\"loggedIn\":true}'",
           waitForTheOther("b", "a") + "[ \"$*\" = 'login status' ] && echo 'Not logged in' >&2; exit 1");
    EXPECT_EQ(ReadinessChecker::check({}), (Result{ready, signedOut}));
}

TEST_F(ReadinessCheckerRun, LeavesWhatCannotBeAskedUnverified) {
    script("echo '{\"loggedIn\":true}'; sleep 2 &", "");
    writeExecutable(home.path(".local/bin/codex"), "#!/no/such/interpreter\n");
    EXPECT_EQ(ReadinessChecker::check({}), (Result{unknown, unknown}));

    script("touch \"$HOME/started\"; exec sleep 60", "exec sleep 60");
    std::stop_source stop;
    auto result = std::async(std::launch::async, [&] { return ReadinessChecker::check(stop.get_token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.request_stop();
    EXPECT_EQ(result.get(), (Result{unknown, unknown}));
}

/// A check that goes on until it is let go or stopped.
class HeldCheck {
public:
    Result operator()(const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        ++started;
        wake_.wait(lock, stop, [this] { return released_; });
        if (stop.stop_requested()) wasStopped = true;
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
    std::condition_variable_any wake_;
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
        {{ready, notInstalled}, false, true}, {{ready, notInstalled}, true, false},
        {{unknown, unknown}, true, true},     {{signedOut, ready}, false, false},
        {{notInstalled, ready}, true, false}, {{checking, ready}, false, false},
        {{ready, signedOut}, true, false},    {{ready, ready}, true, true}};
    for (const auto& [result, includeCodex, permits] : cases) {
        ManualUIThread uiThread;
        ReadinessModel model(uiThread, [result = result](const std::stop_token&) { return result; });
        model.recheck();
        EXPECT_TRUE(uiThread.runUntil([&] { return !model.isChecking(); }));
        EXPECT_EQ(model.permitsScan(includeCodex), permits)
            << label(result.claude) << ", " << label(result.codex);
    }
}

TEST(ReadinessModel, TakesACheckThatThrowsAsUnverified) {
    ManualUIThread uiThread;
    ReadinessModel model(uiThread, [](const std::stop_token&) -> Result { throw std::bad_alloc(); });
    model.recheck();
    EXPECT_TRUE(uiThread.runUntil([&] { return !model.isChecking(); }));
    EXPECT_EQ(model.claude(), unknown);
}

} // namespace
} // namespace loadscope
