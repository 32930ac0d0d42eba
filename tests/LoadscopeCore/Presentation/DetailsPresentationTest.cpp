// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"
#include "LoadscopeCore/Presentation/MemberTreemap.h"
#include "tests/LoadscopeCore/Report/MemberReports.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

using namespace testing;

/// English numbers, whatever the machine's locale.
class DetailsPresentationTest : public ::testing::Test {
protected:
    void SetUp() override { LocaleFormat::setLocale("en_US"); }
    void TearDown() override { LocaleFormat::setLocale(""); }
};
using FilesPresentationTest = DetailsPresentationTest;

TEST_F(DetailsPresentationTest, ShowsHowCloselyACountIsKnown) {
    struct Case {
        PreciseCount count;
        std::string shown;
        std::string spoken;
    };
    using enum CountPrecision;
    const std::vector<Case> cases{
        {{447, exact}, "447", "447 tokens"},
        {{1, exact}, "1", "1 token"},
        {{0, exact}, "0", "0 tokens"},
        {{12'345, exact}, "12,345", "12,345 tokens"},
        {{1500, rounded}, "1.5k", "1,500 tokens, rounded"},
        {{33'000, rounded}, "33k", "33,000 tokens, rounded"},
        {{900, rounded}, "0.9k", "900 tokens, rounded"},
        {{1'200'000, rounded}, "1.2m", "1,200,000 tokens, rounded"},
        {{160, about}, "~160", "about 160 tokens"},
        {{20, below}, "< 20", "fewer than 20 tokens"},
    };
    for (const auto& [count, shown, spoken] : cases) {
        EXPECT_EQ(DetailsPresentation::tokens(count), shown);
        EXPECT_EQ(DetailsPresentation::spokenTokens(count), spoken);
    }
}

TEST_F(DetailsPresentationTest, SaysWhatIsNotInTheTotal) {
    const auto report = [](const std::vector<std::pair<std::string, std::string>>& rows) {
        return reportOf(contextText("5k", rows, ""));
    };
    EXPECT_EQ(DetailsPresentation::onDemandLine(
                  report({{"MCP tools (deferred)", "62k"}, {"System tools (deferred)", "9.8k"}})),
              "On demand, not counted: 71,800 (MCP tools, system tools)");
    EXPECT_EQ(
        DetailsPresentation::spaceLine(report({{"Autocompact buffer", "33k"}, {"Free space", "134.8k"}})),
        "Reserved: 33,000 autocompact buffer · Free: 134,800");
    EXPECT_EQ(DetailsPresentation::spaceLine(report({{"Free space", "7"}})), "Free: 7");
    EXPECT_EQ(DetailsPresentation::spaceLine(report({{"Compact buffer", "3k"}, {"Reserved", "1"}})),
              "Reserved: 3,000 compact buffer, 1 reserved");
    EXPECT_EQ(DetailsPresentation::spaceLine(report({{"Skills", "7"}})), std::nullopt);
    EXPECT_EQ(DetailsPresentation::onDemandLine(report({{"Skills", "7"}})), std::nullopt);
}

/// What the lines below a row say: names, numbers, shares and sources, then how they are spoken.
std::string lines(const ScanReport& report, const std::string& row) {
    const CategoryMembers members(report);
    std::string text;
    const auto add = [&](const DetailsPresentation::Line& line) {
        text += line.name + "|" + line.tokens + "|" + line.share + "|" + line.source + "\n";
        EXPECT_TRUE(line.spoken.starts_with(line.name + ", "));
    };
    for (std::size_t i = 0; i < report.rows.size(); ++i) {
        if (report.rows[i].name != row) continue;
        const MemberList& list = members.rows()[i];
        text += DetailsPresentation::contents(list) + "\n";
        for (const MemberGroup& group : list.groups) {
            if (list.isGrouped()) add(DetailsPresentation::line(report, list, group));
            for (const CategoryMember& member : group.members)
                add(DetailsPresentation::line(report, list, member));
        }
        for (const auto& rest : DetailsPresentation::restLines(report, list))
            add(rest);
        text += "ring";
        for (const std::int64_t tokens : DetailsPresentation::ringTokens(list))
            text += " " + std::to_string(tokens);
    }
    return text;
}

TEST_F(DetailsPresentationTest, SaysWhatARowIsMadeOf) {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/app/CLAUDE.md", 2000}, {"/home/dev/src/app/AGENTS.md", 480}};
    const ScanReport report = reportOf(
        contextText("10k", {{"MCP tools", "1.5k"}, {"Memory files", "900"}, {"Skills", "500"}},
                    toolsHead +
                        "| mcp__a__x | a | 900 |\n| mcp__a__y | a | 0 |\n| mcp__b__z | b | 200 |\n\n" +
                        filesHead + "| Project | CLAUDE.md | 560 |\n| Managed | /etc/m.md | 300 |\n\n" +
                        skillsHead + "| own | User | < 20 |\n| charts | Built-in | ~480 |\n"),
        files);
    EXPECT_EQ(
        lines(report, "MCP tools"),
        "2 servers, 3 tools\na|900|9.0%|2 tools\nmcp__a__x|900|9.0%|reported by Claude Code\n"
        "mcp__a__y|0|0.0%|reported by Claude Code · not counted\nb|200|2.0%|1 tool\n"
        "mcp__b__z|200|2.0%|reported by Claude Code\nnot itemised by the tool|~400|4.0%|\nring 900 200 400");
    EXPECT_EQ(lines(report, "Skills"), "2 sources, 2 skills\nBuilt-in|~480|4.8%|1 skill\n"
                                       "charts|~480|4.8%|reported by Claude Code\nUser|< 20|0.2%|1 skill\n"
                                       "own|< 20|0.2%|reported by Claude Code\nring 480 20");
    EXPECT_EQ(
        lines(report, "Repository instructions"),
        "2 files\n/home/dev/src/app/CLAUDE.md|~500|5.0%|estimated from its size "
        "· 560 reported by Claude Code\n/home/dev/src/app/AGENTS.md|~120|1.2%|estimated from its size · "
        "found, not listed by the tool\nring 620");
    EXPECT_EQ(
        lines(report, "Memory files (beyond local estimate)"),
        "1 type, 1 file\nManaged|300|3.0%|1 file\n/etc/m.md|300|3.0%|reported by Claude Code · loaded, not "
        "found here\nClaude Code's counts of the files found, less their estimates|-60|0.0%|\n"
        "not itemised by the tool|40|0.4%|\nring 300 0 40");
    EXPECT_EQ(lines(report, "Unattributed"), "\nring");
}

TEST_F(DetailsPresentationTest, MakesATreemapOfRowsGroupsAndMembers) {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/app/CLAUDE.md", 2000}};
    const ScanReport report =
        reportOf(contextText("5k", {{"MCP tools", "900"}, {"Messages", "21"}, {"Skills", "0"}},
                             toolsHead + "| x | a | 500 |\n| y | a | 0 |\n| z | b | 200 |\n"),
                 files);
    const CategoryMembers members(report);
    const MemberTreemap map(report, members);
    std::string text;
    for (std::size_t node = 0; node < map.nodes().size(); ++node)
        text +=
            std::string(map.nodes()[node].depth * 2, ' ') + map.name(node) + " " + map.detail(node) + "\n";
    EXPECT_EQ(text, "Unattributed 3,579 tokens · 71.6% of total\nMCP tools 900 tokens · 18.0% of total\n"
                    "  a 500 tokens · 10.0% of total\n    x 500 tokens · 10.0% of total\n"
                    "  b 200 tokens · 4.0% of total\n    z 200 tokens · 4.0% of total\n"
                    "  not itemised by the tool 200 tokens · 4.0% of total\n"
                    "Repository instructions 500 tokens · 10.0% of total\n"
                    "  /home/dev/src/app/CLAUDE.md ~500 tokens · 10.0% of total\n"
                    "Messages 21 tokens · 0.4% of total\n");
    EXPECT_EQ(map.spoken(8), "/home/dev/src/app/CLAUDE.md, about 500 tokens, 10.0% of total");
    EXPECT_EQ(map.rowOf(8), 2);
}

TEST_F(DetailsPresentationTest, CopiesEveryMemberAsATable) {
    const ScanReport report = reportOf(
        contextText("5k", {{"MCP tools (deferred)", "9"}},
                    toolsHead + "| a\tb | s\x1b[31m | 1.5k |\n\n" + skillsHead + "| x | User | < 20 |\n"));
    EXPECT_EQ(DetailsPresentation::copyableDetails(report),
              "Table\tGroup\tName\tTokens\tPrecision\tOn demand\n"
              "MCP Tools\ts\\x1b[31m\ta\\tb\t1500\trounded\tyes\nSkills\tUser\tx\t20\tbelow\tno\n");
}

std::string listed(const ScanReport& report) {
    std::string text;
    for (const FilesPresentation::File& file : FilesPresentation::files(report))
        text += file.path + "|" + file.tokens + "|" + file.share + "|" + file.detail + "|" + file.tip + "\n";
    return text + FilesPresentation::countTitle(report) + "|" + FilesPresentation::treemapCaption(report);
}

TEST_F(FilesPresentationTest, ShowsTheToolsCountWhereThereIsOne) {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/app/CLAUDE.md", 2480}, {"/home/dev/src/app/AGENTS.md", 480}};
    const std::string categories = contextText("10k", {{"Memory files", "720"}}, "");
    EXPECT_EQ(listed(reportOf(categories, files)),
              "/home/dev/src/app/CLAUDE.md|620|6.2% of total|Repository instructions · 2,480 bytes on disk|"
              "620 estimated tokens · 6.2% of total\n"
              "/home/dev/src/app/AGENTS.md|120|1.2% of total|Repository instructions · 480 bytes on disk|"
              "120 estimated tokens · 1.2% of total\n"
              "Estimated tokens|Tile sizes use estimated token counts.");
    EXPECT_EQ(FilesPresentation::twoNumbersNote(reportOf(categories, files)), std::nullopt);

    const ScanReport report = reportOf(
        categories + filesHead + "| Project | CLAUDE.md | 656 |\n| AutoMem | /m/MEMORY.md | 64 |\n", files);
    EXPECT_EQ(
        listed(report),
        "/home/dev/src/app/CLAUDE.md|656|6.6% of total|Repository instructions · 2,480 bytes on disk · "
        "reported by Claude Code · ~620 estimated from its size|656 tokens · reported by Claude Code · 6.6% "
        "of total\n"
        "/home/dev/src/app/AGENTS.md|~120|1.2% of total|Repository instructions · 480 bytes on disk · "
        "estimated from its size · found, not listed by the tool|~120 estimated tokens · 1.2% of total\n"
        "/m/MEMORY.md|64|0.6% of total|AutoMem · reported by Claude Code · loaded, not found here|"
        "64 tokens · reported by Claude Code · loaded, not found here · 0.6% of total\n"
        "Tokens|Tile sizes use the counts that Claude Code reports, and estimated token counts where it "
        "reports none.");
    EXPECT_EQ(
        FilesPresentation::twoNumbersNote(report).value_or(""),
        "For the one file with both numbers Claude Code reports 656 tokens; the estimate from its size is "
        "620. "
        "The estimate takes four bytes for a token, whatever the text; the rows of the breakdown keep it.");
}

} // namespace
} // namespace loadscope
