// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/ContentView.h"

#include "LoadscopeApp/Cards/AlertPanel.h"
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Help/HelpButton.h"
#include "LoadscopeApp/Onboarding/OnboardingView.h"
#include "LoadscopeApp/Pages/Compare/CompareView.h"
#include "LoadscopeApp/Pages/Compare/RescanCard.h"
#include "LoadscopeApp/Pages/Overview/OverviewStart.h"
#include "LoadscopeApp/Pages/Overview/OverviewView.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeApp/Window/FindBar.h"
#include "LoadscopeApp/Window/FolderDrop.h"
#include "LoadscopeApp/Window/Sidebar.h"
#include "LoadscopeApp/Window/WindowSplitter.h"
#include "LoadscopeApp/Window/WindowToolbar.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Presentation/Notices.h"
#include "LoadscopeCore/Readiness/OnboardingFlow.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace loadscope {

ContentView::ContentView(ScanModel& model, ReadinessModel& readiness, OnboardingCompletionStore& onboarding,
                         FolderChooser chooser)
    : model_(model),
      readiness_(readiness),
      onboarding_(onboarding),
      chooser_(std::move(chooser)),
      content_(new QWidget(this)),
      toolbar_(new WindowToolbar),
      splitter_(new WindowSplitter),
      sidebar_(new Sidebar(readiness, model)),
      pages_(new QStackedWidget),
      overview_(new OverviewView) {
    setWindowTitle(QStringLiteral("Loadscope"));
    setMinimumSize(Metrics::minimumWindowWidth, Metrics::minimumWindowHeight);
    resize(firstSize(screen()->availableSize()));
    layOut();
    connectAll();
    new FolderDrop(
        this, [this] { return !model_.state().isScanning() && content_->isEnabled(); },
        [this](const std::string& folder) { selectFolder(folder); });
    AppTheme::bind(this, [this] {
        setPalette(AppTheme::current().palette());
        update();
    });
    sidebar_->selectPage(page_);
    refresh();
}

ContentView::~ContentView() = default;

QSize ContentView::firstSize(QSize available) {
    const QSize room = available - QSize(0, Metrics::windowFrameHeight);
    return QSize(Metrics::windowWidth, Metrics::windowHeight)
        .boundedTo(room)
        .expandedTo(QSize(Metrics::minimumWindowWidth, Metrics::minimumWindowHeight));
}

void ContentView::layOut() {
    pages_->addWidget(overview_);
    splitter_->addWidget(sidebar_);
    auto* area = new QWidget;
    find_ = new FindBar(pages_, area);
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(find_);
    column->addWidget(pages_, 1);
    splitter_->addWidget(area);
    // The splitter lowers what it is given, but children are read to the user in their order.
    area->raise();
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    auto* rows = new QVBoxLayout(content_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(toolbar_);
    rows->addWidget(splitter_, 1);
    auto* frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(content_);
    splitter_->setSizes({Metrics::sidebarWidth, Metrics::windowWidth - Metrics::sidebarWidth});
}

void ContentView::connectAll() {
    connect(toolbar_, &WindowToolbar::chooseRequested, this, &ContentView::chooseFolder);
    connect(toolbar_, &WindowToolbar::scanRequested, this, &ContentView::startScan);
    connect(sidebar_, &Sidebar::pageSelected, this, &ContentView::setPage);
    connect(overview_->start(), &OverviewStart::chooseRequested, this, &ContentView::chooseFolder);
    connect(overview_, &OverviewView::cancelRequested, this, [this] { model_.cancel(); });
    connect(overview_, &OverviewView::retryRequested, this, &ContentView::startScan);
    for (std::size_t index = 0; index < allAppPages.size(); ++index) {
        const AppPage page = allAppPages[index];
        auto* shortcut =
            new QShortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(index)), content_);
        connect(shortcut, &QShortcut::activated, this, [this, page] { setPage(page); });
    }
    connect(new QShortcut(Qt::Key_F5, content_), &QShortcut::activated, this, [this] {
        if (model_.canScan()) startScan();
    });
    connect(sidebar_, &Sidebar::walkthroughRequested, this, &ContentView::presentOnboarding);
    connect(new QShortcut(Qt::Key_F1, content_), &QShortcut::activated, this,
            [this] { HelpSheets::showShortcuts(pages_); });
    connect(new QShortcut(QKeySequence::Find, content_), &QShortcut::activated, find_, &FindBar::open);
    // Of the window, so that it also ends the program while a sheet is up.
    connect(new QShortcut(Qt::CTRL | Qt::Key_Q, this), &QShortcut::activated, qApp, &QApplication::quit);
    modelSubscription_ = model_.observe([this] { refresh(); });
    readinessSubscription_ = readiness_.observe([this] { refresh(); });
}

void ContentView::setCodexEstimates(CodexEstimateModel& estimates) {
    codexEstimates_ = &estimates;
    codexSubscription_ = estimates.observe([this] { refresh(); });
    connect(overview_, &OverviewView::codexEstimateRequested, this, [this] {
        if (model_.selection()) codexEstimates_->estimate(model_.selection()->path);
    });
    connect(overview_, &OverviewView::codexEstimateCancelRequested, this,
            [this] { codexEstimates_->cancel(); });
}

void ContentView::setRecentFolders(RecentFolders& recent) {
    recent_ = &recent;
    recentSubscription_ = recent.observe([this] { refreshRecent(); });
    connect(toolbar_, &WindowToolbar::recentRequested, this, &ContentView::selectFolder);
    connect(toolbar_, &WindowToolbar::recentShown, this, [this] { recent_->check(); });
    connect(overview_->start(), &OverviewStart::folderRequested, this, &ContentView::selectFolder);
    connect(overview_->start(), &OverviewStart::shown, this, [this] { recent_->check(); });
    recent_->setHistory(model_.history());
    refreshRecent();
}

void ContentView::setBatch(ScanBatch& batch) {
    batch_ = &batch;
    batchSubscription_ = batch.observe([this] { followBatch(); });
}

void ContentView::rescanAll() {
    if (batch_ == nullptr || batch_->isRunning() || model_.state().isScanning()) return;
    std::vector<RepoSelection> folders;
    for (const RecordedScan& scan :
         ScanHistory::latestPerRepository(model_.history(), RecordedScan::claudeTool))
        folders.emplace_back(scan.repositoryPath, scan.repositoryName);
    batchReports_.clear();
    ProbeSettings settings = model_.probeSettings();
    settings.signInVerified = readiness_.claude() == ToolReadiness::ready;
    batch_->start(folders, settings, false);
}

void ContentView::followBatch() {
    bool hasMeasured = false;
    for (const ScanBatch::Item& item : batch_->items()) {
        if (!item.report || std::count(batchReports_.begin(), batchReports_.end(), item.report) > 0) continue;
        batchReports_.push_back(item.report);
        keptReports_.keep({item.report, nullptr});
        hasMeasured = true;
    }
    if (hasMeasured) model_.reloadHistory();
    refresh();
}

void ContentView::refreshRescan() {
    if (compare_ == nullptr || batch_ == nullptr) return;
    const auto blocker = readiness_.scanBlocker(false);
    const QString why = model_.state().isScanning() ? DisplayText::own(Notice::scanIsRunning().title)
                        : blocker                   ? DisplayText::own(*blocker)
                                                    : QString();
    compare_->rescanCard()->refresh(
        {batch_->items(), batch_->isRunning(),
         ScanHistory::latestPerRepository(model_.history(), RecordedScan::claudeTool).size(), batch_->jobs(),
         why});
}

bool ContentView::mayScan() const {
    return model_.canScan() && (batch_ == nullptr || !batch_->isRunning()) &&
           readiness_.permitsScan(model_.includeCodex());
}

void ContentView::refreshRecent() {
    toolbar_->setRecent(recent_->folders());
    overview_->start()->refresh(recent_->folders());
    toolbar_->refresh({model_.state().isScanning(), model_.selection().has_value(), mayScan()});
}

void ContentView::setPage(AppPage page) {
    page_ = page;
    sidebar_->selectPage(page);
    refreshPage();
}

void ContentView::chooseFolder() {
    if (model_.state().isScanning()) return;
    // Beside the folder that was chosen last.
    std::string beside;
    if (model_.selection())
        beside = FilePath::parent(model_.selection()->path);
    else if (recent_ != nullptr && !recent_->folders().empty() && !recent_->folders().front().isMissing)
        beside = FilePath::parent(recent_->folders().front().selection.path);
    chooser_(this, beside, [this](const std::string& path) { selectFolder(path); });
}

void ContentView::selectFolder(const std::string& path) {
    if (model_.state().isScanning()) return;
    model_.select(RepoSelection(path));
    if (recent_ != nullptr) recent_->add(*model_.selection());
    if (codexEstimates_ != nullptr && codexEstimates_->repository() != path) codexEstimates_->clear();
    setPage(AppPage::overview);
}

void ContentView::startScan() {
    if (!mayScan()) return;
    setPage(AppPage::overview);
    ProbeSettings settings = model_.probeSettings();
    settings.signInVerified = readiness_.claude() == ToolReadiness::ready;
    model_.setProbeSettings(std::move(settings));
    model_.scan();
}

void ContentView::openRepository(const std::string& path) {
    if (model_.selection() && model_.selection()->path == path) {
        setPage(AppPage::overview); // its report stays
        return;
    }
    if (model_.state().isScanning()) {
        AlertPanel::tell(pages_, Notice::scanIsRunning());
        return;
    }
    selectFolder(path);
    if (keptReport() == nullptr) setPage(AppPage::trends);
}

const KeptReports::Kept* ContentView::keptReport() const {
    return model_.state().isIdle() && model_.selection() ? keptReports_.find(model_.selection()->path)
                                                         : nullptr;
}

void ContentView::followClearing() {
    const bool isClearing = model_.historyActivity() == HistoryActivity::clearing;
    const bool hasEnded = std::exchange(isClearing_, isClearing) && !isClearing;
    if (!hasEnded || !model_.couldNotClearHistory()) return;
    AlertPanel::tell(pages_, Notice::historyNotDeleted());
}

void ContentView::refresh() {
    if (const auto report = model_.state().report()) {
        const auto* const kept = keptReports_.find(report->repositoryPath);
        if (kept == nullptr || kept->report != report) keptReports_.keep({report, model_.previousScan()});
    }
    if (recent_ != nullptr && recentHistory_ != model_.history()) {
        recentHistory_ = model_.history();
        recent_->setHistory(recentHistory_);
        if (overview_->start()->isVisible()) recent_->check();
    }
    toolbar_->refresh({model_.state().isScanning(), model_.selection().has_value(), mayScan()});
    sidebar_->refresh();
    refreshPage();
    followClearing();
}

void ContentView::refreshPage() {
    switch (page_) {
    case AppPage::overview:
        pages_->setCurrentWidget(overview_);
        break;
    case AppPage::trends: {
        if (trends_ == nullptr) {
            trends_ = new TrendsView;
            pages_->addWidget(trends_);
            connect(trends_, &TrendsView::repositoryRequested, this, &ContentView::openRepository);
            connect(trends_, &TrendsView::clearRequested, this, [this] { model_.clearHistory(); });
        }
        std::optional<std::string> path;
        if (model_.selection()) path = model_.selection()->path;
        trends_->refresh(model_.history(), path, model_.historyActivity());
        pages_->setCurrentWidget(trends_);
        break;
    }
    case AppPage::compare:
        if (compare_ == nullptr) {
            compare_ = new CompareView;
            pages_->addWidget(compare_);
            connect(compare_, &CompareView::repositoryRequested, this, &ContentView::openRepository);
            connect(compare_->rescanCard(), &RescanCard::rescanRequested, this, &ContentView::rescanAll);
            connect(compare_->rescanCard(), &RescanCard::cancelRequested, this,
                    [this](std::size_t index) { batch_->cancel(index); });
            connect(compare_->rescanCard(), &RescanCard::cancelAllRequested, this,
                    [this] { batch_->cancelAll(); });
        }
        compare_->refresh(model_.history(), model_.historyActivity());
        refreshRescan();
        pages_->setCurrentWidget(compare_);
        break;
    }
    const auto retryBlocker = readiness_.scanBlocker(model_.includeCodex());
    const auto* const kept = keptReport();
    // Its state is kept in line while another page is shown, so that it is there at once.
    overview_->refresh({model_.state(), DisplayText::own(model_.scanStage()), !model_.isCancelling(),
                        retryBlocker ? DisplayText::own(*retryBlocker) : QString(),
                        kept != nullptr ? kept->previous : model_.previousScan(), codexEstimate(),
                        kept != nullptr ? kept->report : nullptr});
}

CodexCard::Estimate ContentView::codexEstimate() const {
    if (codexEstimates_ == nullptr || !model_.selection()) return {};
    if (codexEstimates_->repository() != model_.selection()->path) return {.canAsk = true};
    return {true, codexEstimates_->isRunning(), codexEstimates_->isCancelling(), codexEstimates_->items()};
}

Sheet* ContentView::onboardingSheet() const { return sheet_; }

void ContentView::presentOnboarding() {
    if (sheet_ != nullptr) return;
    auto* view = new OnboardingView(OnboardingCompletion(onboarding_));
    sheet_ = new Sheet(this, content_, view, QStringLiteral("Welcome to Loadscope"));
    connect(view, &OnboardingView::closeRequested, sheet_, &Sheet::dismiss);
    // However it was closed: the walkthrough does not come back.
    connect(sheet_, &Sheet::dismissed, this, [this] { OnboardingCompletion(onboarding_).markComplete(); });
    sheet_->present(view->primaryButton());
}

void ContentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (wasShown_) return;
    wasShown_ = true;
    readiness_.recheck();
    if (OnboardingCompletion(onboarding_).shouldPresent())
        QTimer::singleShot(onboardingDelayMilliseconds, this, [this] {
            if (isVisible()) presentOnboarding();
        });
}

void ContentView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::window));
}

} // namespace loadscope
