// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

struct Store : OnboardingCompletionStore {
    bool completed = false;
    [[nodiscard]] bool onboardingCompleted() const override { return completed; }
    void setOnboardingCompleted(bool value) override { completed = value; }
};

using Direction = OnboardingFlow::Direction;

TEST(OnboardingFlow, MovesThroughItsStepsAndFinishesOnce) {
    struct Case {
        const char* name;
        std::string moves; ///< a(dvance), b(ack), s(kip), f(inish)
        int index;
        Direction direction;
        bool finished;
    };
    const std::vector<Case> cases{
        {"begins at the first step", "", 0, Direction::forward, false},
        {"does not go back from the first step", "b", 0, Direction::forward, false},
        {"reaches the last step", "aaa", 3, Direction::forward, false},
        {"finishes after the last step", "aaaa", 3, Direction::forward, true},
        {"remembers the way back", "aab", 1, Direction::backward, false},
        {"keeps its way at the first step", "abb", 0, Direction::backward, false},
        {"skips from anywhere", "abs", 0, Direction::backward, true},
        {"is finished from outside", "aaf", 2, Direction::forward, true},
    };
    for (const auto& [name, moves, index, direction, finished] : cases) {
        Store store;
        OnboardingFlow flow{OnboardingCompletion(store)};
        for (const char move : moves) {
            if (move == 'a') flow.advance();
            if (move == 'b') flow.goBack();
            if (move == 's') flow.skip();
            if (move == 'f') flow.finish();
        }
        EXPECT_EQ(flow.currentStep().index, index) << name;
        EXPECT_EQ(flow.direction(), direction) << name;
        EXPECT_EQ(flow.isFinished(), finished) << name;
        EXPECT_EQ(store.completed, finished) << name;
        EXPECT_EQ(flow.shouldPresent(), !finished) << name;
    }
}

TEST(OnboardingFlow, HasFourStepsThatFitTheirPlaces) {
    const auto& steps = OnboardingFlow::steps();
    ASSERT_EQ(steps.size(), 4U);
    for (int index = 0; index < 4; ++index) {
        const auto& step = steps[static_cast<std::size_t>(index)];
        EXPECT_EQ(step.index, index);
        EXPECT_EQ(static_cast<int>(step.illustration), index);
        EXPECT_EQ(step.footnote.has_value(), index > 0);
        EXPECT_EQ(step.showsBack(), index > 0);
        EXPECT_EQ(step.showsSkip(), index < 3);
        EXPECT_EQ(step.primaryTitle, index < 3 ? "Next" : "Got it");
    }
}

} // namespace
} // namespace loadscope
