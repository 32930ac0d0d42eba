// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Overview/OverviewView.h"

#include "LoadscopeApp/Pages/Overview/OverviewPanels.h"
#include "LoadscopeApp/Pages/Overview/OverviewReport.h"
#include "LoadscopeApp/Pages/Overview/OverviewStart.h"

#include <QApplication>

namespace loadscope {

OverviewView::OverviewView(QWidget* parent) : QStackedWidget(parent), idle_(new OverviewStart) {
    addWidget(idle_);
}

void OverviewView::refresh(const Input& input) {
    if (input.state.isScanning()) {
        showLoading(input);
    } else if (const ProbeError* error = input.state.error()) {
        showFailure(*error, input.retryBlocker);
    } else if (const auto report = input.state.report()) {
        showReport(report, input);
    } else if (input.kept != nullptr) {
        showReport(input.kept, input);
    } else {
        showPanel(idle_, nullptr);
    }
    // A report holds many widgets; it goes as soon as it is not shown any more.
    if (report_ != nullptr && currentWidget() != report_) {
        report_->deleteLater();
        report_ = nullptr;
    }
}

void OverviewView::showReport(const std::shared_ptr<const ScanReport>& report, const Input& input) {
    if (report_ == nullptr || report_->report() != report) {
        replaceReport(new OverviewReport(report, input.previous));
        if (report == input.kept) report_->tellWhenMeasured();
    }
    report_->codexCard()->showEstimate(input.codexEstimate);
}

void OverviewView::replaceReport(OverviewReport* report) {
    OverviewReport* old = report_;
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus != nullptr && isAncestorOf(focus);
    report_ = report;
    connect(report_->codexCard(), &CodexCard::estimateRequested, this, &OverviewView::codexEstimateRequested);
    connect(report_->codexCard(), &CodexCard::cancelRequested, this,
            &OverviewView::codexEstimateCancelRequested);
    addWidget(report_);
    setCurrentWidget(report_);
    // The page itself, so that keys scroll it, rather than the first text in it that can be selected.
    if (hadFocus) report_->setFocus(Qt::OtherFocusReason);
    if (old != nullptr) old->deleteLater();
}

void OverviewView::showLoading(const Input& input) {
    if (loading_ == nullptr) {
        loading_ = new OverviewScanLoadingState;
        addWidget(loading_);
        connect(loading_, &OverviewScanLoadingState::cancelRequested, this, &OverviewView::cancelRequested);
    }
    if (currentWidget() != loading_) loading_->holdKeys();
    loading_->refresh(input.stage, input.canCancel);
    showPanel(loading_, loading_->cancelButton());
}

void OverviewView::showFailure(const ProbeError& error, const QString& retryBlocker) {
    if (failure_ == nullptr) {
        failure_ = new OverviewScanFailureState;
        addWidget(failure_);
        connect(failure_, &OverviewScanFailureState::retryRequested, this, &OverviewView::retryRequested);
    }
    failure_->refresh(error, retryBlocker);
    showPanel(failure_, failure_->retryButton());
}

void OverviewView::showPanel(QWidget* panel, QWidget* next) {
    if (currentWidget() == panel) return;
    const QWidget* focus = window()->focusWidget();
    const bool losesKeyboard = focus == nullptr || isAncestorOf(focus);
    setCurrentWidget(panel);
    if (next != nullptr && losesKeyboard && isVisible() && window()->isActiveWindow())
        next->setFocus(Qt::OtherFocusReason);
}

} // namespace loadscope
