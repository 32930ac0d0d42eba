// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/LoginShell.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "tests/Support/Testing.h"

namespace {

using Answer = std::optional<std::string>;
using Clock = std::chrono::steady_clock;
using LoginShell::Start;

/// A home folder in which the shells of this computer find their start-up files.
class LoginShells : public testing::Test {
protected:
    /// Writes what every shell reads at a login.
    void profile(const std::string& commands) {
        for (const char* file : {".profile", ".zprofile"})
            writeFile(home.path(file), commands + "\n");
    }

    static std::vector<std::string> shells() {
        std::vector<std::string> found;
        for (const char* shell : {"/bin/sh", "/bin/bash", "/bin/dash", "/bin/zsh", "/usr/bin/zsh"})
            if (FilePath::isExecutableFile(shell)) found.emplace_back(shell);
        return found;
    }

    std::string fakeShell(const std::string& body) {
        return writeExecutable(home.path("shell"), "#!/bin/sh\n" + body + "\n");
    }

    void TearDown() override { SearchPath::forgetShell(); }

    const TemporaryFolder home;

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
};

TEST_F(LoginShells, AnswerWithinTheLimit) {
    struct Case {
        const char* body;
        Answer expected;
    };
    for (const Case& c : {Case{R"(printf '%s %s' "$1" "$2")", "-lc command -v claude"},
                          Case{"echo no; exit 1", {}}, Case{R"(printf '\377')", {}},
                          Case{"exec sleep 60", {}}, Case{"trap '' TERM; while :; do sleep 1; done", {}}}) {
        const auto start = Clock::now();
        EXPECT_EQ(LoginShell::output(fakeShell(c.body), "command -v claude", 0.5, 0.2), c.expected) << c.body;
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(10)) << c.body;
    }
    EXPECT_EQ(LoginShell::output(home.path("missing"), "true", 1, 1), std::nullopt);
}

TEST_F(LoginShells, AreKilledAtOnceByACancel) {
    const std::string shell = fakeShell("trap '' TERM\n: >\"$2\"\nsleep 60 & wait");
    const std::string started = home.path("started");
    StopSource stop;
    auto answer = std::async(std::launch::async, [&] {
        return ProcessCancellation::run(stop.token(),
                                        [&] { return LoginShell::output(shell, started, 50, 50); });
    });
    ASSERT_TRUE(waitFor([&] { return access(started.c_str(), F_OK) == 0; }));
    const auto start = Clock::now();
    stop.requestStop();
    EXPECT_THROW(answer.get(), CancellationError);
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(10));
}

TEST_F(LoginShells, AnswerBetweenTheMarkersWhateverElseIsPrinted) {
    profile(
        "alias printf=false\necho Welcome\nprintf 'no line feed \\377'\ntrap 'echo bye; false' EXIT\nset -v");
    for (const std::string& shell : shells()) {
        for (const Start start : {Start::login, Start::interactive}) {
            EXPECT_EQ(LoginShell::answer(shell, start, "'printf' %s \"$HOME\"", 50, 1), home.path()) << shell;
            EXPECT_EQ(LoginShell::answer(shell, start, "exit 0", 50, 1), std::nullopt) << shell;
        }
    }
    EXPECT_EQ(LoginShell::answer(fakeShell("echo /bin/claude"), Start::login, "true", 50, 1), std::nullopt);
    EXPECT_EQ(LoginShell::answer("/bin/sh", Start::login, "sleep 0.5; pwd", 50, 0.1).has_value(), true)
        << "slow";
}

TEST_F(LoginShells, FindACommandBehindAGreetingAnAliasAndAFunction) {
    const std::string folder = home.path("bin");
    const std::string file = writeExecutable(folder + "/claude", "#!/bin/sh\n");
    const std::string other = home.path("other/run it");
    struct Case {
        const char* name;
        std::string profile;
        Answer expected;
    };
    const std::vector<Case> cases{
        {"a greeting", "echo Hello; echo /bin/sh", file},
        {"an alias with another file", "alias claude=\"'" + other + "'\"", other},
        {"an alias with arguments", "alias claude='claude --verbose'", file},
        {"an alias that starts it", "alias claude='/usr/bin/env X=1 claude'", file},
        {"a function", "claude() { command claude \"$@\"; }", file},
        {"not there", "PATH=/usr/bin:/bin", std::nullopt},
        {"only a function", "PATH=/usr/bin:/bin\nclaude() { :; }", std::nullopt},
    };
    for (const Case& c : cases) {
        profile("PATH='" + folder + "':/usr/bin:/bin\n" + c.profile);
        for (const std::string& shell : shells())
            EXPECT_EQ(ClaudeCLILocator::loginShellPath(shell, 50), c.expected) << shell << ": " << c.name;
    }
}

TEST_F(LoginShells, GiveTheSearchPathOfATerminal) {
    const std::string own = UserFolders::environment().at("PATH");
    EXPECT_EQ(SearchPath::source(), SearchPathSource::inherited);
    EXPECT_EQ(SearchPath::current(), own);
    EXPECT_EQ(SearchPath::environmentFor("/x/claude"), UserFolders::environment());

    profile("echo hello; PATH=/from/profile:/bin; UNWANTED=1; export PATH UNWANTED");
    for (const std::string& shell : shells()) {
        const ScopedEnvironment named("SHELL", shell);
        SearchPath::forgetShell();
        SearchPath::askShell({});
        EXPECT_EQ(SearchPath::source(), SearchPathSource::shell) << shell;
        EXPECT_EQ(SearchPath::current(), "/from/profile:/bin") << shell;
    }
    Environment expected = UserFolders::environment();
    expected["PATH"] = "/x:/from/profile:/bin";
    EXPECT_EQ(SearchPath::environmentFor("/x/claude"), expected);
    EXPECT_EQ(SearchPath::environmentFor("/from/profile/claude")["PATH"], "/from/profile:/bin");

    const ScopedEnvironment silent("SHELL", fakeShell("exit 3"));
    SearchPath::askShell({});
    EXPECT_EQ(SearchPath::source(), SearchPathSource::shell) << "an earlier answer stays";
    SearchPath::forgetShell();
    SearchPath::askShell({});
    EXPECT_EQ(SearchPath::source(), SearchPathSource::shellDidNotAnswer);
    EXPECT_EQ(SearchPath::environmentFor("/x/claude")["PATH"], "/x:" + own);
    const ScopedEnvironment none("PATH", {});
    EXPECT_EQ(SearchPath::environmentFor("/x/claude")["PATH"], "/x:/usr/local/bin:/usr/bin:/bin");
}

TEST(SearchPath, HasTheAbsoluteFoldersOnceEach) {
    EXPECT_EQ(SearchPath::folders("/a/:.:/b::bin:/a:/:~/x:"), (std::vector<std::string>{"/a", "/b", "/"}));
    EXPECT_TRUE(SearchPath::folders("").empty());
}

} // namespace
