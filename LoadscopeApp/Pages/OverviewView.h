// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scan/ScanModel.h"

#include <QStackedWidget>

namespace loadscope {

class OverviewReport;
class OverviewScanFailureState;
class OverviewScanLoadingState;

/// The Overview page: an invitation, the scan under way, its failure, or its report.
class OverviewView : public QStackedWidget {
    Q_OBJECT

public:
    explicit OverviewView(QWidget* parent = nullptr);

    struct Input {
        ScanState state;
        QString stage;
        bool canCancel = false;
        bool canRetry = false;
    };
    void refresh(const Input& input);

Q_SIGNALS:
    void cancelRequested();
    void retryRequested();

private:
    void showPanel(QWidget* panel);
    void showReport(const std::shared_ptr<const ScanReport>& report);

    QWidget* idle_;
    OverviewScanLoadingState* loading_;
    OverviewScanFailureState* failure_;
    OverviewReport* report_ = nullptr;
};

} // namespace loadscope
