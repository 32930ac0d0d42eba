// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

namespace {

/// A copy of the command, in a folder without a window beside it.
class OpenCommandTest : public testing::Test {
protected:
    [[nodiscard]] CommandRun run(const std::string& arguments, const std::string& display = "DISPLAY=:9",
                                 const std::string& path = "/usr/bin:/bin") const {
        const std::string search = "PATH=" + path;
        return home.runShell("[ -x ../bin/loadscope ] || { mkdir -p ../bin && cp \"$0\" ../bin/; }; \n" +
                                 search + "; export PATH; exec ../bin/loadscope " + arguments,
                             {display});
    }
    void putWindow(const std::string& folder) const {
        writeExecutable(home.path() + folder + "/loadscope-app", "#!/bin/sh\necho \"" + folder + ":$*\"\n");
    }

    const DemoHome home;
};

TEST_F(OpenCommandTest, StartsTheWindowThatItFinds) {
    const auto none = run("open");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(none.errors, StartsWith("Could not find the loadscope-app command.\n"));
    EXPECT_THAT(run("").output, StartsWith("Shows how many tokens")) << "the help instead";

    putWindow("/elsewhere");
    const std::string path = home.path() + "/missing:" + home.path() + "/elsewhere:/bin";
    EXPECT_EQ(run("open", "DISPLAY=:9", path).output, "/elsewhere:" + home.repository() + "\n");
    EXPECT_EQ(run("open ..", "WAYLAND_DISPLAY=w", path).output, "/elsewhere:" + home.path() + "/src\n");
    EXPECT_EQ(run("open --recent 1", "DISPLAY=:9", path).exitCode, 1) << "nothing was scanned";
    EXPECT_EQ(home.run({"scan", "/usr", "--skip-check"}).exitCode, 0);
    EXPECT_EQ(run("open --recent 1", "DISPLAY=:9", path).output, "/elsewhere:/usr\n");
    EXPECT_EQ(run("open --recent 2", "DISPLAY=:9", path).exitCode, 1);
    EXPECT_EQ(run("open --recent 0", "DISPLAY=:9", path).exitCode, 2);
    EXPECT_EQ(run("", "DISPLAY=:9", path).output, "/elsewhere:\n");
    EXPECT_THAT(run("", "DISPLAY=", path).output, StartsWith("Shows how many tokens"));
    EXPECT_EQ(run("open", "DISPLAY=:9", "../../elsewhere:/bin").exitCode, 1)
        << "no folder of the search path";
    EXPECT_THAT(run("open", "DISPLAY=", path).errors,
                StartsWith("There is no display to open a window on.\n"));

    putWindow("/src/bin");
    EXPECT_EQ(run("open /src", "DISPLAY=:9", path).output, "/src/bin:/src\n") << "its own before any other";
}

} // namespace
