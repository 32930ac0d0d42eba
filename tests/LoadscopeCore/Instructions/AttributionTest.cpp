// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/Attribution.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"

#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>

namespace loadscope {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

LocalCategoryEstimate local(std::string name, std::int64_t tokens) {
    return {std::move(name), tokens, {"Memory Files", "claudemd"}};
}

/// The rows, one identifier and count a line, and what did not fit into rows.
std::string described(const AttributionOutcome& outcome) {
    std::string text;
    for (const SlabAttribution& row : outcome.rows)
        text += row.id() + " " + std::to_string(row.tokens) + "\n";
    text += "remainder " + std::to_string(outcome.remainder);
    if (outcome.overAttributed) text += " over";
    if (!outcome.categoriesSelfReported) text += " unreported";
    return text;
}

TEST(SlabAttributor, ExplainsReportedCategoriesByLocalEstimates) {
    struct Case {
        const char* name;
        std::int64_t total;
        std::vector<SelfReportedSlab> reported;
        std::vector<LocalCategoryEstimate> estimates;
        const char* expected;
    };
    const Case cases[] = {
        {"partly explained",
         24000,
         {{"System prompt", 3000}, {"System tools", 12000}, {"Memory files", 5000}, {"Messages", 200}},
         {local("Repository instructions", 3500), local("Personal instructions", 800)},
         "1|selfReported|System tools 12000\n6|remainder|Unattributed 3800\n"
         "4|localEstimate|Repository instructions 3500\n0|selfReported|System prompt 3000\n"
         "5|localEstimate|Personal instructions 800\n"
         "2|selfReported|Memory files (beyond local estimate) 700\n3|selfReported|Messages 200\nremainder "
         "3800"},
        {"estimates exceed the category",
         10000,
         {{"System tools", 9000}, {"Memory files", 1000}},
         {local("Repository instructions", 2500)},
         "0|selfReported|System tools 9000\n1|localEstimate|Repository instructions 2500\nremainder 0 over"},
        {"nothing reported",
         18000,
         {},
         {local("Repository instructions", 2000)},
         "0|claudeReported|Startup context (categories not self-reported) 18000\nremainder 0 unreported"},
        {"nothing at all",
         0,
         {},
         {},
         "0|claudeReported|Startup context (categories not self-reported) 0\nremainder 0 unreported"},
        {"negative total",
         -3,
         {},
         {},
         "0|claudeReported|Startup context (categories not self-reported) 0\nremainder 0 over unreported"},
        {"merged spellings",
         1500,
         {{"MCP tools", 1000}, {"Other", 0}, {"MCP Tools", 500}},
         {},
         "0|selfReported|MCP tools 1500\n1|selfReported|Other 0\nremainder 0"},
        {"matched by name, capacity shared",
         300,
         {{"REPOSITORY-instructions", 60}, {"CLAUDE.md", 100}, {"Memory files", 5}},
         {local("Repository instructions", 100), local("Dropped", 0), local("Dropped too", -4)},
         "3|remainder|Unattributed 135\n2|localEstimate|Repository instructions 100\n"
         "0|selfReported|CLAUDE.md (beyond local estimate) 60\n"
         "1|selfReported|Memory files (beyond local estimate) 5\nremainder 135"},
        {"negative categories",
         10,
         {{"Unknown", -5}, {"claude.md", -7}},
         {local("Personal instructions", 2)},
         "2|remainder|Unattributed 13\n1|localEstimate|Personal instructions 2\n0|selfReported|Unknown "
         "-5\nremainder 13"},
        {"ties by name, then by creation",
         50,
         {{"b", 10}, {"Unattributed", 10}, {"a", 10}},
         {local("Z", 10)},
         "1|selfReported|Unattributed 10\n4|remainder|Unattributed 10\n3|localEstimate|Z "
         "10\n2|selfReported|a 10\n"
         "0|selfReported|b 10\nremainder 10"},
        {"sums beyond 64 bits",
         largest,
         {{"a", largest}, {"A", largest}, {"b", 1}},
         {},
         "0|selfReported|a 9223372036854775807\n1|selfReported|b 1\nremainder 0 over"},
        {"difference beyond 64 bits",
         largest,
         {{"a", smallest}},
         {},
         "1|remainder|Unattributed 9223372036854775807\n0|selfReported|a -9223372036854775808\n"
         "remainder 9223372036854775807"},
    };
    for (const Case& one : cases) {
        const AttributionOutcome outcome = SlabAttributor::attribute(one.total, one.reported, one.estimates);
        EXPECT_EQ(described(outcome), one.expected) << one.name;
    }
}

TEST(SlabAttributor, AccountsForEveryTokenOfRandomReports) {
    std::mt19937 random(20261122);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const char* names[] = {"System prompt", "system-prompt", "Memory files", "CLAUDE.md",
                           "MCP tools",     "Übersicht 3",   "***"};
    for (int round = 0; round < 2000; ++round) {
        std::vector<SelfReportedSlab> reported;
        for (int count = below(6); count > 0; --count)
            reported.push_back({names[below(7)], below(9000) - 500});
        std::vector<LocalCategoryEstimate> estimates;
        for (int count = below(4); count > 0; --count) {
            estimates.push_back(local("Tier " + std::to_string(count), below(5000) - 300));
        }
        const std::int64_t total = below(30000);
        const AttributionOutcome outcome = SlabAttributor::attribute(total, reported, estimates);

        std::int64_t covered = 0;
        std::int64_t selfReported = 0;
        std::int64_t localTokens = 0;
        std::vector<bool> seen(outcome.rows.size());
        for (const SlabAttribution& row : outcome.rows) {
            covered += row.tokens;
            if (row.provenance == Provenance::selfReported) selfReported += row.tokens;
            if (row.provenance == Provenance::localEstimate) localTokens += row.tokens;
            ASSERT_LT(static_cast<std::size_t>(row.ordinal), seen.size());
            ASSERT_FALSE(seen[static_cast<std::size_t>(row.ordinal)]) << "an ordinal is used twice";
            seen[static_cast<std::size_t>(row.ordinal)] = true;
        }
        if (outcome.overAttributed) {
            ASSERT_GT(covered, total);
            ASSERT_EQ(outcome.remainder, 0);
        } else {
            ASSERT_EQ(covered, total);
        }
        ASSERT_TRUE(
            std::is_sorted(outcome.rows.begin(), outcome.rows.end(), [](const auto& a, const auto& b) {
                return std::tie(b.tokens, a.name) < std::tie(a.tokens, b.name);
            }));
        if (reported.empty()) continue;
        std::int64_t offered = 0;
        for (const auto& estimate : estimates)
            offered += std::max<std::int64_t>(estimate.tokens, 0);
        ASSERT_EQ(localTokens, offered) << "every estimate shows its full tokens";
        std::int64_t reportedTokens = 0;
        std::int64_t negativeTokens = 0;
        for (const auto& slab : SlabAttributor::merged(reported)) {
            reportedTokens += slab.tokens;
            negativeTokens += std::min<std::int64_t>(slab.tokens, 0);
        }
        ASSERT_LE(selfReported, reportedTokens - negativeTokens);
        ASSERT_GE(selfReported, reportedTokens - offered) << "estimates explain no more than they hold";
    }
}

TEST(InstructionFileSet, OffersOneEstimatePerTierThatHoldsTokens) {
    InstructionFileSet set;
    set.repositoryFiles = {{"/r/CLAUDE.md", 2050}, {"/r/a.md", 10}};
    set.inheritedFiles = {{"/CLAUDE.md", 0}, {"/h/CLAUDE.md", -9}};
    set.personalFiles = {{"/h/.claude/CLAUDE.md", largest}, {"/h/.claude/b.md", largest}};
    const std::vector<LocalCategoryEstimate> categories = set.localCategories();
    ASSERT_EQ(categories.size(), 2U);
    EXPECT_EQ(categories[0], (LocalCategoryEstimate{"Repository instructions",
                                                    516,
                                                    {"projectinstructions", "repoinstructions",
                                                     "projectmemory", "memoryfiles", "claudemd"}}));
    EXPECT_EQ(categories[1].tokens, (largest / 4 + 1) * 2);
    for (const auto& [bytes, tokens] :
         {std::pair(-1, 0), {0, 0}, {1, 1}, {4, 1}, {5, 2}, {2050, 513}, {403, 101}}) {
        EXPECT_EQ(InstructionFileEstimate("", bytes).estimatedTokens, tokens) << bytes;
    }
}

TEST(InstructionFileShare, StaysWithinTheTotal) {
    EXPECT_EQ(InstructionFileShare::text(125, 1000), "12.5% of total");
    EXPECT_EQ(InstructionFileShare::text(5, 0), "0.0% of total");
    EXPECT_EQ(InstructionFileShare::text(2000, 1000), "100.0% of total");
    EXPECT_EQ(InstructionFileShare::fraction(-5, 1000), 0);
}

} // namespace
} // namespace loadscope
