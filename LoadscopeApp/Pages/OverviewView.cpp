// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/OverviewView.h"

#include "LoadscopeApp/Components/ScanEmptyState.h"
#include "LoadscopeApp/Pages/OverviewPanels.h"
#include "LoadscopeApp/Pages/OverviewReport.h"

#include <QApplication>

namespace loadscope {

OverviewView::OverviewView(QWidget* parent)
    : QStackedWidget(parent),
      idle_(
          new ScanEmptyState(QStringLiteral("Start a context scan"),
                             QStringLiteral("Choose a local repository, then scan it in Claude Code. Turn on "
                                            "Include Codex to add a Codex scan."))),
      loading_(new OverviewScanLoadingState),
      failure_(new OverviewScanFailureState) {
    addWidget(idle_);
    addWidget(loading_);
    addWidget(failure_);
    connect(loading_, &OverviewScanLoadingState::cancelRequested, this, &OverviewView::cancelRequested);
    connect(failure_, &OverviewScanFailureState::retryRequested, this, &OverviewView::retryRequested);
}

void OverviewView::refresh(const Input& input) {
    if (input.state.isScanning()) {
        loading_->refresh(input.stage, input.canCancel);
        showPanel(loading_);
    } else if (const ProbeError* error = input.state.error()) {
        failure_->refresh(*error, input.canRetry);
        showPanel(failure_);
    } else if (const auto report = input.state.report()) {
        showReport(report);
    } else {
        showPanel(idle_);
    }
    // A report holds many widgets; it goes as soon as it is not shown any more.
    if (report_ != nullptr && currentWidget() != report_) {
        report_->deleteLater();
        report_ = nullptr;
    }
}

void OverviewView::showReport(const std::shared_ptr<const ScanReport>& report) {
    if (report_ != nullptr && report_->report() == report) return;
    OverviewReport* old = report_;
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus != nullptr && isAncestorOf(focus);
    report_ = new OverviewReport(report);
    addWidget(report_);
    setCurrentWidget(report_);
    // The page itself, so that keys scroll it, rather than the first text in it that can be selected.
    if (hadFocus) report_->setFocus(Qt::OtherFocusReason);
    if (old != nullptr) old->deleteLater();
}

void OverviewView::showPanel(QWidget* panel) {
    if (currentWidget() == panel) return;
    setCurrentWidget(panel);
    if (!isVisible() || !window()->isActiveWindow()) return;
    // What can be done next gets the keyboard.
    if (panel == loading_)
        loading_->cancelButton()->setFocus(Qt::OtherFocusReason);
    else if (panel == failure_)
        failure_->retryButton()->setFocus(Qt::OtherFocusReason);
}

} // namespace loadscope
