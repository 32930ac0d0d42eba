// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanModel.h"

#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Scan/HistoryWorker.h"
#include "LoadscopeCore/Scan/ScanStages.h"

#include <chrono>
#include <system_error>

namespace loadscope {
namespace {

constexpr const char* readyStage = "Ready to scan";
constexpr const char* stoppingStage = "Stopping scan…";
constexpr const char* cancelledStage = "Scan cancelled. Ready to try again.";

/// The report and its records have these in common, so that one who imports the report knows the record.
void identify(ScanReport& report) {
    report.date = std::chrono::system_clock::now();
    report.id = UUID::generate();
    if (const CodexProbeResult* codex = report.codex.result()) {
        CodexProbeResult identified = *codex;
        identified.id = UUID::generate();
        report.codex = CodexScanOutcome::measured(identified);
    }
}

} // namespace

std::shared_ptr<const ScanReport> ScanState::report() const {
    const auto* report = std::get_if<std::shared_ptr<const ScanReport>>(&value_);
    return report ? *report : nullptr;
}

std::string ScanState::label() const {
    if (isScanning()) return "Scanning";
    if (error() != nullptr) return "Scan failed";
    return report() != nullptr ? ScanPresentation::completeLabel : "Ready to scan";
}

bool ScanState::operator==(const ScanState& other) const {
    const auto left = report();
    const auto right = other.report();
    if (left && right) return *left == *right;
    return value_ == other.value_;
}

/// Shared with the functions that workers post: those hold it weakly, so that none touches a model that is
/// gone.
struct ScanModel::Implementation : std::enable_shared_from_this<Implementation> {
    Implementation(UIThread& thread, Collaborators given)
        : uiThread(thread), collaborators(std::move(given)) {}

    UIThread& uiThread;
    Collaborators collaborators;
    Observers observers;
    ScanState state;
    std::optional<RepoSelection> selection;
    std::vector<RecordedScan> history;
    std::shared_ptr<const RecordedScan> previous; ///< of the report that is the state
    bool includeCodex = false;
    ProbeSettings probeSettings;
    std::string scanStage = readyStage;
    bool isCancelling = false;
    bool taskRunning = false;
    HistoryActivity historyActivity = HistoryActivity::none;
    bool couldNotClear = false;
    JoiningThread task;
    // In the order of the jobs: no list that was read before a clearing is published after it.
    std::optional<HistoryWorker> historyWorker{std::in_place};

    /// Lets `change` run later on the UI thread and tells the observers after it. Called from any thread.
    template <typename Change>
    void post(Change change) {
        uiThread.post([weak = weak_from_this(), change = std::move(change)]() mutable {
            const auto self = weak.lock();
            if (!self) return;
            change(*self);
            self->observers.notify();
        });
    }

    void start();
    void finish(const RepoSelection& scanned, ScanStages::Outcome outcome);
    void accept(const RepoSelection& scanned, ScanReport report);
    [[nodiscard]] std::shared_ptr<const RecordedScan> previousOf(const ScanReport& report) const;
    void startRecording(std::vector<RecordedScan> scans);
    void endTask();
    void startLoading();
    void startClearing();
};

void ScanModel::Implementation::start() {
    state = ScanState::scanning();
    isCancelling = false;
    taskRunning = true;
    scanStage = ScanStages::folderStage;
    const auto work = [this, request = ScanStages::Request{*selection, probeSettings, includeCodex}](
                          const StopToken& stop) {
        const auto announce = [this](std::string stage) {
            post([stage = std::move(stage)](Implementation& self) {
                if (!self.isCancelling) self.scanStage = stage;
            });
        };
        ScanStages::Outcome outcome = ScanStages::perform(request, collaborators, announce, stop);
        post([scanned = request.selection, outcome = std::move(outcome)](Implementation& self) mutable {
            self.finish(scanned, std::move(outcome));
        });
    };
    try {
        task = JoiningThread(work);
    } catch (const std::system_error& error) { // no thread is to be had
        state = ScanState::failed(ProbeError::UnreadableOutput{error.what()});
        endTask();
    }
}

void ScanModel::Implementation::finish(const RepoSelection& scanned, ScanStages::Outcome outcome) {
    task.join(); // it posted this as its last act
    if (auto* report = std::get_if<ScanReport>(&outcome); report && !isCancelling) {
        accept(scanned, std::move(*report));
        return;
    }
    const auto* failure = std::get_if<ScanStages::Failure>(&outcome);
    if (failure && !isCancelling) {
        state = ScanState::failed(failure->error);
    } else {
        if (!failure) scanStage = cancelledStage;
        state = ScanState();
    }
    endTask();
}

void ScanModel::Implementation::accept(const RepoSelection& scanned, ScanReport report) {
    identify(report);
    std::vector<RecordedScan> scans;
    if (collaborators.historyStore) {
        if (!report.conditions.isEstimate)
            scans.push_back(RecordedScan::ofReport(report, *report.date, *report.id));
        if (const CodexProbeResult* codex = report.codex.result())
            scans.push_back(RecordedScan::ofCodex(*codex, scanned, *report.date, *codex->id));
    }
    previous = previousOf(report);
    state = ScanState::result(std::move(report));
    if (scans.empty()) {
        endTask();
    } else {
        startRecording(std::move(scans));
    }
}

std::shared_ptr<const RecordedScan> ScanModel::Implementation::previousOf(const ScanReport& report) const {
    auto scans = ScanHistory::scans(history, report.repositoryPath, RecordedScan::claudeTool);
    return scans.empty() ? nullptr : std::make_shared<const RecordedScan>(std::move(scans.back()));
}

void ScanModel::Implementation::startRecording(std::vector<RecordedScan> scans) {
    historyWorker->run([this, scans = std::move(scans)] {
        for (const RecordedScan& scan : scans)
            post([list = collaborators.historyStore->append(scan)](Implementation& self) mutable {
                self.history = std::move(list);
            });
        post([](Implementation& self) { self.endTask(); });
    });
}

void ScanModel::Implementation::endTask() {
    taskRunning = false;
    isCancelling = false;
}

void ScanModel::Implementation::startLoading() {
    historyActivity = HistoryActivity::loading;
    historyWorker->run([this] {
        post([list = collaborators.historyStore->load()](Implementation& self) mutable {
            self.history = std::move(list);
            if (self.historyActivity == HistoryActivity::loading)
                self.historyActivity = HistoryActivity::none;
        });
    });
}

void ScanModel::Implementation::startClearing() {
    historyActivity = HistoryActivity::clearing;
    historyWorker->run([this] {
        post([isCleared = collaborators.historyStore->clear()](Implementation& self) {
            self.historyActivity = HistoryActivity::none;
            self.couldNotClear = !isCleared;
            if (isCleared) self.history.clear();
        });
    });
}

ScanModel::ScanModel(UIThread& uiThread, Collaborators collaborators)
    : implementation_(std::make_shared<Implementation>(uiThread, std::move(collaborators))) {
    if (implementation_->collaborators.historyStore) implementation_->startLoading();
}

ScanModel::~ScanModel() {
    implementation_->task.requestStop();
    if (implementation_->task.joinable()) implementation_->task.join();
    implementation_->historyWorker.reset();
}

const ScanState& ScanModel::state() const { return implementation_->state; }
const std::optional<RepoSelection>& ScanModel::selection() const { return implementation_->selection; }
std::shared_ptr<const RecordedScan> ScanModel::previousScan() const {
    return implementation_->state.report() ? implementation_->previous : nullptr;
}

const std::vector<RecordedScan>& ScanModel::history() const { return implementation_->history; }
HistoryActivity ScanModel::historyActivity() const { return implementation_->historyActivity; }
bool ScanModel::couldNotClearHistory() const { return implementation_->couldNotClear; }
bool ScanModel::includeCodex() const { return implementation_->includeCodex; }
const std::string& ScanModel::scanStage() const { return implementation_->scanStage; }
bool ScanModel::isCancelling() const { return implementation_->isCancelling; }
bool ScanModel::isScanTaskRunning() const { return implementation_->taskRunning; }

bool ScanModel::canScan() const {
    return implementation_->selection && !implementation_->state.isScanning() &&
           !implementation_->taskRunning;
}

bool ScanModel::canClearHistory() const {
    return implementation_->collaborators.historyStore && !implementation_->history.empty() &&
           implementation_->historyActivity != HistoryActivity::clearing;
}

void ScanModel::select(RepoSelection selection) {
    if (implementation_->state.isScanning()) return;
    implementation_->selection = std::move(selection);
    implementation_->state = ScanState();
    implementation_->observers.notify();
}

void ScanModel::setIncludeCodex(bool include) {
    if (implementation_->includeCodex == include) return;
    implementation_->includeCodex = include;
    implementation_->observers.notify();
}

const ProbeSettings& ScanModel::probeSettings() const { return implementation_->probeSettings; }

void ScanModel::setProbeSettings(ProbeSettings settings) {
    if (implementation_->probeSettings == settings) return;
    implementation_->probeSettings = std::move(settings);
    implementation_->observers.notify();
}

void ScanModel::scan() {
    if (!canScan()) return;
    implementation_->start();
    implementation_->observers.notify();
}

void ScanModel::cancel() {
    if (!implementation_->state.isScanning() || implementation_->isCancelling) return;
    implementation_->isCancelling = true;
    implementation_->scanStage = stoppingStage;
    implementation_->task.requestStop();
    implementation_->observers.notify();
}

void ScanModel::reloadHistory() {
    if (!implementation_->collaborators.historyStore) return;
    implementation_->historyWorker->run([self = implementation_.get()] {
        self->post([list = self->collaborators.historyStore->load()](Implementation& model) mutable {
            model.history = std::move(list);
        });
    });
}

void ScanModel::clearHistory() {
    if (implementation_->historyActivity == HistoryActivity::clearing) return;
    if (implementation_->collaborators.historyStore)
        implementation_->startClearing();
    else
        implementation_->history.clear();
    implementation_->observers.notify();
}

Subscription ScanModel::observe(std::function<void()> observer) {
    return implementation_->observers.add(std::move(observer));
}

} // namespace loadscope
