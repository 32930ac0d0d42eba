// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanModel.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include "LoadscopeCore/Process/CancellationError.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/ManualUIThread.h"
#include "tests/Support/PausingStore.h"
#include "tests/Support/Testing.h"

#include <condition_variable>

namespace {

using Hook = std::function<void(const StopToken&)>;

void waitForStop(const StopToken& stop) {
    std::mutex mutex;
    std::condition_variable wakeUp;
    std::unique_lock lock(mutex);
    waitOrStop(wakeUp, lock, stop, [] { return false; });
}

struct FakeProbe : ProbeRunning {
    Hook hook = [](const StopToken&) {};
    MeasurementConditions conditions;
    ProbeResult run(const std::string&, const ProbeSettings&, StopToken stop) override {
        hook(stop);
        return {.sessionID = "s",
                .authoritativeTotal = 45000,
                .totalSource = TotalSource::contextCommand,
                .selfReportedSlabs = {{"System tools", 40000}},
                .duration = 1,
                .resolvedCLIPath = "/bin/claude",
                .contextWindow = 200000,
                .conditions = conditions};
    }
};

struct FakeCodex : CodexProbeRunning {
    Hook hook = [](const StopToken&) {};
    CodexScanOutcome outcome = CodexScanOutcome::measured({41200, 272000, 2.5});
    std::atomic<int> runs = 0;
    CodexScanOutcome run(const std::string&, StopToken stop) override {
        ++runs;
        hook(stop);
        return outcome;
    }
    CodexItems estimate(const std::string&, StopToken) override { return {}; }
};

struct FakeScanner : InstructionFileScanning {
    std::function<void()> hook = [] {};
    InstructionFileSet scan(const std::string& repository) override {
        hook();
        InstructionFileSet files;
        files.repositoryFiles.emplace_back(repository + "/CLAUDE.md", 2050);
        return files;
    }
};

class ScanModels : public testing::Test {
protected:
    TemporaryFolder folder_;
    ManualUIThread thread_;
    std::shared_ptr<FakeProbe> probe_ = std::make_shared<FakeProbe>();
    std::shared_ptr<FakeCodex> codex_ = std::make_shared<FakeCodex>();
    std::shared_ptr<FakeScanner> scanner_ = std::make_shared<FakeScanner>();
    std::shared_ptr<PausingStore> store_ = std::make_shared<PausingStore>(folder_.path("history"));
    std::vector<std::string> stages_;
    Subscription subscription_;

    std::unique_ptr<ScanModel> makeModel(bool withStore = true) {
        auto model = std::make_unique<ScanModel>(
            thread_, ScanModel::Collaborators{probe_, scanner_, withStore ? store_ : nullptr, codex_});
        subscription_ = model->observe([this, &model = *model] {
            if (stages_.empty() || stages_.back() != model.scanStage()) stages_.push_back(model.scanStage());
        });
        model->select(RepoSelection(makeFolder(folder_.path("my app"))));
        stages_.clear();
        return model;
    }

    void runToEnd(ScanModel& model) {
        model.scan();
        ASSERT_TRUE(thread_.runUntil([&] { return !model.isScanTaskRunning(); }));
    }

    [[nodiscard]] bool rests(ScanModel& model) {
        return thread_.runUntil(
            [&] { return !model.isScanTaskRunning() && model.historyActivity() == HistoryActivity::none; });
    }

    void cancelAt(ScanModel& model, const std::string& stage) {
        model.scan();
        ASSERT_TRUE(thread_.runUntil([&] { return model.scanStage() == stage; }));
        model.cancel();
        EXPECT_TRUE(model.isCancelling());
        EXPECT_EQ(model.scanStage(), "Stopping scan…");
        model.cancel();
        ASSERT_TRUE(thread_.runUntil([&] { return !model.isScanTaskRunning(); }));
        EXPECT_FALSE(model.isCancelling());
    }
};

TEST_F(ScanModels, RunTheStagesInOrderAndRecordEachMeasuredTool) {
    const auto model = makeModel();
    EXPECT_EQ(model->scanStage(), "Ready to scan");
    runToEnd(*model);
    EXPECT_EQ(stages_, (std::vector<std::string>{"Checking folder access…", "Reading Claude startup context…",
                                                 "Counting local instruction files…"}));
    ASSERT_TRUE(model->state().report());
    EXPECT_EQ(model->state().report()->total, 45000);
    EXPECT_FALSE(model->state() == ScanState::scanning() || ScanState() == model->state());
    EXPECT_EQ(*model->state().report()->codex.reason(), "Codex was not included in this scan.");
    EXPECT_EQ(model->history().size(), 1U);
    EXPECT_EQ(codex_->runs, 0);

    model->setIncludeCodex(true);
    stages_.clear();
    runToEnd(*model);
    EXPECT_EQ(stages_[2], "Measuring Codex context…");
    ASSERT_EQ(model->history().size(), 3U);
    EXPECT_EQ(model->history()[1].tool, "claude");
    EXPECT_EQ(model->history()[2].tool, "codex");
    EXPECT_EQ(model->history()[2].repositoryName, "my app");
    EXPECT_EQ(model->history()[2].contextWindow, 272000);

    codex_->outcome = CodexScanOutcome::unavailable("no");
    runToEnd(*model);
    EXPECT_EQ(model->history().size(), 4U);
    EXPECT_EQ(store_->load().size(), 4U);
}

TEST_F(ScanModels, GuardEveryOperationThatMustWait) {
    const auto model = makeModel();
    const RepoSelection other(folder_.path("other"));
    scanner_->hook = [&] { EXPECT_EQ(codex_->runs, 0); };
    model->scan();
    EXPECT_FALSE(model->canScan());
    model->setIncludeCodex(true); // only from the next scan on
    model->select(other);
    model->scan();
    ASSERT_TRUE(thread_.runUntil([&] { return !model->isScanTaskRunning(); }));
    EXPECT_EQ(model->selection()->displayName, "my app");
    EXPECT_EQ(model->history().size(), 1U);
    EXPECT_TRUE(model->canScan());
    model->cancel();
    EXPECT_FALSE(model->isCancelling()) << "there is nothing to cancel";
    model->select(other);
    EXPECT_TRUE(model->state().isIdle());

    ScanModel empty(thread_, {probe_, scanner_, nullptr, codex_});
    empty.scan();
    EXPECT_TRUE(empty.state().isIdle());
}

TEST_F(ScanModels, EndInIdleAndRecordNothingWhenCancelled) {
    struct Case {
        const char* stage;
        const char* finalStage;
        std::function<void()> prepare;
    };
    const std::vector<Case> cases{
        {"Checking folder access…", "Scan cancelled. Ready to try again.", [] {}},
        {"Reading Claude startup context…", "Scan cancelled. Ready to try again.",
         [&] {
             probe_->hook = [](const StopToken& stop) {
                 waitForStop(stop);
                 throw CancellationError();
             };
         }},
        {"Reading Claude startup context…", "Stopping scan…",
         [&] {
             probe_->hook = [](const StopToken& stop) {
                 waitForStop(stop);
                 throw ProbeError(ProbeError::UnreadableContextReport{});
             };
         }},
        {"Measuring Codex context…", "Scan cancelled. Ready to try again.",
         [&] {
             probe_->hook = [](const StopToken&) {};
             codex_->hook = [](const StopToken& stop) { waitForStop(stop); };
         }},
    };
    const auto model = makeModel();
    model->setIncludeCodex(true);
    for (const Case& c : cases) {
        c.prepare();
        cancelAt(*model, c.stage);
        EXPECT_TRUE(model->state().isIdle()) << c.stage;
        EXPECT_EQ(model->scanStage(), c.finalStage) << c.stage;
    }
    EXPECT_TRUE(model->history().empty());
    EXPECT_TRUE(store_->load().empty());
}

TEST_F(ScanModels, HonourACancelThatComesAfterTheLastStage) {
    const auto model = makeModel();
    std::atomic<bool> lastStageIsOver = false;
    scanner_->hook = [&] { lastStageIsOver = true; };
    model->scan();
    while (!lastStageIsOver)
        std::this_thread::yield(); // the result is on its way, but the UI thread has not seen it
    model->cancel();
    ASSERT_TRUE(thread_.runUntil([&] { return !model->isScanTaskRunning(); }));
    EXPECT_TRUE(model->state().isIdle());
    EXPECT_EQ(model->scanStage(), "Scan cancelled. Ready to try again.");
    EXPECT_TRUE(store_->load().empty());
}

TEST_F(ScanModels, ShowWhyAScanFailedAndRecordNothing) {
    struct Case {
        const char* name;
        Hook hook;
        ProbeError expected;
    };
    const std::vector<Case> cases{
        {"probe error", [](const StopToken&) { throw ProbeError(ProbeError::TimedOut{}); },
         ProbeError::TimedOut{}},
        {"any other error", [](const StopToken&) { throw std::runtime_error("out of luck"); },
         ProbeError::UnreadableOutput{"out of luck"}},
    };
    const auto model = makeModel();
    for (const Case& c : cases) {
        probe_->hook = c.hook;
        runToEnd(*model);
        ASSERT_TRUE(model->state().error()) << c.name;
        EXPECT_EQ(*model->state().error(), c.expected) << c.name;
    }
    const std::string gone = folder_.path("gone");
    model->select(RepoSelection(gone));
    runToEnd(*model);
    EXPECT_EQ(*model->state().error(), ProbeError(ProbeError::RepositoryUnreadable{gone}));
    EXPECT_EQ(stages_.back(), "Checking folder access…");

    model->select(RepoSelection(folder_.path("my app")));
    probe_->hook = [](const StopToken&) { throw CancellationError(); };
    runToEnd(*model);
    EXPECT_TRUE(model->state().isIdle()) << "a cancellation that nobody asked for is no failure either";
    EXPECT_TRUE(model->history().empty());
}

TEST_F(ScanModels, RecordNoTotalThatTheToolOnlyEstimated) {
    const auto model = makeModel();
    probe_->conditions.isEstimate = true;
    runToEnd(*model);
    ASSERT_TRUE(model->state().report());
    EXPECT_TRUE(store_->load().empty());
    model->setIncludeCodex(true);
    runToEnd(*model);
    ASSERT_EQ(model->history().size(), 1U);
    EXPECT_EQ(model->history()[0].tool, "codex") << "which did not estimate";
}

TEST_F(ScanModels, LoadTheHistoryWithoutWaitingForIt) {
    store_->append(record(1, "web", day(1), 10));
    store_->pauseIn(PausingStore::Operation::load);
    const auto model = makeModel();
    const LetGo letGo(*store_);
    EXPECT_EQ(model->historyActivity(), HistoryActivity::loading);
    EXPECT_TRUE(model->history().empty());
    EXPECT_FALSE(model->canClearHistory());
    EXPECT_TRUE(model->canScan());
    bool isTold = false;
    const auto subscription = model->observe([&] { isTold = !model->history().empty(); });
    store_->goOn();
    ASSERT_TRUE(rests(*model));
    EXPECT_TRUE(isTold);
    EXPECT_TRUE(model->canClearHistory());
    EXPECT_EQ(ScanModel(thread_, {probe_, scanner_, nullptr, codex_}).historyActivity(),
              HistoryActivity::none);
}

TEST_F(ScanModels, ClearTheHistoryButNotTheResult) {
    const auto model = makeModel();
    const LetGo letGo(*store_);
    EXPECT_FALSE(model->canClearHistory());
    runToEnd(*model);
    store_->pauseIn(PausingStore::Operation::clear);
    model->clearHistory();
    EXPECT_EQ(model->historyActivity(), HistoryActivity::clearing);
    EXPECT_EQ(model->history().size(), 1U) << "until the store has done it";
    EXPECT_FALSE(model->canClearHistory());
    model->clearHistory();
    store_->goOn();
    ASSERT_TRUE(rests(*model));
    EXPECT_FALSE(model->couldNotClearHistory());
    EXPECT_TRUE(model->history().empty());
    EXPECT_TRUE(model->state().report());
    EXPECT_FALSE(std::filesystem::exists(store_->filePath()));

    runToEnd(*model);
    std::filesystem::remove(store_->filePath());
    makeFolder(store_->filePath() + "/in the way");
    model->clearHistory();
    ASSERT_TRUE(rests(*model));
    EXPECT_TRUE(model->couldNotClearHistory());
    EXPECT_EQ(model->history().size(), 1U);

    const auto unrecorded = makeModel(false);
    runToEnd(*unrecorded);
    EXPECT_TRUE(unrecorded->state().report());
    EXPECT_TRUE(unrecorded->history().empty());
    EXPECT_FALSE(unrecorded->canClearHistory());
}

TEST_F(ScanModels, AreGuardedWhileARecordIsBeingWritten) {
    store_->append(record(1, "web", day(1), 10));
    const auto model = makeModel();
    const LetGo letGo(*store_);
    ASSERT_TRUE(rests(*model));
    store_->pauseIn(PausingStore::Operation::append);
    model->scan();
    ASSERT_TRUE(thread_.runUntil([&] { return model->state().report() && store_->isWaiting(); }));
    EXPECT_TRUE(model->isScanTaskRunning());
    EXPECT_FALSE(model->canScan());
    model->scan();
    EXPECT_TRUE(model->state().report()) << "no second scan yet";
    const RepoSelection other(makeFolder(folder_.path("other")));
    model->select(other);
    EXPECT_EQ(model->selection(), other) << "the scan itself has ended";
    EXPECT_TRUE(model->state().isIdle());
    EXPECT_FALSE(model->canScan());
    model->clearHistory();
    store_->goOn();
    ASSERT_TRUE(rests(*model));
    EXPECT_TRUE(model->canScan());
    EXPECT_TRUE(model->history().empty()) << "the list that was written before does not come back";
    EXPECT_TRUE(store_->load().empty()) << "what is shown is what is stored";
}

TEST_F(ScanModels, WriteWhatWasMeasuredWhenDestroyed) {
    auto model = makeModel();
    const LetGo inAnyCase(*store_);
    store_->pauseIn(PausingStore::Operation::append);
    model->scan();
    ASSERT_TRUE(thread_.runUntil([&] { return model->state().report() && store_->isWaiting(); }));
    std::thread letGo([this] { store_->goOn(); });
    model.reset();
    letGo.join();
    ASSERT_EQ(store_->load().size(), 1U);
    EXPECT_EQ(store_->load()[0].repositoryName, "my app");
}

TEST_F(ScanModels, LeaveAFolderThatNeverAnswersBehind) {
    const auto answer = std::make_shared<std::promise<void>>();
    const auto never = [released = answer->get_future().share()](const std::string&) {
        released.wait();
        return std::optional<ProbeError>();
    };
    {
        ScanModel model(thread_, {probe_, scanner_, store_, codex_, never});
        model.select(RepoSelection("/"));
        for (const bool isCancelled : {true, false}) {
            model.scan();
            if (!isCancelled) break; // closing the window comes to the same
            model.cancel();
            EXPECT_TRUE(thread_.runUntil([&] { return !model.isScanTaskRunning(); }));
            EXPECT_EQ(model.scanStage(), "Scan cancelled. Ready to try again.");
        }
    }
    answer->set_value();
}

TEST_F(ScanModels, StopTheWorkWhenDestroyedInTheMiddle) {
    std::atomic<bool> stopped = false;
    probe_->hook = [&](const StopToken& stop) {
        waitForStop(stop);
        stopped = true;
        throw CancellationError();
    };
    auto model = makeModel();
    model->scan();
    model.reset();
    EXPECT_TRUE(stopped || stages_.size() <= 1);
    stages_.clear();
    thread_.runPending(); // whatever the worker had posted finds no model any more
    EXPECT_TRUE(stages_.empty());
}

} // namespace
