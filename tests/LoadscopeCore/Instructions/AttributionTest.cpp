// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/Attribution.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "tests/Support/Testing.h"

#include <set>
#include <sstream>

namespace {

/// Attributes what a text such as "100: System tools=60, Memory files=30 | Personal instructions=20"
/// describes: total, reported categories and local estimates. Gives the rows as ordinal, first letter of the
/// provenance, name and tokens.
std::string attributed(const std::string& description) {
    std::istringstream input(description);
    std::int64_t total = 0;
    std::vector<SelfReportedSlab> reported;
    std::vector<LocalCategoryEstimate> estimates;
    bool isLocal = false;
    input >> total;
    input.ignore();
    for (std::string name; std::getline(input >> std::ws, name, '=');) {
        std::int64_t tokens = 0;
        input >> tokens >> std::ws;
        if (isLocal)
            estimates.push_back({name, tokens, {"Memory Files", "claudemd"}});
        else
            reported.push_back({name, tokens});
        isLocal = isLocal || input.peek() == '|';
        input.ignore();
    }
    const AttributionOutcome outcome = SlabAttributor::attribute(total, reported, estimates);
    std::string text;
    for (const SlabAttribution& row : outcome.rows) {
        text += std::to_string(row.ordinal) + rawValue(row.provenance)[0] + " " + row.name + "=" +
                std::to_string(row.tokens) + ", ";
    }
    EXPECT_EQ(outcome.categoriesSelfReported, !reported.empty());
    return text + std::to_string(outcome.remainder) + (outcome.overAttributed ? " over" : "");
}

TEST(Provenance, IsToldBesideEachRow) {
    EXPECT_EQ(listed(std::array{Provenance::claudeReported, Provenance::selfReported,
                                Provenance::localEstimate, Provenance::remainder},
                     [](Provenance one) { return sourceLabel(one); }),
              "reported by Claude; reported by Claude Code's /context; measured on disk at ~4 bytes/token "
              "(estimate); derived: total minus attributed; ");
}

TEST(SlabAttributor, ExplainsReportedCategoriesByLocalEstimates) {
    EXPECT_EQ(attributed("24000: System prompt=3000, System tools=12000, Memory files=5000, Messages=200 | "
                         "Repository instructions=3500, Personal instructions=800"),
              "1s System tools=12000, 6r Unattributed=3800, 4l Repository instructions=3500, 0s System "
              "prompt=3000, 5l Personal instructions=800, 2s Memory files (beyond local estimate)=700, 3s "
              "Messages=200, 3800");
    EXPECT_EQ(attributed("10000: System tools=9000, Memory files=1000 | Repository instructions=2500"),
              "0s System tools=9000, 1l Repository instructions=2500, 0 over");
    EXPECT_EQ(attributed("18000:"), "0c Startup context (categories not self-reported)=18000, 0");
    EXPECT_EQ(attributed("-3:"), "0c Startup context (categories not self-reported)=0, 0 over");
    EXPECT_EQ(attributed("1500: MCP tools=1000, Other=0, MCP-Tools=500"), "0s MCP tools=1500, 1s Other=0, 0");
    EXPECT_EQ(
        attributed(
            "300: REPO_files=60, CLAUDE.md=100, Memory files=5 | Repo files=100, Dropped=0, Dropped too=-4"),
        "3r Unattributed=135, 2l Repo files=100, 0s CLAUDE.md (beyond local estimate)=60, 1s Memory files "
        "(beyond local estimate)=5, 135");
    EXPECT_EQ(attributed("3: CLAUDE.md=2 | A=1"),
              "1l A=1, 0s CLAUDE.md (beyond local estimate)=1, 2r Unattributed=1, 1");
    EXPECT_EQ(attributed("10: Unknown=-5, claude.md=-7 | A=2"),
              "2r Unattributed=13, 1l A=2, 0s Unknown=-5, 13");
    EXPECT_EQ(attributed("50: b=10, Unattributed=10, a=10 | Z=10"),
              "1s Unattributed=10, 4r Unattributed=10, 3l Z=10, 2s a=10, 0s b=10, 10");
    EXPECT_EQ(attributed("9223372036854775807: a=9223372036854775807, A=9223372036854775807, b=1"),
              "0s a=9223372036854775807, 1s b=1, 0 over");
    EXPECT_EQ(attributed("9223372036854775807: a=-9223372036854775808"),
              "1r Unattributed=9223372036854775807, 0s a=-9223372036854775808, 9223372036854775807");
    EXPECT_EQ((SlabAttribution{"Memory files", 1, Provenance::selfReported, 2}.id()),
              "2|selfReported|Memory files");
}

TEST(SlabAttributor, AccountsForEveryTokenOfRandomReports) {
    std::mt19937 random(20261122);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const char* names[] = {
        "System prompt", "system-prompt", "Memory files", "CLAUDE.md", "MCP tools", "Übersicht", "*"};
    for (int round = 0; round < 2000; ++round) {
        std::vector<SelfReportedSlab> reported;
        std::vector<LocalCategoryEstimate> estimates;
        std::int64_t reportedTokens = 0;
        std::int64_t offered = 0;
        for (int count = below(6) + 1; count > 0; --count)
            reported.push_back({names[below(7)], below(9000)});
        for (int count = below(4); count > 0; --count)
            estimates.push_back({names[below(7)], below(5000) - 300, {"claudemd"}});
        for (const auto& slab : reported)
            reportedTokens += slab.tokens;
        for (const auto& estimate : estimates)
            offered += std::max<std::int64_t>(estimate.tokens, 0);
        const std::int64_t total = below(30000);
        const AttributionOutcome outcome = SlabAttributor::attribute(total, reported, estimates);
        std::map<Provenance, std::int64_t> sums;
        std::set<std::int64_t> ordinals;
        for (const SlabAttribution& row : outcome.rows) {
            sums[row.provenance] += row.tokens;
            ordinals.insert(row.ordinal);
        }
        const std::int64_t covered = sums[Provenance::selfReported] + sums[Provenance::localEstimate];
        ASSERT_EQ(outcome.remainder, sums[Provenance::remainder]);
        ASSERT_EQ(outcome.remainder, std::max<std::int64_t>(total - covered, 0));
        ASSERT_EQ(outcome.overAttributed, covered > total);
        ASSERT_EQ(sums[Provenance::localEstimate], offered) << "every estimate shows its full tokens";
        ASSERT_GE(sums[Provenance::selfReported], reportedTokens - offered)
            << "none explains more than it holds";
        ASSERT_LE(sums[Provenance::selfReported], reportedTokens);
        ASSERT_EQ(ordinals.size(), outcome.rows.size());
        ASSERT_TRUE(
            std::is_sorted(outcome.rows.begin(), outcome.rows.end(), [](const auto& left, const auto& right) {
                return std::tie(right.tokens, left.name) < std::tie(left.tokens, right.name);
            }));
    }
}

TEST(InstructionFileSet, OffersOneEstimatePerTierThatHoldsTokens) {
    InstructionFileSet set;
    set.inheritedFiles = {{"/CLAUDE.md", 0}, {"/h/CLAUDE.md", -9}};
    set.personalFiles = {{"/h/.claude/CLAUDE.md", largest}, {"/h/.claude/b.md", largest}};
    const std::vector<LocalCategoryEstimate> categories = set.localCategories();
    ASSERT_EQ(categories.size(), 1U);
    EXPECT_EQ(categories[0], (LocalCategoryEstimate{"Personal instructions",
                                                    (largest / 4 + 1) * 2,
                                                    {"userinstructions", "usermemory", "globalinstructions",
                                                     "personalmemory", "memoryfiles", "claudemd"}}));
    EXPECT_EQ(each(InstructionFileEstimate::estimatedTokensForByteCount, -1, 0, 1, 4, 5, 2050, 403),
              "0 0 1 1 2 513 101");
    EXPECT_EQ(InstructionFileShare::text(125, 1000) + InstructionFileShare::text(5, 0) +
                  InstructionFileShare::text(2000, 1000) + InstructionFileShare::text(1, 1),
              "12.5% of total0.0% of total100.0% of total100.0% of total");
}

} // namespace
