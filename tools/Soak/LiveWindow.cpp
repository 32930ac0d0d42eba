// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/LiveWindow.h"

#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Window/FolderPanel.h"
#include "tools/Soak/Journal.h"

#include <QAbstractButton>
#include <QCoreApplication>

namespace loadscope::soak {
namespace {

void require(bool holds, const char* what) {
    if (!holds) Journal::current().violated(std::string("the window's state is not legal: ") + what);
}

} // namespace

ScanModel::Collaborators LiveWindow::collaborators(Dice& dice) {
    auto all = ScanModel::Collaborators::forUser();
    const double timeout = dice.between(2, 6);
    auto probe = std::make_shared<ProbeRunner>(ProbeRunner::forUser());
    probe->limits = {.timeoutSeconds = timeout, .killGraceSeconds = 0.5, .readerGraceSeconds = 1};
    probe->transcriptRetryDelay = 0.1;
    all.probeRunner = std::move(probe);
    all.codexRunner = std::make_shared<CodexProbe>(std::nullopt, timeout);
    return all;
}

LiveWindow::LiveWindow(Dice& dice, HistoryWatch& history)
    : history_(history),
      clearing_{history},
      model_(uiThread_, collaborators(dice)),
      readiness_(uiThread_),
      view_(model_, readiness_, settings_,
            [this](QWidget* window, const std::string& start, std::function<void(std::string)> done) {
                if (nextChoice_) {
                    done(*nextChoice_);
                } else {
                    FolderPanel::open(window, start, std::move(done));
                }
            }),
      subscription_(model_.observe([this] { onModelChanged(); })) {
    settings_.restoreWindow(view_, *view_.splitter());
    view_.setRecentFolders(recent_);
    view_.setBatch(batch_);
    view_.show();
    view_.activateWindow();
    Journal::current().count("windows opened");
}

LiveWindow::~LiveWindow() {
    if (model_.isScanTaskRunning()) Journal::current().count("windows closed in mid-scan");
    view_.close();
    settings_.saveWindow(view_, *view_.splitter());
    view_.hide();
    QCoreApplication::processEvents();
}

void LiveWindow::followClearing() {
    const bool isClearing = model_.historyActivity() == HistoryActivity::clearing;
    if (clearing_.isOpen && !isClearing)
        Journal::current().count(model_.couldNotClearHistory() ? "histories not cleared"
                                                               : "histories cleared");
    clearing_.set(isClearing);
}

void LiveWindow::onModelChanged() {
    followClearing();
    const ScanState& state = model_.state();
    if (state.isScanning()) {
        if (!scanBegin_) {
            scanBegin_ = std::chrono::system_clock::now();
            Journal::current().count("scans started");
        }
        wasCancelled_ = model_.isCancelling();
        return;
    }
    if (!scanBegin_ || model_.isScanTaskRunning()) return;
    if (const auto report = state.report()) {
        Journal::current().count("scans measured");
        history_.expectRecorded(model_.history(), report->repositoryPath, *scanBegin_);
    } else if (state.error() != nullptr) {
        Journal::current().count("scans failed");
        require(!wasCancelled_, "a scan that was cancelled has failed");
    } else {
        Journal::current().count(wasCancelled_ ? "scans cancelled" : "scans left");
    }
    scanBegin_.reset();
}

std::vector<QAbstractButton*> LiveWindow::buttons() const {
    std::vector<QAbstractButton*> all;
    for (auto* button : view_.findChildren<QAbstractButton*>()) {
        if (button->window() == &view_ && button->isVisible() && button->isEnabled()) all.push_back(button);
    }
    return all;
}

QAbstractButton* LiveWindow::button(const QString& name) const {
    for (QAbstractButton* button : buttons()) {
        if (name == (button->accessibleName().isEmpty() ? button->text() : button->accessibleName()))
            return button;
    }
    return nullptr;
}

bool LiveWindow::isAtRest() const {
    return !model_.isScanTaskRunning() && !batch_.isRunning() && !clearing_.isOpen &&
           !readiness_.isChecking() && view_.findChild<Sheet*>() == nullptr;
}

void LiveWindow::check() {
    const ScanState& state = model_.state();
    const bool scanning = state.isScanning();
    require(!scanning || model_.selection().has_value(), "a scan without a folder");
    require(!scanning || model_.isScanTaskRunning(), "a scan without a worker");
    require(!model_.isCancelling() || model_.isScanTaskRunning(), "cancelling without a scan");
    require(!scanning || !model_.canScan(), "a second scan is offered");
    require(!model_.scanStage().empty(), "no stage");
    require(model_.canScan() == (model_.selection() && !scanning && !model_.isScanTaskRunning()), "canScan");
    require(model_.canClearHistory() == (!model_.history().empty() && !clearing_.isOpen), "canClearHistory");
    require(model_.history().size() <= ScanHistoryStore::maximumScans, "a history that is too long");
    const auto report = state.report();
    require(!report || (model_.selection() && report->repositoryPath == model_.selection()->path),
            "a report of another folder");
    require(!button(QStringLiteral("Cancel")) || scanning || view_.findChild<Sheet*>() != nullptr,
            "Cancel is offered without a scan");
    require(!button(QStringLiteral("Choose Repository…")) || !scanning,
            "a folder can be chosen during a scan");
    require(!button(QStringLiteral("Scanning…")), "a second scan can be started");
    history_.check(model_.history());
}

} // namespace loadscope::soak
