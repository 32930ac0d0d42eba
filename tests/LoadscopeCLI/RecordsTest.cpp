// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

#include <regex>

namespace {

/// A home folder with six records of three repositories.
class RecordsTest : public testing::Test {
protected:
    void SetUp() override {
        const std::string start = R"({"id": "00000000-0000-4000-8000-00000000000)";
        const std::string scans[] = {
            start + R"(1", "repositoryName": "lean", "repositoryPath": "/src/lean", "tool": "claude",
                       "date": "2026-01-01T08:05:00Z", "total": 12000, "categories": []})",
            start + R"(2", "repositoryName": "heavy", "repositoryPath": "/src/heavy", "tool": "claude",
                       "date": "2026-01-02T08:05:00Z", "total": 45000, "categories": [
                       {"name": "Agents of the whole company", "tokens": 15000}, {"name": "B", "tokens": 900}, {"name": "C", "tokens": 80}]})",
            start + R"(3", "repositoryName": "heavy", "repositoryPath": "/src/heavy", "tool": "claude",
                       "date": "2026-01-03T23:59:00Z", "total": 46200, "categories": [
                       {"name": "System tools", "tokens": 16000}, {"name": "MCP tools 日本", "tokens": 15000},
                       {"name": "Skills", "tokens": 1500}, {"name": "D", "tokens": 21}, {"name": "E", "tokens": 1}]})",
            start +
                R"(4", "repositoryName": "excessive", "repositoryPath": "/src/excessive", "tool": "claude",
                       "date": "2026-01-04T00:00:00Z", "total": 70000, "categories": []})",
            start + R"(5", "repositoryName": "lean", "repositoryPath": "/src/lean", "tool": "claude",
                       "date": "2026-01-05T12:30:00Z", "total": 12000, "categories": []})",
            start + R"(6", "repositoryName": "lean", "repositoryPath": "/src/lean", "tool": "codex",
                       "date": "2026-01-06T12:30:00Z", "total": 9000, "contextWindow": 272000, "categories": []})"};
        std::string list;
        for (const std::string& scan : scans)
            list += (list.empty() ? "" : ",") + scan;
        writeFile(file, R"({"version": 1, "scans": [)" + list + "]}");
    }

    /// What stands on a terminal of 100 columns, with "{32:Lean}" for a text in green.
    [[nodiscard]] std::string shown(const std::vector<std::string>& arguments) const {
        std::string text = home.runOnTerminal(arguments).output;
        text = std::regex_replace(text, std::regex("\r"), "");
        text = std::regex_replace(text, std::regex("\u202f"), " "); // as some versions of ICU write times
        text = std::regex_replace(text, std::regex("\x1b\\[0m"), "}");
        return std::regex_replace(text, std::regex("\x1b\\[([0-9]+)m"), "{$1:");
    }

    const DemoHome home;
    const std::string file = home.path() + "/.local/share/Loadscope/scan-history.json";
};

TEST_F(RecordsTest, AreListedNewestFirstWithinTheTerminal) {
    EXPECT_EQ(shown({"history"}),
              "{1:Date}                     {1:Repository}  {1:Tool}          {1:Total}  {1:Band}       "
              "{1:Categories}\n"
              "Jan 6, 2026 at 12:30 PM  lean        Codex         9,000  {32:Lean}\n"
              "Jan 5, 2026 at 12:30 PM  lean        Claude Code  12,000  {32:Lean}\n"
              "Jan 4, 2026 at 12:00 AM  excessive   Claude Code  70,000  {31:Excessive}\n"
              "Jan 3, 2026 at 11:59 PM  heavy       Claude Code  46,200  {33:Heavy}      System tools 16K · "
              "MCP tools …\n"
              "Jan 2, 2026 at 8:05 AM   heavy       Claude Code  45,000  {33:Heavy}      Agents of the whole "
              "company 15…\n"
              "Jan 1, 2026 at 8:05 AM   lean        Claude Code  12,000  {32:Lean}\n");
    const auto plain = home.run({"history", "--repository", "/src/heavy"}).output;
    EXPECT_THAT(plain, AllOf(HasSubstr("  System tools 16K · MCP tools 日本 15K · +3 more\n"),
                             EndsWith("  Agents of the whole company 15K · B 900 · +1 more\n"),
                             Not(HasSubstr("lean")), Not(HasSubstr("\x1b"))));
}

TEST_F(RecordsTest, SayWhenTheirClockWasWrong) {
    std::string text = readFile(file);
    writeFile(file, text.replace(text.find("2026-01-06"), 4, "2226"));
    const std::string listed = home.run({"history"}).output;
    EXPECT_TRUE(std::regex_search(listed, std::regex("Jan 6, 2226 at [^\n]* [(]in the future[)]  lean")))
        << listed;
    EXPECT_EQ(listed.find("future"), listed.rfind("future")) << "and no other";
}

TEST_F(RecordsTest, AreRankedWithTheirChange) {
    EXPECT_EQ(shown({"leaderboard"}),
              "{1:#}  {1:Repository}   {1:Total}  {1:Change}  {1:Band}       {1:Scans}  {1:Last scan}    "
              "{1:Folder}\n"
              "1  excessive   70,000          {31:Excessive}      1  Jan 4, 2026  {2:/src/excessive}\n"
              "2  heavy       46,200  +1,200  {33:Heavy}          2  Jan 3, 2026  {2:/src/heavy}\n"
              "3  lean        12,000       0  {32:Lean}           2  Jan 5, 2026  {2:/src/lean}\n");
    EXPECT_THAT(home.run({"leaderboard", "--tool", "codex"}).output,
                HasSubstr("\n1  lean        9,000          Lean"));
    ASSERT_EQ(home.run({"history", "clear", "--yes"}).exitCode, 0);
    const auto none = home.run({"leaderboard"});
    EXPECT_EQ(none.errors + none.output, "No scans recorded.\n");
}

TEST_F(RecordsTest, AreDeletedOnlyWhenTheUserAgrees) {
    struct Case {
        const char* answer;
        bool isDeleted;
    };
    for (const Case& one :
         {Case{"n", false}, {"", false}, {"yess", false}, {"y", true}, {"Y", true}, {"yes", true}}) {
        SetUp();
        const auto run = home.runOnTerminal({"history", "clear"}, {}, std::string(one.answer) + '\n');
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_THAT(run.output, HasSubstr("Delete all recorded scans (6)? This cannot be undone. [y/N] "));
        EXPECT_EQ(run.output.find("Nothing was deleted.\r\n") == std::string::npos, one.isDeleted);
        EXPECT_EQ(std::filesystem::exists(file), !one.isDeleted) << one.answer;
    }
    SetUp();
    for (const char* script : {"echo y | \"$0\" history clear", "\"$0\" history clear 2>../errors"}) {
        EXPECT_EQ(home.runShellOnTerminal(script).exitCode, 2) << script;
        EXPECT_TRUE(std::filesystem::exists(file)) << "nobody was asked";
    }
    for (const char* option : {"--json", "--tool=claude", "--repository=."}) {
        const auto run = home.run({"history", option, "clear", "--yes"});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.errors, "`history clear` deletes the whole history and takes --yes only.\n");
    }
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/kept");
    const auto stays = home.run({"history", "clear", "--yes"});
    EXPECT_EQ(stays.exitCode, 1);
    EXPECT_THAT(stays.errors, HasSubstr("The history could not be deleted."));
}

} // namespace
