// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include "tests/Support/ManualUIThread.h"

#include <atomic>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>

namespace loadscope {
namespace {

/// Answers with the folder's name as the model, at once or only when it is stopped.
struct FakeCodex : CodexProbeRunning {
    std::atomic<bool> hangs = false;
    std::atomic<int> ended = 0;
    CodexScanOutcome run(const std::string&, StopToken) override {
        ADD_FAILURE() << "no session";
        return CodexScanOutcome::unavailable("");
    }
    CodexItems estimate(const std::string& repository, StopToken stop) override {
        std::mutex mutex;
        std::condition_variable stopped;
        std::unique_lock lock(mutex);
        waitOrStop(stopped, lock, stop, [this] { return !hangs; });
        ++ended;
        CodexItems items;
        items.items = {{CodexItemKind::skills, 8}};
        items.model = repository;
        return items;
    }
};

class CodexEstimates : public testing::Test {
protected:
    bool ends() {
        return thread.runUntil([&] { return !model->isRunning(); });
    }

    ManualUIThread thread;
    std::shared_ptr<FakeCodex> codex = std::make_shared<FakeCodex>();
    std::unique_ptr<CodexEstimateModel> model = std::make_unique<CodexEstimateModel>(thread, codex);
    int changes = 0;
    Subscription subscription = model->observe([this] { ++changes; });
};

TEST_F(CodexEstimates, AnswerOneQuestionAfterTheOther) {
    EXPECT_FALSE(model->isRunning() || model->items());
    model->estimate("/a");
    EXPECT_TRUE(model->isRunning());
    model->estimate("/b");
    ASSERT_TRUE(ends());
    EXPECT_EQ(changes, 2) << "begun and ended";
    EXPECT_EQ(model->items()->model, "/a") << "the second was ignored";
    EXPECT_EQ(model->repository(), "/a");
    model->estimate("/b");
    EXPECT_FALSE(model->items()) << "no old answer while a new one is awaited";
    ASSERT_TRUE(ends());
    EXPECT_EQ(model->items()->model, "/b");
    model->clear();
    EXPECT_FALSE(model->items());
    model->clear();
    model->cancel();
    EXPECT_EQ(changes, 5);
}

TEST_F(CodexEstimates, HaveNoAnswerAfterACancel) {
    codex->hangs = true;
    for (const auto& stop : {&CodexEstimateModel::cancel, &CodexEstimateModel::clear}) {
        model->estimate("/a");
        ((*model).*stop)();
        EXPECT_TRUE(model->isRunning() && model->isCancelling());
        ((*model).*stop)();
        ASSERT_TRUE(ends());
        EXPECT_FALSE(model->isCancelling() || model->items());
    }
    codex->hangs = false;
    model->estimate("/b");
    ASSERT_TRUE(ends());
    EXPECT_EQ(model->items()->model, "/b");
}

TEST_F(CodexEstimates, EndWithTheModel) {
    codex->hangs = true;
    model->estimate("/a");
    model.reset();
    EXPECT_EQ(codex->ended, 1);
    EXPECT_EQ(thread.runPending(), 1U) << "what was posted finds no model";
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace loadscope
