// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"

#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <gmock/gmock.h>

namespace loadscope {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

CodexItems sample() {
    CodexItems items;
    items.items = {{CodexItemKind::systemPrompt, 12'000}, {CodexItemKind::skills, 2'001}};
    items.model = "gpt-x";
    items.contextWindow = 272'000;
    items.instructions.files = {{"/w/AGENTS.md", 40'000, 32'768}, {"/w/a/AGENTS.md", 9, 0}};
    items.personalInstructions = CodexInstructions::File{"/home/.codex/AGENTS.md", 8, 8};
    return items;
}

CodexScanOutcome measured(std::int64_t total, const CodexItems& items) {
    CodexProbeResult result;
    result.total = total;
    result.items = items;
    return CodexScanOutcome::measured(result);
}

TEST(CodexItemsPresentation, LeavesTheRestOfAMeasuredTotal) {
    constexpr const char* size = "estimated from its size";
    constexpr const char* rest = "derived: the total minus the estimates";
    const auto view = CodexItemsPresentation::ofMeasurement(measured(10'000, sample()));
    ASSERT_TRUE(view);
    EXPECT_THAT(view->lines,
                ElementsAre(CodexItemLine{"System prompt", 3'000, size}, CodexItemLine{"Skills", 501, size},
                            CodexItemLine{"tools and the rest", 6'499, rest, true}));
    EXPECT_THAT(view->files, ElementsAre(CodexFileLine{"/home/.codex/AGENTS.md", "personal", 8, 8},
                                         CodexFileLine{"/w/AGENTS.md", "project", 32'768, 40'000},
                                         CodexFileLine{"/w/a/AGENTS.md", "project", 0, 9}));
    EXPECT_THAT(view->notes, IsEmpty());

    const auto over = CodexItemsPresentation::ofMeasurement(measured(3'500, sample()));
    EXPECT_EQ(over->lines.back().tokens, 0) << "never below 0";
    EXPECT_THAT(over->notes,
                ElementsAre("The estimates add up to 3,501 tokens, more than the measured total."));
    EXPECT_EQ(CodexItemsPresentation::ofMeasurement(CodexScanOutcome::measured({1, {}, 0})), std::nullopt);
    EXPECT_EQ(CodexItemsPresentation::ofMeasurement(CodexScanOutcome::unavailable("no")), std::nullopt);
}

TEST(CodexItemsPresentation, SaysWhatIsNotKnown) {
    CodexItems items = sample();
    items.items.erase(items.items.begin());
    items.instructions.unreadablePath = "/w/b/AGENTS.md";
    EXPECT_THAT(CodexItemsPresentation::ofEstimate(items).notes,
                ElementsAre(CodexItemsPresentation::noSystemPromptNote,
                            "Codex reads none of the project's instruction files, because one cannot be "
                            "read: /w/b/AGENTS.md."));
    const auto none = CodexItems::unavailable(CodexItems::notTold);
    const auto view = CodexItemsPresentation::ofMeasurement(measured(9, none));
    EXPECT_THAT(view->lines, IsEmpty());
    EXPECT_THAT(view->notes, ElementsAre("This version of Codex does not tell."));
    EXPECT_EQ(CodexItemsPresentation::estimateLine(none),
              "Codex: not estimated — This version of Codex does not tell.");
}

TEST(CodexItemsPresentation, CallsAnEstimateOne) {
    CodexItems items = sample();
    EXPECT_EQ(CodexItemsPresentation::ofEstimate(items).lines.size(), 2U) << "no rest without a total";
    EXPECT_EQ(CodexItemsPresentation::estimateLine(items),
              "Codex: about 3,501 tokens — an estimate from sizes, without a session.");
    EXPECT_EQ(CodexItemsPresentation::modelLine(items), "Model: gpt-x; its window: 272K.");
    items.contextWindow.reset();
    EXPECT_EQ(CodexItemsPresentation::modelLine(items), "Model: gpt-x.");
    items.model.reset();
    EXPECT_EQ(CodexItemsPresentation::modelLine(items), std::nullopt);
    items.personalInstructions->path = "/home/\xff";
    EXPECT_THAT(ScanReportJson::codexEstimate(RepoSelection("/w"), items), HasSubstr("/home/\uFFFD"));
}

} // namespace
} // namespace loadscope
