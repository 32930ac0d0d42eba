// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CompareView.h"

#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Cards/ScanEmptyState.h"
#include "LoadscopeApp/Pages/BandGuide.h"
#include "LoadscopeApp/Pages/Compare/CardPager.h"
#include "LoadscopeApp/Pages/Compare/ChoiceCard.h"
#include "LoadscopeApp/Pages/Compare/ColumnCard.h"
#include "LoadscopeApp/Pages/Compare/CombinedCard.h"
#include "LoadscopeApp/Pages/Compare/LeaderboardCard.h"
#include "LoadscopeApp/Pages/Compare/RescanCard.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <QVBoxLayout>

namespace loadscope {

CompareView::CompareView(QWidget* parent)
    : PageFrame(parent),
      rescan_(new RescanCard),
      choiceCard_(new ChoiceCard),
      pager_(new CardPager),
      leaderboard_(new QWidget) {
    auto* place = new QVBoxLayout(leaderboard_);
    place->setContentsMargins(0, 0, 0, 0);
    column()->addWidget(new PageHeader(DisplayText::own(ComparePresentation::title),
                                       DisplayText::own(ComparePresentation::headerLine())));
    column()->addWidget(rescan_);
    rescan_->hide();
    column()->addWidget(leaderboard_);
    column()->addWidget(choiceCard_);
    choiceCard_->hide();
    column()->addWidget(pager_);
    pager_->hide();
    connect(choiceCard_, &ChoiceCard::leftOutChanged, this, [this](const std::set<std::string>& paths) {
        choose({paths, 0});
    });
    connect(pager_, &CardPager::pageRequested, this, [this](std::size_t page) {
        choose({choice_.leftOut, page});
    });
    column()->addWidget(BandGuide::makeSection(ComparePresentation::methodSentences));
    column()->addStretch(1);
}

void CompareView::refresh(const std::vector<RecordedScan>& history, HistoryActivity activity) {
    const bool isLoading = activity == HistoryActivity::loading;
    if (history_ == history && isLoading == isLoading_) return;
    history_ = history;
    isLoading_ = isLoading;
    const ComparePresentation shown(*history_, choice_);
    buildRanking(shown);
    build(shown);
}

void CompareView::choose(const ComparePresentation::Choice& choice) {
    if (choice == choice_) return;
    choice_ = choice;
    build(ComparePresentation(*history_, choice_));
}

void CompareView::buildRanking(const ComparePresentation& shown) {
    delete ranking_;
    ranking_ = nullptr;
    if (!shown.leaderboardGroups().empty()) {
        ranking_ = new LeaderboardCard(shown);
        connect(ranking_, &LeaderboardCard::repositoryRequested, this, &CompareView::repositoryRequested);
        leaderboard_->layout()->addWidget(ranking_);
        ranking_->show();
    }
    leaderboard_->setVisible(ranking_ != nullptr);
}

void CompareView::build(const ComparePresentation& shown) {
    choice_.page = shown.page();
    choiceCard_->refresh(shown);
    choiceCard_->setVisible(shown.hasChoice());
    pager_->refresh(shown);
    delete cards_;
    cards_ = new QWidget;
    auto* column = new QVBoxLayout(cards_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::blockSpacing);
    if (shown.hasComparison()) {
        auto* columns =
            new AdaptiveLayout(AdaptiveLayout::rows(ColumnCard::narrowest, Metrics::blockSpacing));
        const QString longestPill = DisplayText::own(shown.longestPill());
        for (const ComparePresentation::Column& repository : shown.columns())
            columns->addWidget(new ColumnCard(shown, repository, longestPill));
        column->addLayout(columns);
        column->addWidget(new CombinedCard(shown));
    } else {
        const EmptyStateText text = isLoading_ ? EmptyStateText::historyLoading() : shown.emptyState();
        auto* surface = new ReportSurface;
        surface->content()->addWidget(
            new ScanEmptyState(DisplayText::own(text.title), DisplayText::line(text.detail)));
        column->addWidget(surface);
    }
    this->column()->insertWidget(this->column()->indexOf(pager_) + 1, cards_);
    ReadingOrder::follow(*this);
    cards_->show(); // at once, not only when the event loop comes to it
}

} // namespace loadscope
