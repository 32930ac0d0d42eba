// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/CategoryMembers.h"

#include "tests/LoadscopeCore/Report/MemberReports.h"

#include <gtest/gtest.h>
#include <limits>

namespace loadscope {
namespace {

using namespace testing;

std::string shown(const PreciseCount& count) {
    return std::to_string(count.tokens) + " " + rawValue(count.precision);
}

/// "group=sum[member=count origin|reported, …]; …" and the lines below.
std::string shown(const MemberList& list) {
    constexpr std::array origins{"", " elsewhere", " found", " unlisted"};
    std::string text;
    for (const MemberGroup& group : list.groups) {
        text += group.name + "=" + shown(group.count()) + "[";
        for (const CategoryMember& member : group.members) {
            text += member.name + "=" + shown(member.count()) +
                    origins.at(static_cast<std::size_t>(member.origin));
            if (member.reported) text += "|" + shown(*member.reported);
            text += ",";
        }
        text += "] ";
    }
    if (list.estimateDifference) text += "difference=" + shown(*list.estimateDifference) + " ";
    if (list.notItemised) text += "rest=" + shown(*list.notItemised) + " ";
    if (list.mayHoldOnDemand) text += "unclear ";
    return text;
}

/// The rows that open: "row: list" a line.
std::string opened(const ScanReport& report) {
    const CategoryMembers members(report);
    EXPECT_EQ(members.rows().size(), report.rows.size());
    std::string text;
    for (std::size_t i = 0; i < report.rows.size(); ++i)
        if (!members.rows()[i].isEmpty())
            text += report.rows[i].name + ": " + shown(members.rows()[i]) + "\n";
    for (const auto& category : members.onDemand())
        text += "on demand " + category.category + ": " + shown(category.members) + "\n";
    for (const MemberList& list : members.withoutCategory())
        text += "no category " + list.table + ": " + shown(list) + "\n";
    return text;
}

TEST(CategoryMembers, OpenTheRowsWhoseTablesTheToolPrints) {
    const std::string tools = toolsHead + "| b | s | 20 |\n| a | s | 20 |\n| c | t | 50 |\n\n";
    struct Case {
        std::string name;
        std::vector<std::pair<std::string, std::string>> categories;
        std::string tables;
        std::string expected;
    };
    const std::vector<Case> cases{
        {"by tokens, then name, with what is left",
         {{"System tools", "800"}, {"MCP tools", "100"}},
         tools,
         "MCP tools: t=50 exact[c=50 exact,] s=40 exact[a=20 exact,b=20 exact,] rest=10 exact \n"},
        {"the rest of a rounded category is no finer than it",
         {{"MCP tools", "1.1k"}},
         tools,
         "MCP tools: t=50 exact[c=50 exact,] s=40 exact[a=20 exact,b=20 exact,] rest=1010 about \n"},
        {"members above their category leave nothing",
         {{"MCP tools", "60"}},
         tools,
         "MCP tools: t=50 exact[c=50 exact,] s=40 exact[a=20 exact,b=20 exact,] \n"},
        {"rough counts make a rough sum, bounds a bound",
         {{"Skills", "300"}},
         skillsHead +
             "| x | User | < 20 |\n| y | User | < 20 |\n| z | Built-in | ~160 |\n| w | Built-in | 9 |\n",
         "Skills: Built-in=169 about[z=160 about,w=9 exact,] User=40 below[x=20 below,y=20 below,] "
         "rest=91 about \n"},
        {"the same member twice counts twice",
         {{"Custom agents", "10"}},
         agentsHead + "| a | User | 5 |\n| a | User | 5 |\n",
         "Custom agents: User=10 exact[a=5 exact,a=5 exact,] \n"},
        {"only a deferred category: none is loaded",
         {{"Skills", "7"}, {"MCP tools (deferred)", "100"}},
         tools,
         "on demand MCP tools: t=50 exact[c=50 exact,] s=40 exact[a=20 exact,b=20 exact,] rest=10 exact \n"},
        {"both: which is which is not told",
         {{"MCP tools", "50"}, {"MCP tools (deferred)", "40"}},
         tools,
         "MCP tools: t=50 exact[c=50 exact,] s=40 exact[a=20 exact,b=20 exact,] unclear \non demand MCP "
         "tools: \n"},
        {"no category of its name",
         {{"Skills", "7"}},
         toolsHead + "| a | s | 0 |\n",
         "no category MCP Tools: s=0 exact[a=0 exact,] \n"},
        {"a heading without letters is that of no category",
         {{"***", "9"}},
         "### !\n| Name | Tokens |\n|---|---|\n| a | 4 |\n",
         "no category !: =4 exact[a=4 exact,] \n"},
        {"two tables of one name are one",
         {{"Hooks", "9"}},
         "### Hooks\n| Name | Tokens |\n|---|---|\n| a | 4 |\n\n### HOOKS\n| Name | Tokens |\n|---|---|\n| b "
         "| 5 |\n",
         "Hooks: =9 exact[b=5 exact,a=4 exact,] \n"},
        {"sums beyond 64 bits",
         {{"Custom agents", "9000000000000000000"}},
         agentsHead + "| a | User | 9000000000000000000 |\n| b | User | 9000000000000000000 |\n",
         "Custom agents: User=9223372036854775807 exact[a=9000000000000000000 exact,b=9000000000000000000 "
         "exact,] \n"},
    };
    for (const auto& [name, categories, tables, expected] : cases)
        EXPECT_EQ(opened(reportOf(contextText("5k", categories, tables))), expected) << name;
}

TEST(CategoryMembers, ShowBothNumbersOfAFileAndCallADifferenceOne) {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/app/CLAUDE.md", 400}, {"/home/dev/src/app/AGENTS.md", 200}};
    files.personalFiles = {{"/home/dev/.claude/CLAUDE.md", 120}};
    const std::string tables =
        filesHead +
        "| User | /home/dev/.claude/CLAUDE.md | 40 |\n| Project | CLAUDE.md | 130 |\n"
        "| Project | /home/dev/src/app/.claude/rules/api.md | 60 |\n| Managed | /etc/a.md | 7 |\n";
    const std::string repository =
        "Repository instructions: =150 about[/home/dev/src/app/CLAUDE.md=100 about "
        "found|130 exact,/home/dev/src/app/AGENTS.md=50 about unlisted,] \n";
    const std::string personal =
        "Personal instructions: =30 about[/home/dev/.claude/CLAUDE.md=30 about found|40 exact,] \n";
    const std::string elsewhere = "Project=60 exact[/home/dev/src/app/.claude/rules/api.md=60 exact "
                                  "elsewhere,] Managed=7 exact[/etc/a.md=7 exact elsewhere,] ";
    // 237 of 240 are itemised; the files found are 170 to the tool and 180 by size.
    EXPECT_EQ(opened(reportOf(contextText("1k", {{"Memory files", "240"}}, tables), files)),
              repository + "Memory files (beyond local estimate): " + elsewhere +
                  "difference=-10 exact rest=3 exact \n" + personal);
    // The estimates explain all of the category: no row is left that could open to the others.
    EXPECT_EQ(opened(reportOf(contextText("1k", {{"Memory files", "170"}}, tables), files)),
              repository + personal);
    // Another category took a part of the estimates: of what the rest is the difference cannot be told.
    EXPECT_EQ(opened(reportOf(contextText("1k", {{"Project memory", "50"}, {"Memory files", "240"}}, tables),
                              files)),
              repository + "Memory files (beyond local estimate): " + elsewhere + "rest=3 exact \n" +
                  personal);
    EXPECT_EQ(opened(reportOf(contextText("1k", {{"Memory files", "237"}}, tables))),
              "Memory files: Project=190 exact[CLAUDE.md=130 exact,/home/dev/src/app/.claude/rules/api.md=60 "
              "exact,] User=40 exact[/home/dev/.claude/CLAUDE.md=40 exact,] Managed=7 exact[/etc/a.md=7 "
              "exact,] \n");
    // A tool that lists nothing says nothing about a file.
    EXPECT_EQ(opened(reportOf(contextText("1k", {{"Memory files", "237"}}, ""), files)),
              "Repository instructions: =150 about[/home/dev/src/app/CLAUDE.md=100 about found,"
              "/home/dev/src/app/AGENTS.md=50 about found,] \nPersonal instructions: =30 "
              "about[/home/dev/.claude/CLAUDE.md=30 about found,] \n");
}

TEST(MemoryFiles, MatchByTheFileThatAPathLeadsTo) {
    InstructionFileSet found;
    found.repositoryFiles = {{"/r/app/CLAUDE.md", 4}, {"/r/app/a|b.md", 4}, {"/r/app/c\\|d.md", 4}};
    found.personalFiles = {{"/r/unlisted.md", 4}};
    const auto resolver = [](std::string_view path) {
        return path == "/link/CLAUDE.md" ? "/r/app/CLAUDE.md" : std::string(path);
    };
    struct Case {
        std::string path;
        std::string file; ///< empty: loaded elsewhere
    };
    const std::vector<Case> cases{{"/r/app/CLAUDE.md", "/r/app/CLAUDE.md"},
                                  {"/r/app/docs/../CLAUDE.md", "/r/app/CLAUDE.md"},
                                  {"CLAUDE.md", "/r/app/CLAUDE.md"},
                                  {"./CLAUDE.md", "/r/app/CLAUDE.md"},
                                  {"/link/CLAUDE.md", "/r/app/CLAUDE.md"},
                                  {"/r/app/a|b.md", "/r/app/a|b.md"},
                                  {"/r/app/c|d.md", "/r/app/c\\|d.md"},
                                  {"/r/app/claude.md", ""},
                                  {"~nobody-of-this-name/CLAUDE.md", ""},
                                  {"\x1b[31m\xff", ""},
                                  {std::string(4000, 'x'), ""}};
    for (const auto& [path, file] : cases) {
        ContextDetails details;
        details.members = {{"Memory files", "Project", path, 7}};
        const MemoryFiles files = MemoryFileMatcher::match(details, found, "/r/app", resolver);
        EXPECT_EQ(files.reported.size(), file.empty() ? 0 : 1) << path;
        EXPECT_EQ(files.reported.contains(file), !file.empty()) << path;
        EXPECT_EQ(files.loadedElsewhere.size(), file.empty() ? 1 : 0) << path;
        EXPECT_EQ(files.foundNotListed.size(), file.empty() ? 4 : 3) << path;
    }
    ContextDetails twice;
    twice.members = {{"Memory Files", "Project", "CLAUDE.md", 7},
                     {"Memory Files", "User", "/link/CLAUDE.md", 5}};
    EXPECT_EQ(MemoryFileMatcher::match(twice, found, "/r/app", resolver).reported.at("/r/app/CLAUDE.md"),
              (PreciseCount{12, CountPrecision::exact}));
}

TEST(MemoryFiles, AskForNoMoreThanTheirBound) {
    ContextDetails details;
    for (int number = 0; number < 10'000; ++number)
        details.members.push_back({"Memory Files", "Project", std::to_string(number) + "|.md", 1});
    std::size_t questions = 0;
    const MemoryFiles files = MemoryFileMatcher::match(details, {}, "/r", [&](std::string_view path) {
        ++questions;
        return std::string(path);
    });
    EXPECT_EQ(questions, MemoryFileMatcher::mostResolved);
    EXPECT_EQ(files.loadedElsewhere.size(), details.members.size());
}

} // namespace
} // namespace loadscope
