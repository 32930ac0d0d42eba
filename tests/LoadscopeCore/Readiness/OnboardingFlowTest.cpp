// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include "tests/Support/Testing.h"

namespace {

struct Store : OnboardingCompletionStore {
    bool completed = false;
    [[nodiscard]] bool onboardingCompleted() const override { return completed; }
    void setOnboardingCompleted(bool value) override { completed = value; }
};

using Direction = OnboardingFlow::Direction;

TEST(OnboardingFlow, MovesThroughItsStepsAndFinishesOnce) {
    struct Case {
        std::string moves; ///< a(dvance), b(ack), s(kip), f(inish)
        int index;
        Direction direction;
        bool finished;
    };
    const std::vector<Case> cases{
        {"", 0, Direction::forward, false},     {"b", 0, Direction::forward, false},
        {"aaa", 3, Direction::forward, false},  {"aaaa", 3, Direction::forward, true},
        {"aab", 1, Direction::backward, false}, {"abb", 0, Direction::backward, false},
        {"abs", 0, Direction::backward, true},  {"aaf", 2, Direction::forward, true}};
    for (const auto& [moves, index, direction, finished] : cases) {
        Store store;
        OnboardingFlow flow{OnboardingCompletion(store)};
        for (const char move : moves) {
            if (move == 'a') flow.advance();
            if (move == 'b') flow.goBack();
            if (move == 's') flow.skip();
            if (move == 'f') flow.finish();
        }
        EXPECT_EQ(flow.currentStep().index, index) << moves;
        EXPECT_EQ(flow.direction(), direction) << moves;
        EXPECT_EQ(flow.isFinished(), finished) << moves;
        EXPECT_EQ(store.completed, finished) << moves;
        EXPECT_EQ(flow.shouldPresent(), !finished) << moves;
    }
}

} // namespace
