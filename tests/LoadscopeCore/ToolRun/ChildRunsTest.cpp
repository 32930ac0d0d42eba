// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/PipeDrain.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/ProcessTermination.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "LoadscopeCore/ToolRun/ToolRun.h"
#include "tests/Support/Testing.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <sys/wait.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr ToolRun::Limits quick{.timeoutSeconds = 0.3, .killGraceSeconds = 0.3, .readerGraceSeconds = 0.3};
constexpr ToolRun::Limits patient{.timeoutSeconds = 50, .killGraceSeconds = 5, .readerGraceSeconds = 0.3};

int openDescriptors() {
    int count = 0;
    DIR* folder = opendir("/dev/fd");
    while (folder && readdir(folder))
        ++count;
    if (folder) closedir(folder);
    return count;
}

/// A process whose parent has gone stays as a zombie where nothing inherits it; it is not alive.
bool isAlive(int identifier) {
    if (kill(identifier, 0) != 0) return false;
    std::ifstream status("/proc/" + std::to_string(identifier) + "/stat");
    std::string text;
    if (!std::getline(status, text)) return true;
    const auto state = text.rfind(") ");
    return state == std::string::npos || text[state + 2] != 'Z';
}

/// Every test ends with the descriptors it began with and without a child, dead or alive.
class ChildRuns : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(openDescriptors(), descriptorsBefore_);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
    }

    ToolRun::Execution run(const std::vector<std::string>& arguments,
                           const ToolRun::Limits& limits = patient) {
        return ToolRun::execute(LOADSCOPE_TEST_CHILD, arguments, folder_.path(),
                                ProbeEnvironment::Tool::claude, limits);
    }

    std::string marker() const { return folder_.path() + "/ready"; }

    int announcedIdentifier() const {
        waitFor([this] { return access(marker().c_str(), F_OK) == 0; });
        int identifier = 0;
        std::ifstream(marker()) >> identifier;
        return identifier;
    }

private:
    const int descriptorsBefore_ = openDescriptors();
    TemporaryFolder folder_;
};

TEST_F(ChildRuns, CollectWhatTheChildWritesAndHowItEnded) {
    struct Case {
        const char* name;
        std::vector<std::string> arguments;
        int exitCode;
        std::size_t outputSize;
        std::size_t errorSize;
    };
    const std::vector<Case> cases{
        {"nothing", {"exit", "0"}, 0, 0, 0},
        {"exit status", {"exit", "42"}, 42, 0, 0},
        {"10 MB", {"flood", "10000000"}, 0, 10'000'000, 0},
        {"both streams at full speed", {"flood-both", "64000000"}, 0, 64'000'000, 64'000'000},
        {"more than is kept", {"flood", "70000000"}, 0, 64'000'000, 0},
        {"an error stream that is not UTF-8 reads as empty", {"invalid-error"}, 0, 4, 0},
        {"outputs closed long before the end", {"close-and-live"}, 7, 0, 0},
    };
    for (const Case& c : cases) {
        const auto execution = run(c.arguments);
        EXPECT_EQ(execution.exitCode, c.exitCode) << c.name;
        EXPECT_EQ(execution.standardOutput.size(), c.outputSize) << c.name;
        EXPECT_EQ(execution.standardError.size(), c.errorSize) << c.name;
        EXPECT_FALSE(execution.timedOut || execution.readersTimedOut) << c.name;
        EXPECT_EQ(execution.hasDropped, c.name == std::string("more than is kept")) << c.name;
    }
}

TEST_F(ChildRuns, CutNoCharacterOfAnOutputThatIsTooLong) {
    const std::vector<std::pair<std::size_t, std::string>> cases{
        {0, ""}, {1, "a"}, {2, "a"}, {3, "aé"}, {6, "aé"}, {7, "aé𝄞"}, {8, "aé𝄞b"}, {9, "aé𝄞b"}};
    for (const auto& [size, expected] : cases) {
        auto limits = patient;
        limits.mostBytesKept = size;
        const auto execution = ToolRun::execute("/bin/sh", {"-c", "printf %s aé𝄞b"}, "/",
                                                ProbeEnvironment::Tool::claude, limits);
        EXPECT_EQ(execution.standardOutput, expected) << size;
        EXPECT_EQ(execution.hasDropped, size < 8) << size;
    }
}

TEST_F(ChildRuns, EndAtTheTimeLimitWhateverTheChildDoes) {
    struct Case {
        const char* mode;
        bool timedOut;
        int exitCode;
    };
    for (const Case& c :
         {Case{"live", true, SIGTERM}, Case{"live-stubborn", true, SIGKILL}, Case{"stopped", true, SIGTERM},
          Case{"live-exit-zero", false, 0}, Case{"live-with-server", true, SIGTERM}}) {
        const auto start = Clock::now();
        const auto execution = run({c.mode, marker()}, quick);
        EXPECT_EQ(execution.timedOut, c.timedOut) << c.mode;
        EXPECT_EQ(execution.exitCode, c.exitCode) << c.mode;
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(10)) << c.mode;
        const int identifier = announcedIdentifier();
        EXPECT_TRUE(waitFor([&] { return !isAlive(identifier); })) << c.mode;
        unlink(marker().c_str());
    }
}

TEST_F(ChildRuns, EndEarlierWhenWhatTheyWriteSaysSo) {
    const auto runWatched = [&](const std::string& mode, double seconds, const ToolRun::Limits& limits) {
        const auto watcher = [seconds, seen = std::string()](std::span<const char> chunk) mutable {
            seen.append(chunk.data(), chunk.size());
            return seen == "partial" ? std::optional(seconds) : std::nullopt;
        };
        return ToolRun::execute(LOADSCOPE_TEST_CHILD, {mode, marker()}, "/", ProbeEnvironment::Tool::codex,
                                limits, {}, watcher);
    };
    const auto start = Clock::now();
    EXPECT_TRUE(runWatched("live", 0, patient).timedOut);
    EXPECT_FALSE(runWatched("live-exit-zero", -1, patient).timedOut);
    EXPECT_TRUE(runWatched("live", 1e9, quick).timedOut)
        << "a later end than the limit's own changes nothing";
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(20));
}

TEST_F(ChildRuns, GiveUpOnAGrandchildThatKeepsThePipeButKeepTheOutput) {
    // As much as the reader's buffer holds: more may be there, and nothing is.
    for (const std::string& kept : {std::string("kept"), std::string(PipeDrain::bufferSize, 'x')}) {
        const auto execution = run({"leave-server", marker(), kept});
        EXPECT_TRUE(execution.readersTimedOut);
        EXPECT_FALSE(execution.timedOut);
        EXPECT_EQ(execution.exitCode, 0);
        EXPECT_EQ(execution.standardOutput, kept);
        const int server = announcedIdentifier();
        EXPECT_TRUE(isAlive(server)) << "a normal exit leaves what the tool started alone";
        kill(server, SIGKILL);
        unlink(marker().c_str());
    }
}

TEST_F(ChildRuns, AreCancelledAtAnyMoment) {
    for (const char* mode : {"live", "live-stubborn", "stopped", "live-with-server"}) {
        StopSource stop;
        auto outcome = std::async(std::launch::async, [&] {
            return ProcessCancellation::run(stop.token(), [&] { return run({mode, marker()}); });
        });
        const int identifier = announcedIdentifier();
        const auto start = Clock::now();
        stop.requestStop();
        EXPECT_THROW((void)outcome.get(), CancellationError) << mode;
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(5)) << mode;
        EXPECT_TRUE(waitFor([&] { return !isAlive(identifier); })) << mode;
        unlink(marker().c_str());
    }
}

TEST_F(ChildRuns, AreNotStartedAfterACancelAndIgnoreOneThatComesLate) {
    StopSource before;
    before.requestStop();
    EXPECT_THROW((void)ProcessCancellation::run(before.token(),
                                                [&] {
                                                    return run({"live", marker()});
                                                }),
                 CancellationError);
    ProcessCancellation token;
    token.cancel();
    const auto child =
        std::make_shared<ChildProcess>(ChildProcess::Options{.executable = LOADSCOPE_TEST_CHILD});
    EXPECT_THROW(token.registerProcess(child, nullptr), CancellationError);
    EXPECT_EQ(child->processIdentifier(), 0);
    EXPECT_NE(access(marker().c_str(), F_OK), 0);

    StopSource after;
    EXPECT_EQ(ProcessCancellation::run(after.token(), [&] { return run({"exit", "3"}).exitCode; }), 3);
    after.requestStop();
}

TEST_F(ChildRuns, SurviveACancelInTheMiddleOfTheLaunch) {
    for (int round = 0; round < 20; ++round) {
        StopSource stop;
        std::thread canceller([&] {
            for (int spin = 0; spin < round * 100; ++spin)
                std::this_thread::yield();
            stop.requestStop();
        });
        EXPECT_THROW((void)ProcessCancellation::run(stop.token(),
                                                    [&] {
                                                        return run({"live", marker()});
                                                    }),
                     CancellationError);
        canceller.join();
    }
}

TEST_F(ChildRuns, StartCleanWhateverTheParentIsLike) {
    std::vector<int> leaking;
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit raised{std::min<rlim_t>(2000, limit.rlim_max), limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &raised);
    for (int count = 0; count < 1000; ++count)
        leaking.push_back(open("/dev/null", O_RDONLY)); // without close-on-exec
    const auto oldPipe = std::signal(SIGPIPE, SIG_IGN);
    const auto oldChild = std::signal(SIGCHLD, SIG_IGN);
    sigset_t blocked;
    sigset_t oldMask;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &oldMask);

    const auto execution = run({"describe"});
    const auto failing = run({"exit", "9"});

    pthread_sigmask(SIG_SETMASK, &oldMask, nullptr);
    std::signal(SIGPIPE, oldPipe);
    std::signal(SIGCHLD, oldChild);
    for (const int descriptor : leaking)
        close(descriptor);
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(execution.standardOutput, "ignored=0 blocked=0 descriptors=3 emptyInput=1 ownSession=1");
    EXPECT_EQ(failing.exitCode, 9);
}

TEST_F(ChildRuns, GoOnTwoHundredAtOnce) {
    std::vector<std::future<ToolRun::Execution>> runs;
    for (int count = 0; count < 200; ++count)
        runs.push_back(std::async(std::launch::async, [&, count] {
            return run({"exit", std::to_string(count)});
        }));
    for (int count = 0; count < 200; ++count)
        EXPECT_EQ(runs[static_cast<std::size_t>(count)].get().exitCode, count);
}

TEST_F(ChildRuns, SayWhyTheyCouldNotStart) {
    TemporaryFolder folder;
    const std::string missing = folder.path() + "/no such tool";
    const std::string plain = folder.path() + "/plain";
    const std::string foreign = folder.path() + "/foreign";
    std::ofstream(plain) << "text";
    std::ofstream(foreign) << "\x7f"
                              "ELF not for this machine";
    chmod(foreign.c_str(), 0755);
    struct Case {
        std::string cli;
        std::string repository;
        std::string expected;
    };
    const std::vector<Case> cases{
        {missing, folder.path(), "No such file or directory"},
        {folder.path(), folder.path(), "Permission denied"},
        {plain, folder.path(), "Permission denied"},
        {foreign, folder.path(), "Exec format error"},
        {LOADSCOPE_TEST_CHILD, missing, "No such file or directory (" + missing + ")"},
        {writeExecutable(folder.path("orphan"), "#! /no/such/node --flag\n"), folder.path(),
         "its interpreter /no/such/node does not exist."},
        {writeExecutable(folder.path("lost"), "#!/usr/bin/env no-such-node\n"), folder.path(),
         "its interpreter `no-such-node` was not found. It lies outside the PATH that was used: " +
             UserFolders::environment().at("PATH")},
    };
    for (const Case& c : cases) {
        try {
            (void)ToolRun::execute(c.cli, {}, c.repository, ProbeEnvironment::Tool::claude, patient);
            ADD_FAILURE() << c.cli;
        } catch (const ProbeError& error) {
            EXPECT_EQ(error, ProbeError(ProbeError::UnreadableOutput{"Could not start " + c.cli + ": " +
                                                                     c.expected}));
        }
    }
}

TEST_F(ChildRuns, AreOutOfReachOnceTheyHaveBeenReaped) {
    ChildProcess child({.executable = LOADSCOPE_TEST_CHILD, .arguments = {"exit", "5"}});
    EXPECT_FALSE(ChildProcess::Hold(child).isValid()) << "before the launch";
    child.launch();
    {
        const ChildProcess::Hold hold(child);
        ASSERT_TRUE(hold.isValid());
        ASSERT_TRUE(waitFor([&] { return !child.isRunning(); }));
        EXPECT_EQ(kill(child.processIdentifier(), 0), 0)
            << "the zombie keeps the identifier while it is held";
    }
    EXPECT_EQ(child.wait().status, 5);
    EXPECT_FALSE(ChildProcess::Hold(child).isValid());
    ProcessTermination::terminateThenKill(child, 5);
}

} // namespace
