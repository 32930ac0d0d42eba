// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanBatch.h"

#include "LoadscopeCore/Scan/ScanModel.h"

#include <algorithm>
#include <map>
#include <thread>
#include <utility>

namespace loadscope {

/// Held weakly by what it posts: a batch that is gone is not touched.
struct ScanBatch::Implementation : std::enable_shared_from_this<Implementation> {
    /// The subscription goes before the model that it observes.
    struct Run {
        std::unique_ptr<ScanModel> model;
        Subscription subscription;
    };

    Implementation(UIThread& thread, std::function<ScanStages::Collaborators()> given, std::size_t atATime)
        : uiThread(thread), collaborators(std::move(given)), jobs(std::max<std::size_t>(atATime, 1)) {}

    UIThread& uiThread;
    const std::function<ScanStages::Collaborators()> collaborators;
    const std::size_t jobs;
    Observers observers;
    std::vector<Item> items;
    ProbeSettings settings;
    bool includeCodex = false;
    std::map<std::size_t, Run> runs; ///< by the index of their item

    void startWaiting();
    void start(std::size_t index);
    void follow(std::size_t index);
    void scheduleEnd(std::size_t index);
};

void ScanBatch::Implementation::startWaiting() {
    for (std::size_t i = 0; i < items.size() && runs.size() < jobs; ++i)
        if (items[i].state == State::waiting) start(i);
}

void ScanBatch::Implementation::start(std::size_t index) {
    Item& item = items[index];
    item.state = State::running;
    Run& run = runs[index];
    run.model = std::make_unique<ScanModel>(uiThread, collaborators());
    run.model->select(item.selection);
    run.model->setIncludeCodex(includeCodex);
    run.model->setProbeSettings(settings);
    run.subscription = run.model->observe([this, index] { follow(index); });
    run.model->scan();
}

/// Takes over what a model tells of its scan.
void ScanBatch::Implementation::follow(std::size_t index) {
    Item& item = items[index];
    if (item.hasEnded()) return; // the model is about to go
    const ScanModel& model = *runs.at(index).model;
    item.stage = model.scanStage();
    // What is still asked of the disk would be waited for when the model goes.
    const bool isAtRest = !model.isScanTaskRunning() && model.historyActivity() == HistoryActivity::none;
    if (isAtRest && !model.state().isScanning()) {
        item.stage.clear();
        item.report = model.state().report();
        if (const ProbeError* const error = model.state().error()) item.error = *error;
        item.state = item.report ? State::done : item.error ? State::failed : State::cancelled;
        scheduleEnd(index);
    }
    observers.notify();
}

/// The model calls from within; it is destroyed when it has returned.
void ScanBatch::Implementation::scheduleEnd(std::size_t index) {
    uiThread.post([weak = weak_from_this(), index] {
        const auto self = weak.lock();
        if (!self) return;
        self->runs.erase(index);
        self->startWaiting();
        self->observers.notify();
    });
}

std::size_t ScanBatch::defaultJobs() { return std::max(1U, std::thread::hardware_concurrency() / 2); }

ScanBatch::ScanBatch(UIThread& uiThread, std::function<ScanStages::Collaborators()> collaborators,
                     std::size_t jobs)
    : implementation_(std::make_shared<Implementation>(uiThread, std::move(collaborators), jobs)) {}

ScanBatch::~ScanBatch() {
    // All of them first: they end side by side.
    for (auto& [index, run] : implementation_->runs) {
        run.subscription = {};
        run.model->cancel();
    }
    implementation_->runs.clear();
}

void ScanBatch::start(const std::vector<RepoSelection>& folders, const ProbeSettings& settings,
                      bool includeCodex) {
    if (isRunning()) return;
    std::vector<Item>& items = implementation_->items;
    items.clear();
    for (const RepoSelection& folder : folders) {
        const auto isIt = [&](const Item& item) { return item.selection.id() == folder.id(); };
        if (std::none_of(items.begin(), items.end(), isIt)) items.push_back({folder});
    }
    implementation_->settings = settings;
    implementation_->includeCodex = includeCodex;
    implementation_->startWaiting();
    implementation_->observers.notify();
}

const std::vector<ScanBatch::Item>& ScanBatch::items() const { return implementation_->items; }

std::size_t ScanBatch::endedCount() const {
    return static_cast<std::size_t>(
        std::count_if(items().begin(), items().end(), [](const Item& item) { return item.hasEnded(); }));
}

std::size_t ScanBatch::jobs() const { return implementation_->jobs; }

bool ScanBatch::isRunning() const { return !implementation_->runs.empty(); }

void ScanBatch::cancel(std::size_t index) {
    if (index >= items().size()) return;
    Item& item = implementation_->items[index];
    if (item.state == State::running) {
        item.state = State::stopping;
        implementation_->runs.at(index).model->cancel(); // tells the observers
    } else if (item.state == State::waiting) {
        item.state = State::cancelled;
        implementation_->observers.notify();
    }
}

void ScanBatch::cancelAll() {
    // Those that wait first: none of them is to begin in the place of one that was stopped.
    for (const State state : {State::waiting, State::running})
        for (std::size_t i = 0; i < items().size(); ++i)
            if (items()[i].state == state) cancel(i);
}

Subscription ScanBatch::observe(std::function<void()> observer) {
    return implementation_->observers.add(std::move(observer));
}

} // namespace loadscope
