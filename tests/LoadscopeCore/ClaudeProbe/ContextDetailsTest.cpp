// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"

#include "LoadscopeCore/ClaudeProbe/TerminalReport.h"
#include "tests/Support/Testing.h"

namespace {

/// "table/group/name=tokens precision", one a line.
std::string members(const ContextDetails& details) {
    std::string text;
    for (const ContextMember& member : details.members)
        text += member.table + "/" + member.group + "/" + member.name + "=" + std::to_string(member.tokens) +
                " " + rawValue(member.precision) + "\n";
    return text;
}

std::string slabs(const std::vector<SelfReportedSlab>& list) {
    std::string text;
    for (const SelfReportedSlab& slab : list)
        text += slab.name + "=" + std::to_string(slab.tokens) + ";";
    return text;
}

TEST(ContextDetails, HoldWhatTheCategoriesLeaveOutAndEveryMember) {
    const std::string report = R"(## Context Usage

**Model:** claude-sonnet-5-5  
**Tokens:** 11k / 1m (1%)

### Estimated usage by category

| Category | Tokens | Percentage |
|----------|--------|------------|
| System prompt | 1.3k | 0.1% |
| MCP tools (deferred) | 5.6k | 0.6% |
| Compact buffer | 3k | 0.3% |
| Free space | 956k | 95.6% |

### MCP Tools

| Tool | Server | Tokens |
|------|--------|--------|
| mcp__files__read | files | 139 |

### Memory Files

| Type | Path | Tokens |
|------|------|--------|
| Project | /src/app/CLAUDE.md | 1.5k |

### Skills

| Skill | Source | Tokens |
|-------|--------|--------|
| notes | User | < 20 |
| charts | Built-in | ~480 |
)";
    const ContextDetails details = ContextDetailsParser::parse(report);
    EXPECT_EQ(details.model, "claude-sonnet-5-5");
    EXPECT_EQ(slabs(details.deferred), "MCP tools=5600;");
    EXPECT_EQ(slabs(details.reserved), "Compact buffer=3000;");
    EXPECT_EQ(details.free, 956'000);
    EXPECT_EQ(members(details), "MCP Tools/files/mcp__files__read=139 exact\n"
                                "Memory Files/Project//src/app/CLAUDE.md=1500 rounded\n"
                                "Skills/User/notes=20 below\n"
                                "Skills/Built-in/charts=480 about\n");
    EXPECT_EQ(slabs(ContextBreakdownParser::categories(report)), "System prompt=1300;");
}

TEST(ContextDetails, EndARowThatHasItsCellsWithItsLine) {
    const std::string table = "### MCP Tools\n\n| Tool | Server | Tokens |\n|---|---|---|\n";
    EXPECT_EQ(members(ContextDetailsParser::parse(table + "| a | s | 5\nno row\n| b | s | 6 |\n")),
              "MCP Tools/s/a=5 exact\nMCP Tools/s/b=6 exact\n");
}

TEST(ContextDetails, TellWhatIsOnDemandByTheCategories) {
    const std::string table =
        "### MCP Tools\n| Tool | Server | Tokens |\n|---|---|---|\n| a | s | 7 |\n| b | s | 0 |\n\n"
        "### Skills\n| Skill | Source | Tokens |\n|---|---|---|\n| c | User | < 20 |\n";
    const auto onDemand = [&](const std::string& categories) {
        std::string text;
        for (const ContextMember& member :
             ContextDetailsParser::parse("| Category | Tokens | % |\n|---|---|---|\n" + categories + "\n" +
                                         table)
                 .members)
            text += member.onDemand ? member.name : "";
        return text;
    };
    EXPECT_EQ(onDemand("| MCP tools (deferred) | 7 | 1% |\n| Skills | 20 | 1% |\n"), "ab");
    EXPECT_EQ(onDemand("| MCP tools (Deferred) | 7 | 1% |\n| skills (deferred) | 20 | 1% |\n"), "abc");
    EXPECT_EQ(onDemand("| MCP tools (deferred) | 7 | 1% |\n| MCP tools | 7 | 1% |\n"), "");
    EXPECT_EQ(onDemand("| System tools (deferred) | 7 | 1% |\n"), "");
}

TEST(ContextDetails, TakeNamesForDataWhateverTheyHold) {
    struct Case {
        std::string name;
        std::string table;
        std::string expected;
    };
    const std::string agents = "### Custom Agents\n| Agent Type | Source | Tokens |\n|---|---|---|\n";
    const std::string files = "### Memory Files\n| Type | Path | Tokens |\n|---|---|---|\n";
    const std::vector<Case> cases{
        {"a bar in a name", agents + "| bad|name | Project | 3 |",
         "Custom Agents/Project/bad|name=3 exact\n"},
        {"an escaped bar", agents + "| bad\\|name | User | 3 |", "Custom Agents/User/bad|name=3 exact\n"},
        {"a bar in a path", files + "| User | /a|b/CLAUDE.md | 7 |",
         "Memory Files/User//a|b/CLAUDE.md=7 exact\n"},
        {"a path that ends in a backslash", files + "| User | /a\\|7|", "Memory Files/User//a\\=7 exact\n"},
        {"line breaks and escapes in a name",
         agents + "| \x1b[31mred\nand\rmore | Project | 7 |\n| b | User | 1 |",
         "Custom Agents/Project/\x1b[31mred\nand\rmore=7 exact\nCustom Agents/User/b=1 exact\n"},
        {"a row that is cut off", agents + "| a\n| b | User | 1 |", "Custom Agents/User/b=1 exact\n"},
        {"missing cells", agents + "| a | 3 |\n| | User | 4 |\n| b | User | |", ""},
        {"no count", agents + "| a | User | many |\n| b | User | -1 |", ""},
        {"one column less", "### Things\n| Name | Tokens |\n|---|---|\n| a | 4 |", "Things//a=4 exact\n"},
        {"one column more",
         "### MCP Tools\n| Tool | Server | State | Tokens |\n|---|---|---|---|\n| a | s | on | 4 |",
         "MCP Tools/s/a=4 exact\n"},
        {"columns behind the count",
         "### New\n| Plugin | Thing | Tokens | Share |\n|---|---|---|---|\n| p | t | 4 | 1% |",
         "New/p/t=4 exact\n"},
        {"no heading", "| Skill | Source | Tokens |\n|---|---|---|\n| s | User | 5 |", "/User/s=5 exact\n"},
        {"a heading without a table", "### Skills\nnone\n\n" + agents + "| a | User | 3 |",
         "Custom Agents/User/a=3 exact\n"},
        {"a table of another shape", "### Hooks\n| Event | Command |\n|---|---|\n| a | b |", ""},
        {"an empty line ends a table", agents + "| a | User | 3 |\n\n| b | User | 4 |",
         "Custom Agents/User/a=3 exact\n"},
        {"the same member twice", agents + "| a | User | 3 |\n| a | User | 3 |",
         "Custom Agents/User/a=3 exact\nCustom Agents/User/a=3 exact\n"},
        {"beyond 64 bits", agents + "| a | User | 99999999999999999999M |\n| b | User | 1M |",
         "Custom Agents/User/b=1000000 rounded\n"}};
    for (const auto& [name, table, expected] : cases)
        EXPECT_EQ(members(ContextDetailsParser::parse(table)), expected) << name;
    EXPECT_EQ(ContextDetailsParser::parse("Model: " + std::string(5000, 'm')).model, std::string(200, 'm'));
    EXPECT_EQ(ContextDetailsParser::parse(""), ContextDetails{});
}

TEST(TerminalReport, IsReadAsTheMarkdownOfLaterVersions) {
    const std::string drawn = "\x1b[1m⛁ ⛁ ⛝ ⛝   Context Usage\x1b[0m\n"
                              "⛝ ⛝ ⛝ ⛝   claude-x • 61k/200k tokens (30%)\n"
                              "⛁ ⛀ ⛶ ⛶   ⛁ System tools: 10.0k tokens (5.0%)\n"
                              "⛶ ⛶ ⛶ ⛶   ⛝ Reserved: 45.0k tokens (22.5%) [autocompact + output tokens]\n"
                              "⛶ ⛶ ⛶ ⛶   ⛶ Free space: 94k (47.2%)\n\n"
                              "MCP tools · /mcp\n└ mcp__a__b (a): 155 tokens\n\n"
                              "Memory files · /memory\n└ User (/home/dev (old)/CLAUDE.md): 189 tokens\n\n"
                              "SlashCommand Tool · 1 commands\n└ Total: 231 tokens\n";
    const std::string markdown = TerminalReport::asMarkdown(drawn);
    EXPECT_EQ(ContextBreakdownParser::reportedTotals(markdown),
              (ContextBreakdownParser::Totals{61'000, 200'000}));
    EXPECT_EQ(slabs(ContextBreakdownParser::categories(markdown)), "System tools=10000;");
    const ContextDetails details = ContextDetailsParser::parse(markdown);
    EXPECT_EQ(details.model, "claude-x");
    EXPECT_EQ(slabs(details.reserved) + std::to_string(details.free.value_or(0)), "Reserved=45000;94000");
    EXPECT_EQ(members(details), "MCP Tools/a/mcp__a__b=155 exact\n"
                                "Memory Files/User//home/dev (old)/CLAUDE.md=189 exact\n");
    for (const std::string other : {"", "Tokens: 5k / 10k", "└ a", "no report • 5/x"})
        EXPECT_EQ(TerminalReport::asMarkdown(other), other);
}

} // namespace
