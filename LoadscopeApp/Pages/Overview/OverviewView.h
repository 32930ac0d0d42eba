// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Pages/Report/CodexCard.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QStackedWidget>

namespace loadscope {

class OverviewReport;
class OverviewScanFailureState;
class OverviewScanLoadingState;
class OverviewStart;

/// The Overview page: an invitation, the scan under way, its failure, or its report.
class OverviewView : public QStackedWidget {
    Q_OBJECT

public:
    explicit OverviewView(QWidget* parent = nullptr);

    struct Input {
        ScanState state;
        QString stage;
        bool canCancel = false;
        QString retryBlocker = {}; ///< why nothing can be scanned now; empty when Retry may be pressed
        std::shared_ptr<const RecordedScan> previous = {}; ///< with which a report is compared
        CodexCard::Estimate codexEstimate = {};
        std::shared_ptr<const ScanReport> kept = {}; ///< shown in place of the invitation
    };
    void refresh(const Input& input);

    /// The page before a scan.
    [[nodiscard]] OverviewStart* start() const { return idle_; }

Q_SIGNALS:
    void cancelRequested();
    void retryRequested();
    void codexEstimateRequested();
    void codexEstimateCancelRequested();

private:
    void showLoading(const Input& input);
    void showFailure(const ProbeError& error, const QString& retryBlocker);
    /// The keyboard stays where it is, unless that goes away: then it goes to what can be done next.
    void showPanel(QWidget* panel, QWidget* next);
    void replaceReport(OverviewReport* report);
    void showReport(const std::shared_ptr<const ScanReport>& report, const Input& input);

    OverviewStart* idle_;
    OverviewScanLoadingState* loading_ = nullptr; ///< made for the first scan
    OverviewScanFailureState* failure_ = nullptr; ///< made for the first failure
    OverviewReport* report_ = nullptr;
};

} // namespace loadscope
