// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

#include <regex>

namespace {

TEST(CommandLine, TellsWrongUsageFromHelp) {
    struct Case {
        std::vector<std::string> arguments;
        int exitCode;
        const char* text; ///< of the output when it succeeds, else of the errors
    };
    const std::vector<Case> cases{
        {{}, 0, "Examples:\n  loadscope "},
        {{"--help"}, 0, "leaderboard"},
        {{"--version"}, 0, "loadscope 0."},
        {{"scan", "--help"}, 0, "--max-tokens N"},
        {{"scan", "--help"}, 0, "hooks and servers run in a scan, without a trust question"},
        {{"scan", "--help"}, 0, "Examples:\n  loadscope scan "},
        {{"status", "--help"}, 0, "Examples:\n  loadscope status\n"},
        {{"history", "--help"}, 0, "Examples:\n  loadscope history "},
        {{"history", "clear", "--help"}, 0, "--yes"},
        {{"leaderboard", "--help"}, 0, "Examples:\n  loadscope leaderboard\n"},
        {{"open", "--help"}, 0, "Examples:\n  loadscope open "},
        {{"measure"}, 2, "measure"},
        {{"scan", "--fast"}, 2, "--fast"},
        {{"scan", "--jobs", "0"}, 2, "--jobs"},
        {{"scan", ""}, 2, "FOLDER is empty"},
        {{"scan", "--max-tokens"}, 2, "--max-tokens"},
        {{"scan", "--max-tokens", "-1"}, 2, "--max-tokens"},
        {{"scan", "--max-tokens", "50k"}, 2, "--max-tokens"},
        {{"scan", "--max-tokens", "99999999999999999999"}, 2, "--max-tokens"},
        {{"scan", "--model", ""}, 2, "NAME is empty"},
        {{"scan", "--model", " "}, 2, "NAME is empty"},
        {{"scan", "--model"}, 2, "--model"},
        {{"scan", "--model", "--json"}, 2, "--model"},
        {{"scan", "--model=--json"}, 2, "NAME begins with -"},
        {{"leaderboard", "--tool", "other"}, 2, "--tool"},
        {{"history", "clear"}, 2, "--yes"},
        {{"history", "--repository", ".", "clear", "--yes"}, 2, "whole history"},
        {{"open"}, 1, "There is no display"},
    };
    const DemoHome home;
    for (const Case& item : cases) {
        SCOPED_TRACE(testing::PrintToString(item.arguments));
        const auto run = home.run(item.arguments);
        EXPECT_EQ(run.exitCode, item.exitCode);
        EXPECT_THAT(item.exitCode == 0 ? run.output : run.errors, HasSubstr(item.text));
        EXPECT_EQ(item.exitCode == 0 ? run.errors : run.output, "");
    }
}

TEST(CommandLine, ReportsTheStateOfEachTool) {
    struct Case {
        const char* claude;
        const char* codex;
        const char* claudeState;
        const char* codexState;
        const char* codexLabel;
    };
    const std::vector<Case> cases{
        {"ok", "ok", "ready", "ready", "Signed in"},
        {"signed-out", "signed-out", "signedOut", "signedOut", "Sign-in needed"},
        {"old-version", "api-key-configured", "unknown", "ready", "Signed in"},
        {"status-flood", "status-failed", "unknown", "unknown", "Sign-in could not be verified"},
        {"key-in-settings", "api-key", "unknown", "ready", "Signed in"},
        {"third-party", "refuses-ephemeral", "ready", "ready", "Signed in"},
        {"api-key-helper", "own-provider", "ready", "signedOut", "Sign-in needed"},
    };
    const DemoHome home;
    for (const Case& item : cases) {
        const auto json = home.run({"status", "--json"}, {std::string("LOADSCOPE_DEMO_CLAUDE=") + item.claude,
                                                          std::string("LOADSCOPE_DEMO_CODEX=") + item.codex})
                              .json();
        EXPECT_EQ(json["claude"]["state"], item.claudeState) << item.claude;
        EXPECT_EQ(json["codex"]["state"], item.codexState) << item.codex;
        EXPECT_EQ(json["codex"]["label"], item.codexLabel);
    }
    EXPECT_EQ(home.run({"status"}).output,
              "Tool         Status\nClaude Code  Signed in\nCodex        Signed in\n");
}

TEST(CommandLine, KeepsRanksAndClearsTheHistory) {
    const DemoHome home;
    const std::string other = makeFolder(home.path() + "/src/two words");
    ASSERT_EQ(home.run({"scan", "--include-codex"}).exitCode, 0);
    ASSERT_EQ(home.run({"scan", other}).exitCode, 0);
    ASSERT_EQ(home.run({"scan", "--no-history"}).exitCode, 0);

    const auto all = home.run({"history", "--json"}).json()["scans"];
    std::vector<std::string> recorded;
    for (const auto& scan : all)
        recorded.push_back(scan["repositoryName"].get<std::string>() + ' ' + scan["tool"].get<std::string>() +
                           ' ' + scan["band"].get<std::string>());
    EXPECT_THAT(recorded,
                testing::UnorderedElementsAre("app claude lean", "app codex lean", "two words claude lean"));
    EXPECT_EQ(home.run({"history", "--json", "--repository", "../two words"}).json()["scans"].size(), 1U);
    EXPECT_EQ(home.run({"history", "--json", "--tool", "codex"}).json()["scans"].size(), 1U);
    EXPECT_THAT(home.run({"history"}).output, AllOf(StartsWith("Date "), HasSubstr("System tools 1")));

    const auto ranking = home.run({"leaderboard", "--json"}).json();
    EXPECT_EQ(ranking["tool"], "claude");
    ASSERT_EQ(ranking["entries"].size(), 2U);
    EXPECT_GE(ranking["entries"][0]["total"], ranking["entries"][1]["total"]);
    EXPECT_EQ(ranking["entries"][0]["trend"], nullptr);
    EXPECT_THAT(home.run({"leaderboard", "--tool", "codex"}).output, HasSubstr(home.repository()));

    const std::string file = home.path() + "/.local/share/Loadscope/scan-history.json";
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(home.run({"history", "clear", "--yes"}).exitCode, 0);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(home.run({"history"}).errors, "No scans recorded.\n");
}

TEST(CommandLine, ShowsUnderWhichConditionsAScanWasMade) {
    const DemoHome home;
    const std::string record = R"({"version": 1, "scans": [{"id": "3F2504E0-4F89-41D3-9A0C-0305E82C3301",
        "categories": [], "date": "2026-11-16T20:31:31Z", "repositoryName": "app", "repositoryPath": "/src/app",
        "total": 18342)";
    const auto table = [&](const std::string& more) {
        const std::string folder = home.path() + "/.local/share/Loadscope";
        std::filesystem::create_directories(folder);
        writeFile(folder + "/scan-history.json", record + more + "}]}");
        return home.run({"history"}).output;
    };
    EXPECT_THAT(table(""), HasSubstr("Tool          Total"));
    EXPECT_THAT(table(R"(, "model": "claude-sonnet-5")"),
                AllOf(HasSubstr("  Model             Total"), HasSubstr("  claude-sonnet-5  18,342")));
    EXPECT_THAT(table(R"(, "toolVersion": "2.1.\u001b[31m")"),
                AllOf(HasSubstr("  Version        Total"), HasSubstr("  2.1.\\x1b[31m  18,342")));
}

TEST(CommandLine, WritesForPeopleByTheLocaleAndForProgramsAlwaysTheSame) {
    const DemoHome home;
    const std::string notes = home.repository() + "/CLAUDE.local.md";
    writeFile(notes, std::string(40'000, 'n'));
    ASSERT_EQ(home.run({"scan"}).exitCode, 0);
    // Both scans may end in the same second, and then have no order.
    const std::string file = home.path() + "/.local/share/Loadscope/scan-history.json";
    writeFile(file, std::regex_replace(readFile(file), std::regex(": \"20[0-9]{2}-"), ": \"2020-"));
    writeFile(notes, "n");
    ASSERT_EQ(home.run({"scan"}).exitCode, 0);
    struct Case {
        std::vector<std::string> variables;
        std::string change; ///< how a fall begins
        std::regex total;
    };
    const std::vector<Case> cases = {{{"LC_ALL=C"}, " -", std::regex(" [0-9]+,[0-9]{3} ")},
                                     {{"LC_ALL=xx_YY"}, " -", std::regex(" [0-9]+,[0-9]{3} ")},
                                     {{"LC_ALL=de_DE.UTF-8"}, " -", std::regex(" [0-9]+[.][0-9]{3} ")},
                                     {{"LC_ALL=", "LC_NUMERIC=de_DE.UTF-8", "LANG=ja_JP.UTF-8"},
                                      "-",
                                      std::regex(" [0-9]+[.][0-9]{3} .*年")},
                                     {{"LC_ALL=ar_EG.UTF-8"}, " \u061c-", std::regex("٬")}};
    const auto recorded = home.run({"history", "--json"}).output;
    const auto ranks = home.run({"leaderboard", "--json"}).output;
    for (const Case& entry : cases) {
        SCOPED_TRACE(entry.variables.front());
        const std::string shown = home.run({"leaderboard"}, entry.variables).output;
        EXPECT_THAT(shown, HasSubstr(entry.change));
        EXPECT_TRUE(std::regex_search(shown, entry.total)) << shown;
        EXPECT_EQ(home.run({"history", "--json"}, entry.variables).output, recorded);
        EXPECT_EQ(home.run({"leaderboard", "--json"}, entry.variables).output, ranks);
    }
}

TEST(CommandLine, UsesColourAndOverwritingOnlyWhereTheyAreWelcome) {
    const DemoHome home;
    const auto coloured = home.runOnTerminal({"scan"});
    EXPECT_EQ(coloured.exitCode, 0);
    for (const char* stage : {"Checking sign-in…", "Reading Claude startup context…"})
        EXPECT_THAT(coloured.output, HasSubstr(std::string("\r\x1b[K\x1b[2m") + stage));
    EXPECT_THAT(coloured.output, HasSubstr("\x1b[1mTotal: "));
    const auto plain = home.runOnTerminal({"scan"}, {"NO_COLOR=1"});
    EXPECT_THAT(plain.output, AllOf(Not(HasSubstr("\x1b[1m")), HasSubstr("\r\x1b[K")));
    const auto dumb = home.runOnTerminal({"scan"}, {"TERM=dumb"});
    EXPECT_THAT(dumb.output, AllOf(Not(HasSubstr("\x1b")), HasSubstr("Reading Claude startup context…")));
    const auto hostile = home.runOnTerminal({"scan"}, {"LOADSCOPE_DEMO_CLAUDE=hostile-names"});
    const std::regex own("\x1b\\[([0-9]*m|K)");
    EXPECT_THAT(std::regex_replace(hostile.output, own, ""), Not(HasSubstr("\x1b")));
    EXPECT_THAT(hostile.output, Not(HasSubstr("\x1b[31mred")));
}

TEST(CommandLine, SurvivesTheStreamsThatItIsGiven) {
    const DemoHome home;
    ASSERT_EQ(home.run({"scan", "--include-codex"}).exitCode, 0);
    const auto full = home.runShell("\"$0\" history > /dev/full");
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_EQ(full.errors, "The result could not be written to standard output.\n");
    const auto closedPipe = home.runShell("{ \"$0\" history; echo $? >&2; } | true");
    EXPECT_EQ(closedPipe.errors, "0\n");
    const auto closed = home.runShell("\"$0\" scan >&- 2>&- <&- && \"$0\" history --json");
    EXPECT_EQ(closed.json()["scans"].size(), 3U);
    const auto gone = home.runShell("mkdir ../gone; cd ../gone; rmdir ../gone; \"$0\" scan --json");
    EXPECT_EQ(gone.json()["error"]["case"], "repositoryUnreadable");
}

} // namespace
