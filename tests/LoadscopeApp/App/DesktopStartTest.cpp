// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <array>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace loadscope::testing {
namespace {

/// A home folder with a stand-in and a repository whose server only the profile of the shell makes known.
class DesktopStart : public ::testing::Test {
protected:
    DesktopStart() {
        writeExecutable(home_.path(".local/bin/claude"), readFile(LOADSCOPE_DEMO_BIN "/claude"));
        writeFile(repository_ + "/.mcp.json", "{\"command\": \"far-server\"}\n");
        writeExecutable(home_.path("servers/far-server"), "");
        profile("PATH=\"$HOME/servers:/usr/bin:/bin\"\n");
    }

    void profile(const std::string& commands) { writeFile(home_.path(".profile"), commands); }

    /// In a session of its own, without a terminal, and with little more than a home folder.
    std::string run(const std::string& program, const std::vector<std::string>& arguments,
                    const Environment& more) {
        Environment environment{{"HOME", home_.path()},
                                {"LOADSCOPE_DEMO_CLAUDE", "servers-in-path"},
                                {"LOADSCOPE_DEMO_DELAY", "0"}};
        environment.insert(more.begin(), more.end());
        ChildProcess child({.executable = program,
                            .arguments = arguments,
                            .workingFolder = repository_,
                            .environment = environment,
                            .capturesStandardError = false});
        child.launch();
        std::string output;
        std::array<char, 4096> bytes{};
        for (ssize_t count = 0; (count = read(child.standardOutput().get(), bytes.data(), bytes.size())) > 0;)
            output.append(bytes.data(), static_cast<std::size_t>(count));
        EXPECT_EQ(child.wait().status, 0) << program;
        return output;
    }

    std::int64_t inTheTerminal() {
        const std::string path = home_.path("servers") + ":/usr/bin:/bin";
        return nlohmann::json::parse(
            run(LOADSCOPE_COMMAND, {"scan", "--json", "--no-history"}, {{"PATH", path}}))["total"];
    }

    std::int64_t inTheWindow() {
        ScanHistoryStore history(home_.path(".local/share/Loadscope"));
        EXPECT_TRUE(history.clear());
        run(LOADSCOPE_DESKTOP_START, {repository_},
            {{"SHELL", "/bin/sh"},
             {"QT_QPA_PLATFORM", "offscreen"},
             {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}});
        const auto scans = history.load();
        return scans.empty() ? 0 : scans.front().total;
    }

private:
    const TemporaryFolder home_;
    const std::string repository_ = makeFolder(home_.path("app"));
};

TEST_F(DesktopStart, MeasuresInTheWindowWhatTheTerminalMeasures) {
    const std::int64_t expected = inTheTerminal();
    EXPECT_EQ(inTheWindow(), expected);
    profile("exit 1\n"); // the shell does not answer
    const std::int64_t without = inTheWindow();
    EXPECT_GT(without, 0);
    EXPECT_LT(without, expected);
}

} // namespace
} // namespace loadscope::testing
