// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/Spawn.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace loadscope {
namespace {

/// Both ways to start a program have to do the same.
class SpawnTest : public ::testing::TestWithParam<int (*)(const Spawn::Request&, pid_t&)> {
protected:
    struct Outcome {
        int failure = 0;
        std::string output;
        int status = -1;
    };

    static Outcome run(std::string executable, std::string script,
                       const std::optional<std::string>& folder = {}, bool hasError = false) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const FileDescriptor input(ends[0]);
        FileDescriptor output(ends[1]);
        std::string dash = "-c";
        std::string name = "NAME=a value";
        char* const arguments[] = {executable.data(), dash.data(), script.data(), nullptr};
        char* const environment[] = {name.data(), nullptr};
        Outcome outcome;
        pid_t child = 0;
        outcome.failure = GetParam()(
            {executable, arguments, environment, output.get(), hasError ? output.get() : -1, folder}, child);
        output = {};
        char buffer[512];
        for (ssize_t count = 0; (count = read(input.get(), buffer, sizeof buffer)) > 0;)
            outcome.output.append(buffer, static_cast<std::size_t>(count));
        if (outcome.failure == 0) waitpid(child, &outcome.status, 0);
        return outcome;
    }
};

TEST_P(SpawnTest, StartsTheProgramWhereAndWithWhatItIsTold) {
    const FileDescriptor inherited(open("/", O_RDONLY)); // not closed on exec by itself
    ASSERT_TRUE(inherited.isOpen());
    const auto before = std::signal(SIGTERM, SIG_IGN);
    sigset_t blocked;
    sigset_t old;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, &old);
    const Outcome outcome =
        run("/bin/sh",
            "pwd; echo $NAME; readlink /proc/self/fd/0; ls /proc/self/fd | wc -l; "
            "grep '^SigBlk' /proc/self/status; test $(cut -d' ' -f6 /proc/$$/stat) = $$ && echo own session; "
            "echo lost >&2; kill -TERM $$",
            "/usr");
    pthread_sigmask(SIG_SETMASK, &old, nullptr);
    std::signal(SIGTERM, before);
    EXPECT_EQ(outcome.failure, 0);
    // Three descriptors, and the one with which they are listed.
    EXPECT_EQ(outcome.output, "/usr\na value\n/dev/null\n4\nSigBlk:\t0000000000000000\nown session\n");
    EXPECT_TRUE(WIFSIGNALED(outcome.status) && WTERMSIG(outcome.status) == SIGTERM)
        << "an ignored signal is not ignored by what is started";
    EXPECT_EQ(run("/bin/sh", "echo heard >&2", {}, true).output, "heard\n");
}

TEST_P(SpawnTest, TellsWhatFailedAndLeavesNoProcess) {
    EXPECT_EQ(run("/nowhere/tool", "").failure, ENOENT);
    EXPECT_EQ(run("/bin/sh", "echo started", "/nowhere").failure, ENOENT);
    EXPECT_EQ(run("/", "").failure, EACCES);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

INSTANTIATE_TEST_SUITE_P(BothWays, SpawnTest, ::testing::Values(&Spawn::start, &Spawn::byFork));

} // namespace
} // namespace loadscope
