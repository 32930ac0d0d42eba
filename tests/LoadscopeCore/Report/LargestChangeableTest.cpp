// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/LargestChangeable.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"
#include "tests/LoadscopeCore/Report/MemberReports.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

using namespace testing;

class LargestChangeableTest : public ::testing::Test {
protected:
    void SetUp() override { LocaleFormat::setLocale("en_US"); }
    void TearDown() override { LocaleFormat::setLocale(""); }

    /// "kind name number (place) copyable" a line.
    static std::string shown(const ScanReport& report, const std::vector<ConfiguredServer>& configured,
                             const std::vector<std::string>& files = {}) {
        const auto isFile = [&](const std::string& path) {
            return std::find(files.begin(), files.end(), path) != files.end();
        };
        std::string text;
        for (const ChangeableGroup& group :
             LargestChangeable::groups(report, configured, "/home/dev/.claude", isFile))
            text += ChangeablePresentation::kind(group) + " " + group.name + " " +
                    ChangeablePresentation::number(report, group) + " (" +
                    ChangeablePresentation::place(group) + ") " +
                    ChangeablePresentation::copyable(group).value_or("-") + "\n";
        return text;
    }
};

TEST_F(LargestChangeableTest, IsNeverWhatBelongsToTheToolOrToAPlugin) {
    const std::vector<std::pair<std::string, std::string>> categories{{"System tools", "15k"},
                                                                      {"MCP tools", "5k"},
                                                                      {"Custom agents", "900"},
                                                                      {"Skills", "900"},
                                                                      {"Memory files", "1k"}};
    const std::string tools = toolsHead + "| mcp__db__a | db | 1.5k |\n| mcp__db__b | db | 400 |\n"
                                          "| mcp__plugin_p_x__a | plugin_p_x | 4k |\n\n";
    const std::string own =
        agentsHead + "| own | User | 300 |\n| theirs | Plugin | 900 |\n\n" + skillsHead +
        "| mine | Project | ~200 |\n| charts | Built-in | ~800 |\n| old | undefined | 700 |\n\n";
    const std::string memory =
        filesHead + "| Managed | /etc/claude.md | 800 |\n| Project | CLAUDE.md | 250 |\n";
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/app/CLAUDE.md", 4}, {"/home/dev/src/app/AGENTS.md", 40'000}};
    const ConfiguredServer server{"project", "db", "/home/dev/src/app/.mcp.json"};
    const ScanReport report = reportOf(contextText("20k", categories, tools + own + memory), files);
    EXPECT_EQ(
        shown(report, {server, {"user", "db", "/other"}}, {"/home/dev/.claude/agents/own.md"}),
        "Server db 1.9k tokens · 9.5% of total (named in /home/dev/src/app/.mcp.json) claude mcp remove db "
        "--scope project\n"
        "Agent own 300 tokens · 1.5% of total (in /home/dev/.claude/agents/own.md) "
        "/home/dev/.claude/agents/own.md\n"
        "Instruction file /home/dev/src/app/CLAUDE.md 250 tokens · 1.2% of total () "
        "/home/dev/src/app/CLAUDE.md\n");
    // A server that no settings name may be anybody's.
    EXPECT_TRUE(shown(report, {}, {}).starts_with("Agent own 300 tokens · 1.5% of total () -\n"));
    const ScanReport skills = reportOf(contextText("20k", categories, own));
    EXPECT_EQ(
        shown(skills, {}, {"/home/dev/src/app/.claude/skills/mine/SKILL.md"}),
        "Agent own 300 tokens · 1.5% of total () -\nSkill mine ~200 tokens · 1.0% of total (in "
        "/home/dev/src/app/.claude/skills/mine/SKILL.md) /home/dev/src/app/.claude/skills/mine/SKILL.md\n");
    EXPECT_EQ(shown(reportOf(contextText("20k", categories, ""), files), {}),
              "Instruction file /home/dev/src/app/AGENTS.md ~10,000 tokens, estimated from its size · 50.0% "
              "of total "
              "() /home/dev/src/app/AGENTS.md\nInstruction file /home/dev/src/app/CLAUDE.md ~1 token, "
              "estimated from "
              "its size · 0.0% of total () /home/dev/src/app/CLAUDE.md\n");
}

TEST_F(LargestChangeableTest, NamesNoFileOutsideOfItsFolder) {
    const std::string folder = "/home/dev/src/app/.claude/skills/";
    for (const char* name : {"..", ".", "../../x", "a/b"}) {
        const ScanReport report = reportOf(
            contextText("20k", {{"Skills", "900"}}, skillsHead + "| " + name + " | Project | 200 |\n"));
        EXPECT_EQ(shown(report, {},
                        {folder + name + "/SKILL.md", "/home/dev/src/app/.claude/SKILL.md",
                         "/home/dev/src/app/x/SKILL.md", folder + "SKILL.md"}),
                  std::string("Skill ") + name + " 200 tokens · 1.0% of total () -\n");
    }
}

TEST_F(LargestChangeableTest, CountsOnlyWhatIsInTheTotal) {
    const std::string tools = toolsHead + "| mcp__db__a | db | 400 |\n";
    const ConfiguredServer server{"local", "db", "/f"};
    EXPECT_EQ(shown(reportOf(contextText("9k", {{"MCP tools (deferred)", "400"}}, tools)), {server}), "");
    EXPECT_EQ(shown(reportOf(contextText("9k", {{"MCP tools (deferred)", "400"}, {"MCP tools", "1"}}, tools)),
                    {server}),
              "");
    EXPECT_EQ(shown(reportOf(contextText("9k", {{"System tools", "400"}}, tools)), {server}), "");
}

TEST_F(LargestChangeableTest, MakesCommandsThatAreSafeToPaste) {
    const auto copyable = [](const std::string& name, const std::string& scope) {
        return ChangeablePresentation::copyable(
                   {ChangeableGroup::Kind::server, name, {1, CountPrecision::exact}, false, "/f", scope})
            .value_or("nothing");
    };
    EXPECT_EQ(copyable("issues-2", "user"), "claude mcp remove issues-2 --scope user");
    EXPECT_EQ(copyable("issues", ""), "claude mcp remove issues");
    EXPECT_EQ(copyable("-s", "user"), "claude mcp remove --scope user -- -s");
    EXPECT_EQ(copyable("$(rm -rf ~); it's", "local"),
              "claude mcp remove '$(rm -rf ~); it'\\''s' --scope local");
    EXPECT_EQ(copyable("a\nrm -rf ~", "local"), "nothing");
    EXPECT_EQ(copyable("\x1b[31m", "local"), "nothing");
    EXPECT_EQ(ChangeablePresentation::shellQuoted(""), "''");
}

TEST_F(LargestChangeableTest, NamesTheServersThatAreNotInTheReport) {
    ScanReport report =
        reportOf(contextText("9k", {{"MCP tools", "4"}}, toolsHead + "| mcp__my_db__a | my_db | 4 |\n"));
    report.missingServers = LargestChangeable::missingServers(
        report, {{"local", "my db", "/f"}, {"user", "issues", "/f"}, {"project", "issues", "/g"}});
    EXPECT_EQ(
        ChangeablePresentation::missingServersNote(report),
        "1 configured server is not in this report: it may have been too slow to start, or switched off. "
        "Missing: issues.");
    report.missingServers.emplace_back("browser");
    EXPECT_EQ(
        ChangeablePresentation::missingServersNote(report),
        "2 configured servers are not in this report: they may have been too slow to start, or switched "
        "off. Missing: issues, browser.");
    // Without a single table the report would not list a server that is there, either.
    const ScanReport silent = reportOf(contextText("9k", {{"MCP tools", "4"}}, ""));
    EXPECT_TRUE(LargestChangeable::missingServers(silent, {{"local", "db", "/f"}}).empty());
}

} // namespace
} // namespace loadscope
