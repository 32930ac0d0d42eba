// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/TrendsView.h"

#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Cards/AlertPanel.h"
#include "LoadscopeApp/Cards/ScanEmptyState.h"
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Pages/BandGuide.h"
#include "LoadscopeApp/Pages/Trends/PreviousRunsCard.h"
#include "LoadscopeApp/Pages/Trends/RecordedDataCard.h"
#include "LoadscopeApp/Pages/Trends/SummaryCard.h"
#include "LoadscopeApp/Pages/Trends/TrendChartCard.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QVBoxLayout>

namespace loadscope {

TrendsView::TrendsView(QWidget* parent)
    : PageFrame(parent), header_(new PageHeader(DisplayText::own(TrendsPresentation::title), {})) {
    column()->addWidget(header_);
    column()->addWidget(BandGuide::makeSection(TrendsPresentation::methodSentences));
    column()->addStretch(1);
}

void TrendsView::refresh(const std::vector<RecordedScan>& history,
                         const std::optional<std::string>& selectedRepositoryPath, HistoryActivity activity) {
    const bool wasLoading = isLoading();
    activity_ = activity;
    if (recordedData_ != nullptr) recordedData_->setClearing(activity == HistoryActivity::clearing);
    if (presentation_ != nullptr && selectedRepositoryPath == selectedPath_ && wasLoading == isLoading() &&
        history == presentation_->history())
        return;
    selectedPath_ = selectedRepositoryPath;
    presentation_ = std::make_shared<TrendsPresentation>(history, selectedRepositoryPath,
                                                         std::chrono::system_clock::now());
    build();
    followInConfirmation();
}

void TrendsView::build() {
    const TrendsPresentation& shown = *presentation_;
    header_->setSubtitle(DisplayText::line(shown.headerLine()));
    delete cards_;
    cards_ = new QWidget;
    auto* column = new QVBoxLayout(cards_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::blockSpacing);
    if (shown.hasTrend()) {
        column->addWidget(new TrendChartCard(presentation_));
        column->addWidget(new SummaryCard(shown));
    } else {
        const EmptyStateText text = isLoading() ? EmptyStateText::historyLoading() : shown.emptyState();
        auto* surface = new ReportSurface;
        surface->content()->addWidget(
            new ScanEmptyState(DisplayText::own(text.title), DisplayText::line(text.detail)));
        column->addWidget(surface);
    }
    if (shown.hasHistory()) {
        auto* runs = new PreviousRunsCard(shown);
        connect(runs, &PreviousRunsCard::repositoryRequested, this, &TrendsView::repositoryRequested);
        column->addWidget(runs);
        recordedData_ = new RecordedDataCard(presentation_);
        recordedData_->setClearing(activity_ == HistoryActivity::clearing);
        connect(recordedData_, &RecordedDataCard::clearWanted, this, &TrendsView::confirmClear);
        column->addWidget(recordedData_);
    }
    this->column()->insertWidget(1, cards_);
    ReadingOrder::follow(*this);
    cards_->show(); // at once, not only when the event loop comes to it
}

void TrendsView::confirmClear() {
    if (confirmation_ != nullptr || presentation_ == nullptr || !presentation_->hasHistory()) return;
    auto* panel = new AlertPanel(QStringLiteral("trash"), ThemeColor::bandExcessive,
                                 DisplayText::own(TrendsPresentation::clearTitle),
                                 DisplayText::own(TrendsPresentation::clearMessage));
    PushButton* cancel = panel->addButton(PushButton::Kind::secondary, QStringLiteral("Cancel"));
    deleteButton_ = panel->addButton(PushButton::Kind::destructive,
                                     DisplayText::own(presentation_->clearConfirmationButton()));
    connect(deleteButton_, &PushButton::clicked, this, &TrendsView::clearRequested);
    confirmation_ = AlertPanel::present(this, panel, cancel);
}

/// A scan that ends meanwhile adds a record: the question must name what would be deleted now.
void TrendsView::followInConfirmation() {
    if (confirmation_ == nullptr || confirmation_->isDismissing()) return;
    if (!presentation_->hasHistory())
        confirmation_->dismiss();
    else if (deleteButton_ != nullptr)
        deleteButton_->setTitle(DisplayText::own(presentation_->clearConfirmationButton()));
}

} // namespace loadscope
