// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"

#include "tests/Support/Testing.h"

namespace {

using namespace ContextBreakdownParser;
using Slabs = std::vector<SelfReportedSlab>;

constexpr std::string_view report = R"(**Tokens:** 18.4k / 200k (9%)

### Estimated usage by category

| Category | Tokens | Percentage |
|----------|-------:|-----------:|
| Alpha | 3.1k | 1.6% |
| Beta tools | 11,600 | 5.8% |
| Gamma (deferred) | 2.0k | 1.0% |
| Free space | 136.1k | 68.1% |
| Autocompact buffer | 45.0k | 22.5% |
| Delta | 8 | 0.0% |

### Details
| Name | Tokens | Share |
| Epsilon | 500 | 0.2% |
)";

TEST(ContextBreakdownParser, ReadsAWholeReport) {
    const ContextBreakdown expected{18400, 200000, {{"Alpha", 3100}, {"Beta tools", 11600}, {"Delta", 8}}};
    EXPECT_EQ(parse(report), expected);
    EXPECT_TRUE(parse("").isEmpty());
    EXPECT_FALSE(parse("Tokens: 0/x Tokens: 1/2").isEmpty());
}

TEST(ContextBreakdownParser, ReadsTheFirstTotalOverAWindow) {
    const std::vector<std::pair<std::string, Totals>> totals{
        {"Tokens: 1,234 / 1.5M", {1234, 1'500'000}},
        {"Tokens:12.3456k/200k", {12346, 200'000}},
        {"Tokens: 5k / 1.2.3k", {5000, {}}},
        {"Tokens: none\n**Tokens:** \n**7k**\u00a0*/*\u2003 9k", {7000, 9000}},
        {"Tokens: Tokens:: Tokens: 5 Tokens: 1/2", {1, 2}},
        {"Tokens: 5 / 10kM", {5, 10'000}}};
    for (const auto& [text, expected] : totals)
        EXPECT_TRUE(reportedTotals(text) == expected) << text;
    for (const auto* text :
         {"tokens: 5k / 10k", "12k / 200k", "Tokens: 1.2.3k / 2k", "Tokens: ./2\nTokens: 1k / 2k",
          "Tokens: 5kk / 10k", "Tokens: 5k of 10k", "Tokens: 5k / k", "Tokens: ,.,/,", "Tokens:"})
        EXPECT_EQ(reportedTotals(text), std::nullopt) << text;
}

TEST(ContextBreakdownParser, IsStrictAboutCounts) {
    const std::vector<std::pair<std::string, std::int64_t>> counts{
        {"2.5", 3},
        {"0.5", 1},
        {"0.49", 0},
        {"1.2345k", 1235},
        {"**8**", 8},
        {"\u2003 1,9,\t", 19},
        {"5.", 5},
        {".5", 1},
        {"2K", 2000},
        {"9223372036854774784", 9223372036854774784},
        {"0." + std::string(400, '0') + "1", 0}};
    for (const auto& [text, expected] : counts)
        EXPECT_EQ(tokenCount(text), expected) << text;
    for (const auto* text : {"k",
                             "12%",
                             "",
                             "*,*",
                             ".",
                             "1.2.3",
                             "~480",
                             "< 20",
                             "-5",
                             "+5",
                             "1e3",
                             "0x10",
                             "inf",
                             "nan",
                             "1 2",
                             "5kk",
                             "\n5",
                             "٣",
                             "** 8 **",
                             "9223372036854775807",
                             "99999999999999999m"})
        EXPECT_EQ(tokenCount(text), std::nullopt) << text;
    EXPECT_EQ(tokenCount(std::string(400, '9')), std::nullopt);
}

TEST(ContextBreakdownParser, ReadsRowsOfAtLeastThreeCells) {
    for (const auto* line :
         {"| A | 3k | 1% |", "A | 3k | 1%", "| A | 3k | |", "| A | 3k ||", "|A|3,000|x|y|z"})
        EXPECT_EQ(parseRow(line), (SelfReportedSlab{"A", 3000})) << line;
    for (const auto* line :
         {"| A | 3k |", "A|3k|", "| bad|name | 3 | 1% |", "| MCP tools (Deferred) | 3 | 1% |",
          "| FREE space | 3 | 1% |", "| category | 3 | 1% |", "| :-: | 3 | 1% |", "|  | 3 | 1% |",
          "| A | n/a | 1% |", "|", "||||", ""})
        EXPECT_EQ(parseRow(line), std::nullopt) << line;
}

TEST(ContextBreakdownParser, StopsAtTheFirstHeadingAfterTheTable) {
    const std::vector<std::pair<std::string, Slabs>> cases{
        {"# Before\n## Any\n| A | 1 | x |\n", {{"A", 1}}},
        {"| A | 1 | x |\r\n\r\n \t# Details\r\n| B | 2 | x |", {{"A", 1}}},
        {"|\n# Details\n| B | 2 | x |", {}},
        {"| A | n/a | x |\ntext between\n| B | 2 | x |\n| B | 2 | x |", {{"B", 2}, {"B", 2}}},
        {"\u2003| A | 1 | x |\u2028| B | 2 | x |", {{"A", 1}, {"B", 2}}},
        {"no table\n1 | 2 | 3", {}},
        {"| esc\nnewline | 7 | x |\n| B | 2 | x |", {{"B", 2}}}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(categories(text), expected) << text;
}

TEST(ContextBreakdownParser, ReadsHostileTextsOnce) {
    // Would take hours if every "Tokens:" or every digit were tried from anew.
    std::string digits;
    for (int count = 0; count < 20'000; ++count)
        digits += "Tokens:12345678901234567890 ";
    const std::string spaces = "Tokens:" + std::string(1'000'000, ' ') + "5";
    EXPECT_TRUE(parse(digits).isEmpty());
    EXPECT_TRUE(parse(spaces).isEmpty());
    EXPECT_TRUE(parse(std::string(1'000'000, '|')).isEmpty());
    EXPECT_EQ(reportedTotals(digits + "Tokens: 1 / 2"), (Totals{1, 2}));
}

} // namespace
