// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

#include <regex>

namespace {

/// A repository whose second scan has one more server.
class Growing : public ::testing::Test {
protected:
    Growing() {
        server("");
        before_ = home_.path() + "/before.json";
        after_ = home_.path() + "/after.json";
        writeFile(before_, home_.run({"scan", "--json"}).output);
        // The history keeps dates to the second, and the stand-ins are quicker.
        const std::string history = home_.path() + "/.local/share/Loadscope/scan-history.json";
        writeFile(history,
                  std::regex_replace(readFile(history), std::regex(R"(("date" : ")20\d\d)"), "$012020"));
        server(R"("search": {"command": "search"})");
        writeFile(after_, home_.run({"scan", "--json"}).output);
    }

    void server(const std::string& entry) {
        writeFile(home_.repository() + "/.mcp.json", "{\"mcpServers\": {" + entry + "}}");
    }
    void budget(const std::string& json) { writeFile(home_.repository() + "/.loadscope.json", json); }

    DemoHome home_;
    std::string before_, after_;
};

TEST_F(Growing, IsNamedByDiffInEveryFormat) {
    const auto diff = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "diff");
        const auto run = home_.run(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return run;
    };
    const auto json = diff({before_, after_, "--format", "json"}).json();
    const std::int64_t change =
        json["totalAfter"].get<std::int64_t>() - json["totalBefore"].get<std::int64_t>();
    EXPECT_GT(change, 1'000);
    EXPECT_EQ(json["totalChange"], change);
    EXPECT_EQ(json["comparable"], true);
    ASSERT_FALSE(json["members"].empty());
    EXPECT_EQ(json["members"][0]["group"], "search");
    EXPECT_TRUE(json["members"][0]["before"].is_null());
    EXPECT_THAT(diff({before_, after_}).output, HasSubstr("MCP Tools  search"));
    EXPECT_THAT(diff({before_, after_, "--format", "markdown"}).output,
                AllOf(StartsWith("### Startup context of <code>"), HasSubstr("<code>search</code>")));
    // The two were recorded, too; the history knows the categories alone.
    EXPECT_EQ(diff({"--json"}).json()["totalChange"], change);
    EXPECT_EQ(diff({"--json", "--since", "1"}).json()["membersKnown"], false);
    EXPECT_EQ(diff({"--json", "--since", "2000-01-01"}).json()["totalChange"], change);

    const auto fails = [&](const std::vector<std::string>& arguments) {
        const auto run = home_.run(arguments);
        return std::pair(run.exitCode, run.errors);
    };
    EXPECT_EQ(fails({"diff", before_}).first, 2);
    EXPECT_EQ(fails({"diff", "--since", "yesterday"}).first, 2);
    EXPECT_EQ(fails({"diff", "--since", "7"}).first, 1);
    EXPECT_THAT(fails({"diff", before_, "/nowhere"}), Pair(1, HasSubstr("/nowhere does not exist.")));
    EXPECT_THAT(fails({"diff", before_, home_.path()}), Pair(1, HasSubstr("is a folder.")));
    const auto piped = home_.runShell("cat '" + after_ + "' | \"$0\" diff '" + before_ + "' - --json");
    EXPECT_EQ(piped.json()["totalChange"], change);
    EXPECT_EQ(diff({"--json", "--", before_, after_}).json()["totalChange"], change);
    // A standard input that never ends is not waited for when the other report is none.
    const auto waiting = home_.runShell("mkfifo pipe; exec \"$0\" diff /nowhere - 0<>pipe");
    EXPECT_THAT(waiting.errors, HasSubstr("/nowhere does not exist."));
}

TEST_F(Growing, IsStoppedByABudgetAfterTheWholeReport) {
    budget(R"({"maxIncrease": 100, "servers": {"search": 10, "gone": 5}})");
    const auto run = home_.run({"scan", "--baseline", before_, "--json"});
    EXPECT_EQ(run.exitCode, 3);
    const auto budgets = run.json()["budgets"];
    ASSERT_EQ(budgets.size(), 3U);
    EXPECT_EQ(budgets[0]["name"], "maxIncrease");
    EXPECT_EQ(budgets[0]["exceeded"], true);
    EXPECT_EQ(budgets[1]["name"], "servers.search");
    EXPECT_TRUE(budgets[2]["value"].is_null());
    EXPECT_THAT(run.errors, HasSubstr("Over budget: The increase since the baseline: +"));
    EXPECT_THAT(run.errors, HasSubstr("limit 10 tokens (mcp__search__"));
    EXPECT_EQ(home_.run({"scan", "--no-budget", "--baseline", before_}).exitCode, 0);
    EXPECT_EQ(home_.run({"scan", "--baseline", after_}).exitCode, 3) << "the server is over its own";
    const auto junit = home_.run({"scan", "--format", "junit", "--baseline", before_});
    EXPECT_THAT(junit.output, HasSubstr("tests=\"3\" failures=\"2\" errors=\"0\" skipped=\"1\""));

    budget("{\n\"maxTokens\": -1}");
    const auto broken = home_.run({"scan"});
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_THAT(broken.errors, HasSubstr(".loadscope.json, line 2: \"maxTokens\" must be a whole number"));
    EXPECT_THAT(home_.run({"scan", "--baseline", "/etc/hostname-that-is-not"}).errors, HasSubstr("line 2"));
    budget(R"({"maxTokens": 1})");
    EXPECT_EQ(home_.run({"scan", "--max-tokens", "900000"}).exitCode, 0) << "options go before the file";
}

TEST(CheckCommand, NeedsNoToolNoAccountAndNoEnvironment) {
    const DemoHome home;
    writeFile(home.repository() + "/AGENTS.md", std::string(34'886, 'a'));
    writeFile(home.repository() + "/CLAUDE.md", "@../outside.md\n@docs/in.md");
    writeFile(home.repository() + "/docs/in.md", "inside");
    writeFile(home.repository() + "/../outside.md", "outside");
    writeFile(home.repository() + "/.loadscope.json",
              R"({"files": {"docs/*": 1, "none": 1}, "codexInstructionBytes": 32768, "maxTokens": 1})");
    home.removeTool("claude");
    home.removeTool("codex");
    const auto run = home.runShell("exec env -i \"$0\" check --json");
    EXPECT_EQ(run.exitCode, 3) << run.errors;
    const auto json = run.json();
    EXPECT_EQ(json["codexInstructions"]["readBytes"], 32'768);
    EXPECT_EQ(json["codexInstructions"]["cut"][0]["cutBytes"], 2'118);
    ASSERT_EQ(json["importedFromOutside"].size(), 1U);
    EXPECT_THAT(json["importedFromOutside"][0].get<std::string>(), EndsWith("/outside.md"));
    ASSERT_EQ(json["budgets"].size(), 3U) << "what a scan alone knows is left to a scan";
    EXPECT_THAT(run.errors,
                HasSubstr("Over budget: Files docs/*: ~2 tokens, limit 1 tokens (docs/in.md 2)."));
    const auto text = home.run({"check"}).output;
    EXPECT_THAT(text,
                HasSubstr("Codex reads 32,768 of 34,886 bytes; the last 2,118 of AGENTS.md never reach it."));
    EXPECT_THAT(text, HasSubstr("No file matches \"none\"."));
    EXPECT_EQ(home.run({"check", "--no-budget"}).exitCode, 0);
    EXPECT_EQ(home.run({"check", "/nowhere"}).exitCode, 1);
}

} // namespace
