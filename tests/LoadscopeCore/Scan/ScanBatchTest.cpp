// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanBatch.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Scan/ScanBatchTexts.h"
#include "tests/Support/ManualUIThread.h"
#include "tests/Support/Testing.h"
#include "tests/Support/WaitFor.h"

#include <condition_variable>
#include <map>

namespace {

using State = ScanBatch::State;

/// Holds every scan until it is let go or stopped; folders named "bad" fail.
class Gate : public ProbeRunning {
public:
    ProbeResult run(const std::string& repository, const ProbeSettings&, StopToken stop) override {
        std::unique_lock lock(mutex_);
        most_ = std::max(most_, ++running_);
        const bool goesOn = waitOrStop(changed_, lock, stop, [&] { return open_ || allowed_[repository]; });
        --running_;
        if (!goesOn) throw CancellationError();
        if (repository.ends_with("bad")) throw ProbeError(ProbeError::TimedOut{});
        ProbeResult result{};
        result.authoritativeTotal = 1'000;
        result.totalSource = TotalSource::contextCommand;
        return result;
    }
    void open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }
    void allow(const std::string& repository) {
        const std::lock_guard lock(mutex_);
        allowed_[repository] = true;
        changed_.notify_all();
    }
    [[nodiscard]] int most() {
        const std::lock_guard lock(mutex_);
        return most_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = false;
    std::map<std::string, bool> allowed_;
    int running_ = 0;
    int most_ = 0;
};

struct NoCodex : CodexProbeRunning {
    CodexScanOutcome run(const std::string&, StopToken) override { return CodexScanOutcome::unavailable(""); }
    CodexItems estimate(const std::string&, StopToken) override { return {}; }
};

struct NoFiles : InstructionFileScanning {
    InstructionFileSet scan(const std::string&) override { return {}; }
};

class Batches : public testing::Test {
protected:
    std::vector<RepoSelection> folders(std::initializer_list<const char*> names) const {
        std::vector<RepoSelection> all;
        for (const char* name : names)
            all.emplace_back(makeFolder(folder_.path(name)));
        return all;
    }
    std::unique_ptr<ScanBatch> batch(std::size_t jobs) {
        return std::make_unique<ScanBatch>(
            thread_,
            [this] {
                return ScanStages::Collaborators{gate_, std::make_shared<NoFiles>(),
                                                 std::make_shared<ScanHistoryStore>(folder_.path("history")),
                                                 std::make_shared<NoCodex>()};
            },
            jobs);
    }
    /// "w" for waiting, "r" for running and so on, one letter for each folder.
    static std::string letters(const ScanBatch& batch) {
        std::string text;
        for (const ScanBatch::Item& item : batch.items())
            text += "wrsdfc"[static_cast<std::size_t>(item.state)];
        return text;
    }
    [[nodiscard]] bool reaches(const ScanBatch& batch, const std::string& expected) {
        return thread_.runUntil([&] { return letters(batch) == expected; });
    }
    [[nodiscard]] bool ends(const ScanBatch& batch) {
        return thread_.runUntil([&] { return !batch.isRunning(); });
    }
    [[nodiscard]] std::vector<std::string> recorded() const {
        std::vector<std::string> names;
        for (const RecordedScan& scan : ScanHistoryStore(folder_.path("history")).load())
            names.push_back(scan.repositoryName);
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder_;
    ManualUIThread thread_;
    std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
};

TEST_F(Batches, ScanAFewAtATimeAndGoOnAfterAFailure) {
    const auto scans = batch(2);
    const auto all = folders({"a", "bad", "c", "a", "d"});
    scans->start(all, {}, false);
    EXPECT_EQ(letters(*scans), "rrww") << "the second a is the first";
    scans->start(folders({"e"}), {}, false); // ignored
    ASSERT_TRUE(waitFor([&] { return gate_->most() == 2; }));
    gate_->allow(all[1].path);
    ASSERT_TRUE(reaches(*scans, "rfrw"));
    EXPECT_TRUE(recorded().empty());
    gate_->allow(all[2].path);
    ASSERT_TRUE(reaches(*scans, "rfdr"));
    EXPECT_EQ(recorded(), std::vector<std::string>{"c"}) << "as soon as it has ended";
    EXPECT_EQ(ScanBatchTexts::progress(scans->items()), "2 of 4 folders done");
    gate_->open();
    ASSERT_TRUE(ends(*scans));
    EXPECT_EQ(letters(*scans), "dfdd");
    EXPECT_EQ(gate_->most(), 2);
    EXPECT_EQ(recorded(), (std::vector<std::string>{"a", "c", "d"}));
    EXPECT_EQ(scans->items()[0].report->total, 1'000);
    EXPECT_EQ(ScanBatchTexts::state(scans->items()[1]), scans->items()[1].error->headline());
    EXPECT_EQ(ScanBatchTexts::progress(scans->items()), "3 of 4 folders measured, 1 failed");

    scans->start(folders({"e"}), {}, false);
    ASSERT_TRUE(ends(*scans));
    EXPECT_EQ(letters(*scans), "d") << "the earlier run is forgotten";
}

TEST_F(Batches, StopOneOrAll) {
    const auto scans = batch(1);
    scans->start(folders({"a", "b", "c", "d"}), {}, false);
    scans->cancel(2);
    scans->cancel(9);
    EXPECT_EQ(letters(*scans), "rwcw");
    scans->cancel(0);
    EXPECT_EQ(letters(*scans), "swcw");
    ASSERT_TRUE(reaches(*scans, "crcw"));
    scans->cancelAll();
    EXPECT_EQ(letters(*scans), "cscc") << "none begins in its place";
    ASSERT_TRUE(ends(*scans));
    EXPECT_EQ(letters(*scans), "cccc");
    EXPECT_EQ(ScanBatchTexts::progress(scans->items()), "0 of 4 folders measured, 4 stopped");
    EXPECT_TRUE(recorded().empty());
}

TEST_F(Batches, EndAllWhenTheyGo) {
    auto scans = batch(3);
    scans->start(folders({"a", "b", "c", "d"}), {}, false);
    int told = 0;
    const auto subscription = scans->observe([&] { ++told; });
    scans.reset(); // would wait for ever if one were not stopped
    thread_.runPending();
    EXPECT_EQ(told, 0) << "nobody is told of a batch that is gone";
}

} // namespace
